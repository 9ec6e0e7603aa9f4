#pragma once

#include "core/device_record.h"

#include <memory>
#include <string>
#include <vector>

namespace vexil::core {

class Device;

/// The host's receiver of a scan.
class DeviceScanListener {
public:
    virtual ~DeviceScanListener() = default;
    virtual void deviceFound(const DeviceRecord& record) = 0;
    virtual void scanFinished() = 0;
    virtual void presenceChecked(bool present) = 0;
};

/// Finds the devices of a module. A scan replaces the devices of the last one; the host keeps scans and
/// running tests apart, since nothing here is locked.
class DeviceScanner {
public:
    virtual ~DeviceScanner() = default;
    /// Blocks until the listener has been told everything.
    virtual void scan(std::shared_ptr<DeviceScanListener> listener) = 0;
    virtual void checkPresence(std::shared_ptr<DeviceScanListener> listener) = 0;
    /// Expired if no device has that id.
    [[nodiscard]] virtual std::weak_ptr<Device> findDevice(std::string id) const = 0;
    [[nodiscard]] virtual std::vector<std::weak_ptr<Device>> devices() const = 0;
};

} // namespace vexil::core
