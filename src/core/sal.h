#pragma once

#include "core/library_loader.h"
#include "core/shared_api.h"

#include <cstdint>
#include <ios>
#include <map>
#include <string>
#include <vector>

// The suite's platform layer, a library of its own ("sal"). Each function returns a process-wide object that
// the library owns. Declared here are the operations that this module calls, in the order of their slots.

/// What a scan of the system device list is restricted to; the base restricts nothing.
class DeviceScanFilter {
public:
    virtual ~DeviceScanFilter() = default;
};

struct DeviceGuid {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::uint8_t data4[8] = {};

    friend bool operator==(const DeviceGuid&, const DeviceGuid&) = default;
};

/// All-zero ids restrict nothing.
class WinDeviceScanFilter final : public DeviceScanFilter {
public:
    WinDeviceScanFilter() = default;
    WinDeviceScanFilter(const DeviceGuid& interfaceId, const DeviceGuid& classId)
        : interfaceGuid(interfaceId), classGuid(classId) {}

    DeviceGuid interfaceGuid;
    DeviceGuid classGuid;
};

/// The devices of the machine as the operating system lists them.
class SystemDeviceList {
public:
    /// Interface paths by device index.
    using InterfacePaths = std::map<std::uint32_t, std::vector<std::string>>;

    virtual ~SystemDeviceList() = default;
    /// Lists afresh; 0 on success.
    virtual std::int32_t scan(const DeviceScanFilter& filter, InterfacePaths& paths) = 0;
    /// 0 on success. `text` stays owned by the list until its next scan; the ids are those of the Windows
    /// setup API, and the id lists (1 and 2) are sequences of texts that end with two NUL characters.
    virtual std::int32_t property(std::uint32_t index, std::uint32_t propertyId, const char*& text) = 0;
    /// Number of devices of the last scan.
    virtual std::uint32_t count() = 0;
};

class StringHandler {
public:
    virtual ~StringHandler() = default;
    /// A stable text that keeps the letters of its input.
    virtual void makeIdentifier(const std::string& text, std::string& identifier) = 0;
    /// Tidies a device name in place.
    virtual void normalize(std::string& text) = 0;
    virtual void toLower(std::string& text) = 0;
};

class NumberHandler {
public:
    using BaseManipulator = std::ios_base& (*)(std::ios_base&);

    virtual ~NumberHandler() = default;
    /// False unless the whole text is a number in the base of the manipulator (`std::hex`, `std::dec`).
    virtual bool parse(std::uint32_t& number, const std::string& text, BaseManipulator base) = 0;
    virtual void toText(std::string& text, std::uint32_t number) = 0;
};

class SystemTimer {
public:
    virtual ~SystemTimer() = default;
    virtual void sleepMilliseconds(std::uint32_t duration) = 0;
    [[nodiscard]] virtual double secondsBetween(std::uint32_t start, std::uint32_t end) = 0;
    /// A 32-bit tick that wraps.
    [[nodiscard]] virtual std::uint32_t now() = 0;
};

extern "C" {
VEXIL_SHARED_API Module* get_module();
VEXIL_SHARED_API SystemTimer* get_timer();
VEXIL_SHARED_API StringHandler* get_string_handler();
VEXIL_SHARED_API NumberHandler* get_number_handler();
VEXIL_SHARED_API SystemDeviceList* get_device_scanner();
VEXIL_SHARED_API void release_device_scanner();
/// The folder for temporary files, UTF-8.
VEXIL_SHARED_API const char* get_temporary_path();
}
