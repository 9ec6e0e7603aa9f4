#include "platform/windows/driver_store.h"

#include <windows.h>

#include <string_view>

namespace vexil::platform {

namespace {

constexpr std::wstring_view systemRoot = L"\\SystemRoot\\";
constexpr std::wstring_view literalPath = L"\\??\\";
constexpr std::wstring_view store = L"System32\\DriverStore\\FileRepository\\";

bool startsWith(std::wstring_view text, std::wstring_view start) {
    return text.size() >= start.size() &&
           CompareStringOrdinal(text.data(), static_cast<int>(start.size()), start.data(),
                                static_cast<int>(start.size()), TRUE) == CSTR_EQUAL;
}

} // namespace

std::optional<std::wstring> driverStoreFolder(std::wstring image, const std::wstring& windowsFolder) {
    const auto root = windowsFolder + L"\\";
    if (startsWith(image, systemRoot)) {
        image = root + image.substr(systemRoot.size());
    } else if (startsWith(image, literalPath)) {
        image = image.substr(literalPath.size());
    } else if (image.find(L':') == std::wstring::npos) {
        image = root + image;
    }
    const bool stored = startsWith(image, root + std::wstring(store));
    if (!stored || image.find(L"\\..") != std::wstring::npos) {
        return std::nullopt;
    }
    return image.substr(0, image.find_last_of(L'\\') + 1);
}

} // namespace vexil::platform
