#pragma once

#include <optional>
#include <string>

// The loader of the operating system, in the steps that the module's own rule for finding a library is made
// of. Names and paths are UTF-8. A null handle is a normal answer: the library is not there.
namespace vexil::platform {

/// The library that answers to the file name in this process already, wherever it came from; null if there is
/// none.
[[nodiscard]] void* loadedLibrary(const std::string& name);

/// Searches for `name` only where no user can plant a copy: for a path its own folder, for a bare name the
/// folder of this code and the system's folders. Never the working directory. Windows finds no bare name
/// here: its system folder is a step of its own.
[[nodiscard]] void* openTrustedLibrary(const std::string& name);

/// Opens what the path names, by the system's rules for paths. Null for a text that Linux takes for a bare
/// name.
[[nodiscard]] void* openLibraryPath(const std::string& path);

/// The folder of the system's own libraries, without a separator at its end; nothing if it cannot be told.
[[nodiscard]] std::optional<std::string> systemLibraryFolder();

/// The separator between a folder and a file name.
[[nodiscard]] char pathSeparator();

[[nodiscard]] void* librarySymbol(void* library, const char* symbol);
void closeLibrary(void* library);

} // namespace vexil::platform
