#include "platform/driver_service_library.h"

#include "platform/processor.h"
#include "platform/shared_library.h"

#include <windows.h>

#include <string>

namespace vexil::platform {

namespace {

constexpr const wchar_t* libraryFile = L"\\NorvaneDiagnosticsDriverService.dll";

/// The folders of the application and of the system: 0xA00.
constexpr DWORD searchedFolders = LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32;
static_assert(searchedFolders == 0xA00);

std::wstring workingDirectory() {
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    return folder;
}

} // namespace

void* openDriverServiceLibrary() {
    const auto path = workingDirectory() + libraryFile;
    if (void* library = LoadLibraryExW(path.c_str(), nullptr, searchedFolders)) {
        return library;
    }
    // The service of a simulated machine stands elsewhere, and the host has loaded it.
    return hasProcessorLibrary() ? loadedLibrary("NorvaneDiagnosticsDriverService.dll") : nullptr;
}

} // namespace vexil::platform
