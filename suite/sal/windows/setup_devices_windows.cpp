#include "device_source.h"
#include "platform/wide_text.h"

#include <windows.h>

#include <setupapi.h>

#include <cstring>
#include <stdexcept>

namespace vexil::sal {

namespace {

/// A device information set, given back with its owner.
class DeviceInformation {
public:
    explicit DeviceInformation(const WinDeviceScanFilter& filter) {
        const GUID interfaceGuid = toGuid(filter.interfaceGuid);
        set_ = asksForInterface(filter)
                   ? SetupDiGetClassDevsW(&interfaceGuid, nullptr, nullptr,
                                          DIGCF_PRESENT | DIGCF_DEVICEINTERFACE)
                   : SetupDiGetClassDevsW(nullptr, nullptr, nullptr, DIGCF_PRESENT | DIGCF_ALLCLASSES);
        if (set_ == INVALID_HANDLE_VALUE) {
            throw std::runtime_error("the system gives no device list");
        }
    }
    DeviceInformation(const DeviceInformation&) = delete;
    DeviceInformation& operator=(const DeviceInformation&) = delete;
    ~DeviceInformation() { SetupDiDestroyDeviceInfoList(set_); }

    [[nodiscard]] HDEVINFO get() const { return set_; }

    static GUID toGuid(const DeviceGuid& guid) {
        GUID result;
        static_assert(sizeof(result) == sizeof(guid));
        std::memcpy(&result, &guid, sizeof(result));
        return result;
    }

private:
    HDEVINFO set_;
};

/// The raw text of a registry property, its NULs included; empty if it cannot be read.
std::wstring readProperty(HDEVINFO set, SP_DEVINFO_DATA& device, DWORD property) {
    DWORD size = 0;
    SetupDiGetDeviceRegistryPropertyW(set, &device, property, nullptr, nullptr, 0, &size);
    std::wstring text(size / sizeof(wchar_t), L'\0');
    if (text.empty() ||
        !SetupDiGetDeviceRegistryPropertyW(set, &device, property, nullptr,
                                           reinterpret_cast<BYTE*>(text.data()), size, nullptr)) {
        return {};
    }
    return text;
}

std::string readText(HDEVINFO set, SP_DEVINFO_DATA& device, DWORD property) {
    return platform::toUtf8(readProperty(set, device, property).c_str());
}

std::vector<std::string> readTexts(HDEVINFO set, SP_DEVINFO_DATA& device, DWORD property) {
    std::vector<std::string> texts;
    const auto sequence = readProperty(set, device, property);
    for (std::size_t at = 0; at < sequence.size() && sequence[at] != L'\0';) {
        const std::wstring text = sequence.c_str() + at;
        texts.push_back(platform::toUtf8(text));
        at += text.size() + 1;
    }
    return texts;
}

std::vector<std::string> readPaths(HDEVINFO set, SP_DEVINFO_DATA& device, const GUID& interfaceGuid) {
    std::vector<std::string> paths;
    SP_DEVICE_INTERFACE_DATA entry{};
    entry.cbSize = sizeof(entry);
    for (DWORD i = 0; SetupDiEnumDeviceInterfaces(set, &device, &interfaceGuid, i, &entry); ++i) {
        DWORD size = 0;
        SetupDiGetDeviceInterfaceDetailW(set, &entry, nullptr, 0, &size, nullptr);
        std::vector<BYTE> buffer(size < sizeof(SP_DEVICE_INTERFACE_DETAIL_DATA_W)
                                     ? sizeof(SP_DEVICE_INTERFACE_DETAIL_DATA_W)
                                     : size);
        auto* detail = reinterpret_cast<SP_DEVICE_INTERFACE_DETAIL_DATA_W*>(buffer.data());
        detail->cbSize = sizeof(*detail);
        if (SetupDiGetDeviceInterfaceDetailW(set, &entry, detail, size, nullptr, nullptr)) {
            paths.push_back(platform::toUtf8(detail->DevicePath));
        }
    }
    return paths;
}

class SetupDeviceSource final : public DeviceSource {
public:
    std::vector<SystemDevice> list(const WinDeviceScanFilter& filter) override {
        const DeviceInformation information(filter);
        const GUID interfaceGuid = DeviceInformation::toGuid(filter.interfaceGuid);
        const GUID classGuid = DeviceInformation::toGuid(filter.classGuid);
        const bool anyClass = filter.classGuid == DeviceGuid();
        std::vector<SystemDevice> devices;
        SP_DEVINFO_DATA entry{};
        entry.cbSize = sizeof(entry);
        for (DWORD i = 0; SetupDiEnumDeviceInfo(information.get(), i, &entry); ++i) {
            if (!anyClass && !IsEqualGUID(entry.ClassGuid, classGuid)) {
                continue;
            }
            SystemDevice device;
            device.description = readText(information.get(), entry, SPDRP_DEVICEDESC);
            device.hardwareIds = readTexts(information.get(), entry, SPDRP_HARDWAREID);
            device.compatibleIds = readTexts(information.get(), entry, SPDRP_COMPATIBLEIDS);
            device.manufacturer = readText(information.get(), entry, SPDRP_MFG);
            device.locationInformation = readText(information.get(), entry, SPDRP_LOCATION_INFORMATION);
            if (asksForInterface(filter)) {
                device.interfacePaths = readPaths(information.get(), entry, interfaceGuid);
            }
            devices.push_back(std::move(device));
        }
        return devices;
    }
};

} // namespace

std::unique_ptr<DeviceSource> makeSystemDeviceSource() { return std::make_unique<SetupDeviceSource>(); }

} // namespace vexil::sal
