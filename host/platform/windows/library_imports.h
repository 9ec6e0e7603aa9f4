#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

namespace vexil::host::platform {

/// Where the host's libraries look for those that they import: their own folder, the program's, the system's;
/// never the working directory.
inline constexpr DWORD librarySearch = LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_DEFAULT_DIRS;

/// Why a library cannot be loaded, where the reason is among those that it imports: "it needs 'x.dll', which
/// is missing". Empty if each of them can be had, or the file is no library.
[[nodiscard]] std::string culpritAmongImports(const std::filesystem::path& library);

} // namespace vexil::host::platform
