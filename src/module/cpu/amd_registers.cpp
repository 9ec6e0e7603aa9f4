#include "module/cpu/amd_registers.h"

namespace vexil::module::cpu {

namespace {

constexpr std::uint32_t registerWidth = 4;

/// A register of the processor that is reached by writing its address into one register of the root complex
/// and reading its value from another.
struct IndirectRegister {
    std::uint32_t addressOffset;
    std::uint32_t valueOffset;
    std::uint32_t address;
};

constexpr IndirectRegister family15LateRegister{0xB8, 0xBC, 0xD8200CA4};
constexpr IndirectRegister zenRegister{0x60, 0x64, 0x59800};

constexpr std::uint32_t bothRangeBits = 1U << 16 | 1U << 17;

double eighths(std::uint32_t value) { return (value >> 21) * 0.125; }

bool inLowRange(std::uint32_t value) { return (value & bothRangeBits) == bothRangeBits; }

std::int32_t readReportedTemperature(VXKServiceInterface& service, std::uint32_t& value) {
    const PciConfigRequest request{0, 24, 3, 0xA4, registerWidth, nullptr};
    return service.readPciConfig(request, value);
}

std::int32_t readIndirect(VXKServiceInterface& service, const IndirectRegister& reg, std::uint32_t& value) {
    std::uint32_t address = reg.address;
    const PciConfigRequest select{0, 0, 0, reg.addressOffset, registerWidth, &address};
    if (service.writePciConfig(select) != VXKServiceInterface::succeeded) {
        return VXKServiceInterface::failed;
    }
    const PciConfigRequest read{0, 0, 0, reg.valueOffset, registerWidth, nullptr};
    return service.readPciConfig(read, value);
}

} // namespace

double northBridgeTemperature(std::uint32_t value) {
    return inLowRange(value) ? eighths(value) - 49.0 : eighths(value);
}

double family15EarlyTemperature(std::uint32_t value) {
    if (!inLowRange(value)) {
        return eighths(value);
    }
    // In the low range these processors tell steps of half a degree, and the ends of the scale are fixed.
    const auto reading = value >> 21;
    if (reading < 4) {
        return -49.0;
    }
    if (reading < 8) {
        return -48.5;
    }
    return reading < 2044 ? (value >> 23) * 0.5 - 49.0 : 206.5;
}

double zenTemperature(std::uint32_t value) {
    return (value >> 19 & 1) != 0 ? eighths(value) - 49.0 : eighths(value);
}

std::int32_t readNorthBridge(VXKServiceInterface& service, double& celsius) {
    std::uint32_t value = 0;
    if (readReportedTemperature(service, value) != VXKServiceInterface::succeeded) {
        return VXKServiceInterface::failed;
    }
    celsius = northBridgeTemperature(value);
    return VXKServiceInterface::succeeded;
}

std::int32_t readFamily15Early(VXKServiceInterface& service, double& celsius) {
    std::uint32_t value = 0;
    if (readReportedTemperature(service, value) != VXKServiceInterface::succeeded) {
        return VXKServiceInterface::failed;
    }
    celsius = family15EarlyTemperature(value);
    return VXKServiceInterface::succeeded;
}

std::int32_t readFamily15Late(VXKServiceInterface& service, double& celsius) {
    std::uint32_t value = 0;
    if (readIndirect(service, family15LateRegister, value) != VXKServiceInterface::succeeded) {
        return VXKServiceInterface::failed;
    }
    celsius = northBridgeTemperature(value);
    return VXKServiceInterface::succeeded;
}

std::int32_t readZen(VXKServiceInterface& service, double& celsius) {
    std::uint32_t value = 0;
    if (readIndirect(service, zenRegister, value) != VXKServiceInterface::succeeded) {
        return VXKServiceInterface::failed;
    }
    celsius = zenTemperature(value);
    return VXKServiceInterface::succeeded;
}

} // namespace vexil::module::cpu
