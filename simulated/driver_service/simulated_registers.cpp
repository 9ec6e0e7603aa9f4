#include "simulated/driver_service/simulated_registers.h"

#include <algorithm>
#include <cmath>

namespace vexil::simulated {

namespace {

constexpr std::int32_t succeeded = 0;
constexpr std::int32_t failed = 1;

constexpr std::uint32_t family15Temperature = 0xD8200CA4;
constexpr std::uint32_t zenTemperature = 0x59800;

/// AMD's form: eighths of a degree in the upper eleven bits, from -49 on if the range bits are set.
std::uint32_t amdValue(double celsius, std::uint32_t rangeBits) {
    const bool low = celsius < 0;
    const auto eighths = static_cast<std::uint32_t>(std::lround((low ? celsius + 49 : celsius) * 8));
    return eighths << 21 | (low ? rangeBits : 0);
}

bool isRootComplex(const PciConfigRequest& request) {
    return request.bus == 0 && request.device == 0 && request.function == 0;
}

} // namespace

const ScenarioPciRegister* SimulatedRegisters::listed(const PciConfigRequest& request) const {
    const auto found = std::ranges::find_if(section_.pciRegisters, [&](const ScenarioPciRegister& pci) {
        return pci.bus == request.bus && pci.device == request.device && pci.function == request.function &&
               pci.offset == request.offset;
    });
    return found == section_.pciRegisters.end() ? nullptr : &*found;
}

std::int32_t SimulatedRegisters::readPciConfig(const PciConfigRequest& request, std::uint32_t* result) {
    if (!section_.ready || request.width != 4) {
        return failed;
    }
    if (const auto* pci = listed(request)) {
        *result = pci->value;
        return pci->status;
    }
    const auto northBridge = amdValue(section_.temperatureCelsius, 3U << 16);
    if (request.bus == 0 && request.device == 24 && request.function == 3 && request.offset == 0xA4) {
        *result = northBridge;
        return succeeded;
    }
    if (isRootComplex(request) && request.offset == 0xBC && family15Address_ == family15Temperature) {
        *result = northBridge;
        return succeeded;
    }
    if (isRootComplex(request) && request.offset == 0x64 && zenAddress_ == zenTemperature) {
        *result = amdValue(section_.temperatureCelsius, 1U << 19);
        return succeeded;
    }
    return failed;
}

std::int32_t SimulatedRegisters::writePciConfig(const PciConfigRequest& request) {
    if (!section_.ready || request.width != 4 || request.value == nullptr) {
        return failed;
    }
    if (const auto* pci = listed(request); pci != nullptr && pci->status != succeeded) {
        return pci->status;
    }
    if (!isRootComplex(request) || (request.offset != 0x60 && request.offset != 0xB8)) {
        return failed;
    }
    (request.offset == 0x60 ? zenAddress_ : family15Address_) = *request.value;
    return succeeded;
}

std::int32_t SimulatedRegisters::readMsr(std::uint32_t reg, std::uint64_t* result) {
    if (!section_.ready) {
        return failed;
    }
    const auto found = std::ranges::find(section_.msrs, reg, &ScenarioMsr::reg);
    if (found != section_.msrs.end()) {
        *result = found->value;
        return found->status;
    }
    const std::uint64_t maximum = section_.maximumCelsius;
    if (reg == 0x1A2) {
        *result = maximum << 16;
        return succeeded;
    }
    if (reg == 0x19C) {
        const auto distance = std::lround(static_cast<double>(maximum) - section_.temperatureCelsius);
        *result = 1ULL << 31 | (static_cast<std::uint64_t>(distance) & 0x7F) << 16;
        return succeeded;
    }
    return failed;
}

} // namespace vexil::simulated
