#pragma once

#include <cstdint>
#include <optional>
#include <string>

class NumberHandler;
class SystemDeviceList;

namespace vexil::module::video_card {

/// The PCI class of display controllers.
inline constexpr std::uint32_t displayController = 3;

struct HardwareIds {
    std::string vendorId; ///< four hexadecimal digits as they stand
    std::string deviceId;
};

/// Reads what the system says of one device and takes it apart. Nothing is answered for a device that lacks
/// the property or has it in another form.
class AdapterProperties {
public:
    AdapterProperties(SystemDeviceList& list, NumberHandler& numbers) : list_(list), numbers_(numbers) {}

    /// The two digits behind the first "CC_" of the compatible ids.
    [[nodiscard]] std::optional<std::uint32_t> classCode(std::uint32_t index) const;
    /// The location information as "bb:dd.f".
    [[nodiscard]] std::optional<std::string> location(std::uint32_t index) const;
    /// Out of "PCI\VEN_10DE&DEV_1C03&...".
    [[nodiscard]] std::optional<HardwareIds> hardwareIds(std::uint32_t index) const;
    /// Empty if they cannot be read.
    [[nodiscard]] std::string description(std::uint32_t index) const;
    [[nodiscard]] std::string manufacturer(std::uint32_t index) const;

    [[nodiscard]] bool isDisplayController(std::uint32_t index) const {
        return classCode(index) == displayController;
    }

private:
    [[nodiscard]] const char* property(std::uint32_t index, std::uint32_t id) const;

    SystemDeviceList& list_;
    NumberHandler& numbers_;
};

} // namespace vexil::module::video_card
