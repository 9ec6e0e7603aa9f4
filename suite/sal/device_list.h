#pragma once

#include "device_source.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vexil::sal {

/// The system device list over a source. Texts that it hands out stay valid until the next scan.
class DeviceList final : public SystemDeviceList {
public:
    static constexpr std::int32_t success = 0;
    static constexpr std::int32_t failure = 1;

    explicit DeviceList(std::unique_ptr<DeviceSource> source) : source_(std::move(source)) {}

    std::int32_t scan(const DeviceScanFilter& filter, InterfacePaths& paths) override;
    std::int32_t property(std::uint32_t index, std::uint32_t propertyId, const char*& text) override;
    std::uint32_t count() override { return static_cast<std::uint32_t>(properties_.size()); }

private:
    using Properties = std::map<std::uint32_t, std::string>;

    std::unique_ptr<DeviceSource> source_;
    std::vector<Properties> properties_;
};

} // namespace vexil::sal
