#include "platform/folder_roots.h"

#include <windows.h>

#include <shlobj.h>

namespace vexil::platform {

namespace {

/// FOLDERID_ProgramData.
constexpr KNOWNFOLDERID programData = {
    0x62AB5D82, 0xFDC1, 0x4DC3, {0xA9, 0xDD, 0x07, 0x0D, 0x1D, 0x49, 0x5D, 0x97}};

} // namespace

std::optional<std::wstring> programDataFolder() {
    PWSTR path = nullptr;
    std::optional<std::wstring> folder;
    if (SUCCEEDED(SHGetKnownFolderPath(programData, 0, nullptr, &path)) && path != nullptr) {
        folder = path;
    }
    // Also after a failure, says its documentation.
    CoTaskMemFree(path);
    return folder;
}

std::optional<std::wstring> accountName() {
    // 256 characters, which is what an account name may have, and the NUL.
    wchar_t buffer[257];
    DWORD size = 257;
    if (GetUserNameW(buffer, &size) == 0) {
        return std::nullopt;
    }
    return std::wstring(buffer);
}

std::optional<std::wstring> workingDirectory() {
    wchar_t buffer[261];
    const DWORD length = GetCurrentDirectoryW(261, buffer);
    if (length == 0 || length > 260) {
        return std::nullopt;
    }
    return std::wstring(buffer, length);
}

} // namespace vexil::platform
