#include "platform/display_driver_library.h"

#include "platform/wide_text.h"
#include "platform/windows/driver_store.h"

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

/// The path of a service's driver, as its record names it.
std::optional<std::wstring> imageOf(const std::wstring& service) {
    std::vector<wchar_t> path(1024);
    auto bytes = static_cast<DWORD>(path.size() * sizeof(wchar_t));
    const auto key = L"SYSTEM\\CurrentControlSet\\Services\\" + service;
    if (RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), L"ImagePath", RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ,
                     nullptr, path.data(), &bytes) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    return std::wstring(path.data());
}

std::optional<std::wstring> windowsFolder() {
    std::vector<wchar_t> folder(MAX_PATH);
    const auto length = GetSystemWindowsDirectoryW(folder.data(), MAX_PATH);
    return length == 0 || length >= MAX_PATH ? std::nullopt : std::optional<std::wstring>(folder.data());
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
    const auto windows = windowsFolder();
    for (const auto& service : windows ? displayServices() : std::vector<std::wstring>()) {
        const auto image = imageOf(service);
        const auto folder = image ? driverStoreFolder(*image, *windows) : std::nullopt;
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
