#pragma once

#include "core/test.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vexil::module::video_card::tool {

/// Reads a card's temperature once and hands it to the host as a line of JSON text, in the place of a
/// message key. Watching over time is the host's: it runs the tool again and again.
class ThermalMonitorToolVideocard final : public core::Test {
public:
    ThermalMonitorToolVideocard();

    /// Passed with a temperature. Without one the line says so and the result is DeviceUnavailable, which is
    /// also the result, without a line, for a device that is gone.
    std::uint8_t execute(const core::TestRunArguments& arguments) override;
    [[nodiscard]] bool isSupported(core::Device* device, std::shared_ptr<core::Device> holder) const override;
};

/// The line. Id and name stand in it as they are: a quotation mark in a name makes it invalid, and hosts know
/// that.
[[nodiscard]] std::string thermalLine(const std::string& deviceId, const std::string& deviceName,
                                      std::optional<std::int64_t> celsius);

/// In whole degrees, truncated toward zero before the 32 is added.
[[nodiscard]] std::int64_t toFahrenheit(std::int64_t celsius);

} // namespace vexil::module::video_card::tool
