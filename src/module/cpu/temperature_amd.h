#pragma once

#include "module/cpu/abstract_cpu_temperature.h"
#include "module/cpu/cpu_machine.h"
#include "module/cpu/vxk_service_interface.h"

#include <functional>

namespace vexil::module::cpu {

/// The temperature sensor of an AMD processor, which each family keeps in another register.
class TemperatureAmd final : public AbstractCpuTemperature {
public:
    using Reader = std::function<std::int32_t(const std::shared_ptr<VXKServiceInterface>&, double&)>;

    /// Asks the machine for family and model. Throws what the look-up throws, and for an unknown family.
    TemperatureAmd(std::shared_ptr<VXKServiceInterface> service,
                   std::shared_ptr<const LogicalProcessors> processors, CpuMachine& machine);

    std::int32_t getPackageTemperature(double& celsius) override;
    /// The package has one sensor: its reading stands under key 0, which is made even if the reading fails.
    std::int32_t getCoreTemperatures(std::map<std::int32_t, double>& celsius) override;

private:
    std::shared_ptr<VXKServiceInterface> service_;
    std::shared_ptr<const LogicalProcessors> processors_;
    Reader reader_;
};

} // namespace vexil::module::cpu
