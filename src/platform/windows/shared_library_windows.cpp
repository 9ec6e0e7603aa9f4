#include "platform/shared_library.h"

#include "platform/wide_text.h"

#include <windows.h>

namespace vexil::platform {

namespace {

/// The folder of the named library, then the system folder: 0x900.
constexpr DWORD trustedFolders = LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32;
static_assert(trustedFolders == 0x900);

} // namespace

void* openTrustedLibrary(const std::string& name) {
    // The folder of a library is told of a full path only: a bare name ends here with an invalid parameter,
    // and is left to the system folder.
    return LoadLibraryExW(toWide(name).c_str(), nullptr, trustedFolders);
}

void* openLibraryPath(const std::string& path) { return LoadLibraryW(toWide(path).c_str()); }

void* loadedLibrary(const std::string& name) {
    // With a reference of its own, as every other opening here gives one.
    HMODULE library = nullptr;
    return GetModuleHandleExW(0, toWide(name).c_str(), &library) != 0 ? library : nullptr;
}

std::optional<std::string> systemLibraryFolder() {
    wchar_t buffer[256];
    const UINT length = GetSystemDirectoryW(buffer, 256);
    if (length == 0 || length >= 256) {
        return std::nullopt;
    }
    return toUtf8({buffer, length});
}

char pathSeparator() { return '\\'; }

void* librarySymbol(void* library, const char* symbol) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), symbol));
}

void closeLibrary(void* library) { FreeLibrary(static_cast<HMODULE>(library)); }

} // namespace vexil::platform
