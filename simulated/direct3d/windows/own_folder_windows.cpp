#include "simulated/direct3d/own_folder.h"

#include "platform/wide_text.h"

#include <windows.h>

#include <string_view>

namespace vexil::simulated {

std::string ownFolder() {
    constexpr DWORD byAddress =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    HMODULE library = nullptr;
    wchar_t path[MAX_PATH];
    if (!GetModuleHandleExW(byAddress, reinterpret_cast<const wchar_t*>(&ownFolder), &library)) {
        return {};
    }
    const DWORD length = GetModuleFileNameW(library, path, MAX_PATH);
    const std::wstring_view text(path, length);
    const auto separator = text.find_last_of(L'\\');
    return separator == std::wstring_view::npos ? std::string() : platform::toUtf8(text.substr(0, separator));
}

} // namespace vexil::simulated
