#pragma once

#include <filesystem>
#include <string>

// Loading of the module and of the libraries that stand in for vendors' own.
namespace vexil::host::platform {

/// The file name of the module beside the program.
[[nodiscard]] const char* moduleFileName();

/// The file name of the library beside the program that holds everything but its start.
[[nodiscard]] const char* hostProgramFileName();

/// Opens the module for itself: its names are not offered to libraries loaded later. Null with a reason in
/// one line.
[[nodiscard]] void* openModule(const std::filesystem::path& file, std::string& reason);

/// Opens a library for the whole process, so that its file name answers to whoever asks for it later. Null
/// with a reason in one line.
[[nodiscard]] void* openForProcess(const std::filesystem::path& file, std::string& reason);

/// The function of that name, null if the library has none.
[[nodiscard]] void* symbolOf(void* library, const char* name);

/// Whether the file name is that of a dynamic library.
[[nodiscard]] bool isLibraryFileName(const std::string& name);

} // namespace vexil::host::platform
