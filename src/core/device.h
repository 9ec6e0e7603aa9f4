#pragma once

#include "core/key_value.h"

#include <memory>
#include <string>
#include <vector>

namespace vexil::core {

/// One piece of hardware that tests can be run on, as the host sees it.
class Device {
public:
    Device() = default;
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    virtual ~Device() = default;

    /// Unique among the devices of a scan.
    [[nodiscard]] virtual std::string id() const = 0;
    [[nodiscard]] virtual std::string displayName() const = 0;
    [[nodiscard]] virtual bool hasUdi() const = 0;
    /// The unique device identifier, empty without one.
    [[nodiscard]] virtual std::string udi() const = 0;
    [[nodiscard]] virtual std::vector<KeyValue> properties() const = 0;
    /// Message keys of what the user should know about the device.
    [[nodiscard]] virtual std::vector<std::string> notices() const = 0;
    [[nodiscard]] virtual bool isPresent() const = 0;
    virtual void refresh() = 0;

protected:
    std::string id_;
    std::string displayName_;
    std::unique_ptr<std::string> udi_;
    std::vector<KeyValue> properties_;
};

} // namespace vexil::core
