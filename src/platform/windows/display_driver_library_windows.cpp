#include "platform/display_driver_library.h"

#include "platform/wide_text.h"

#include <windows.h>

#include <setupapi.h>

#include <optional>
#include <vector>

namespace vexil::platform {

namespace {

constexpr GUID displayClass = {0x4D36E968, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};

/// The service that drives a device, by its name.
std::optional<std::wstring> serviceOf(HDEVINFO devices, SP_DEVINFO_DATA& device) {
    std::vector<wchar_t> name(256);
    const auto bytes = static_cast<DWORD>((name.size() - 1) * sizeof(wchar_t));
    if (!SetupDiGetDeviceRegistryPropertyW(devices, &device, SPDRP_SERVICE, nullptr,
                                           reinterpret_cast<BYTE*>(name.data()), bytes, nullptr)) {
        return std::nullopt;
    }
    return std::wstring(name.data());
}

std::vector<std::wstring> displayServices() {
    std::vector<std::wstring> services;
    const HDEVINFO devices = SetupDiGetClassDevsW(&displayClass, nullptr, nullptr, DIGCF_PRESENT);
    if (devices == INVALID_HANDLE_VALUE) {
        return services;
    }
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof(device);
    for (DWORD index = 0; SetupDiEnumDeviceInfo(devices, index, &device); ++index) {
        if (auto service = serviceOf(devices, device)) {
            services.push_back(std::move(*service));
        }
    }
    SetupDiDestroyDeviceInfoList(devices);
    return services;
}

/// The folder of a service's driver, with a separator at its end. The record names the driver from the
/// system's root ("\SystemRoot\System32\DriverStore\...") or relative to it.
std::optional<std::wstring> driverFolder(const std::wstring& service) {
    std::vector<wchar_t> path(1024);
    auto bytes = static_cast<DWORD>(path.size() * sizeof(wchar_t));
    const auto key = L"SYSTEM\\CurrentControlSet\\Services\\" + service;
    if (RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), L"ImagePath", RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ,
                     nullptr, path.data(), &bytes) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    std::wstring image = path.data();
    constexpr std::wstring_view rooted = L"\\SystemRoot\\";
    constexpr std::wstring_view literal = L"\\??\\";
    std::vector<wchar_t> windows(MAX_PATH);
    const auto length = GetSystemWindowsDirectoryW(windows.data(), MAX_PATH);
    if (length == 0 || length >= MAX_PATH) {
        return std::nullopt;
    }
    const std::wstring root = std::wstring(windows.data()) + L"\\";
    const auto start = image.substr(0, rooted.size());
    if (CompareStringOrdinal(start.c_str(), -1, rooted.data(), -1, TRUE) == CSTR_EQUAL) {
        image = root + image.substr(rooted.size());
    } else if (image.starts_with(literal)) {
        image = image.substr(literal.size());
    } else if (image.find(L':') == std::wstring::npos) {
        image = root + image;
    }
    const auto end = image.find_last_of(L'\\');
    return end == std::wstring::npos ? std::nullopt : std::optional(image.substr(0, end + 1));
}

} // namespace

void* openDisplayDriverLibrary(const std::string& name) {
    if (name.empty() || name.find_first_of("\\/:") != std::string::npos) {
        return nullptr;
    }
    const auto wide = toWide(name);
    if (HMODULE library = LoadLibraryExW(wide.c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {
        return library;
    }
    for (const auto& service : displayServices()) {
        const auto folder = driverFolder(service);
        if (!folder) {
            continue;
        }
        const auto file = *folder + wide;
        constexpr DWORD flags = LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32;
        if (HMODULE library = LoadLibraryExW(file.c_str(), nullptr, flags)) {
            return library;
        }
    }
    return nullptr;
}

} // namespace vexil::platform
