#pragma once

#include "simulated/scenario/processor_section.h"

#include "suite/driver_service/driver_service_base.h"

#include <cstdint>

namespace vexil::simulated {

/// The driver service of a simulated machine. Its registers show one temperature in the form of every kind of
/// processor that the module knows; those that the scenario lists by number go before.
class SimulatedRegisters final : public DriverServiceBase {
public:
    explicit SimulatedRegisters(DriverServiceSection section) : section_(std::move(section)) {}

    std::int32_t isReady() override { return section_.ready ? 1 : 0; }
    std::int32_t readPciConfig(const PciConfigRequest& request, std::uint32_t* result) override;
    std::int32_t writePciConfig(const PciConfigRequest& request) override;
    std::int32_t readMsr(std::uint32_t reg, std::uint64_t* result) override;

private:
    [[nodiscard]] const ScenarioPciRegister* listed(const PciConfigRequest& request) const;

    DriverServiceSection section_;
    // What was written last into the two registers that choose another one.
    std::uint32_t family15Address_ = 0;
    std::uint32_t zenAddress_ = 0;
};

} // namespace vexil::simulated
