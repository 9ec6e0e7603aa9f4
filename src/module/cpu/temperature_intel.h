#pragma once

#include "module/cpu/abstract_cpu_temperature.h"
#include "module/cpu/pinned_reading.h"
#include "module/cpu/vxk_service_interface.h"

namespace vexil::module::cpu {

/// The digital thermal sensor of an Intel processor, which counts down from the highest temperature that the
/// junction may have.
class TemperatureIntel final : public AbstractCpuTemperature {
public:
    TemperatureIntel(std::shared_ptr<VXKServiceInterface> service,
                     std::shared_ptr<const LogicalProcessors> processors,
                     ThreadMaker makeThread = platform::createSuspendedThread);

    /// The sensor of the processor that the calling thread runs on. A distance beyond the maximum gives a
    /// very large value, not a negative one: the difference is taken as unsigned.
    std::int32_t getPackageTemperature(double& celsius) override;
    /// Reads on each logical processor in turn; the first reading of a core stands, failed ones are left
    /// out. 0 whenever the service is ready.
    std::int32_t getCoreTemperatures(std::map<std::int32_t, double>& celsius) override;

private:
    std::shared_ptr<VXKServiceInterface> service_;
    std::shared_ptr<const LogicalProcessors> processors_;
    ThreadMaker makeThread_;
};

} // namespace vexil::module::cpu
