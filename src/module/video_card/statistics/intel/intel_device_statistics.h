#pragma once

#include "module/cpu/cpu_machine.h"
#include "module/cpu/temperature_monitor.h"
#include "module/video_card/statistics/statistics_sources.h"

namespace vexil::module::video_card {

/// The temperature of graphics that share the processor's package: it is the processor's. Nothing else.
class IntelDeviceStatistics final : public VideoCardStatistics {
public:
    /// Throws for a processor that cannot be asked, as `cpu::TemperatureMonitor` does.
    explicit IntelDeviceStatistics(cpu::CpuMachine& machine) : monitor_(machine) {}

    /// Every card of Intel's vendor id, with memory of its own or without.
    [[nodiscard]] bool matches(const AdapterRecord& adapter) const override;
    /// Truncated toward zero; -999999 is written where the sensor does not answer.
    VideoCardStatisticsStatus getTemperature(std::int64_t& celsius) override;
    VideoCardStatisticsStatus getUsage(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }
    VideoCardStatisticsStatus getTotalMemory(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }
    VideoCardStatisticsStatus getFreeMemory(std::uint64_t&) override {
        return VideoCardStatisticsStatus::Unavailable;
    }

private:
    cpu::TemperatureMonitor monitor_;
};

/// Always finds one source, whatever cards the machine has. An exception of its making passes through.
class IntelDeviceStatisticsScanner final : public VideoCardStatisticsScanner {
public:
    /// `machine` must outlive the sources.
    explicit IntelDeviceStatisticsScanner(cpu::CpuMachine& machine = cpu::systemCpuMachine())
        : machine_(machine) {}

    void reserved1() override {}
    void reserved2() override {}
    StatisticsSources& scan(StatisticsSources& sources) override;

private:
    cpu::CpuMachine& machine_;
};

} // namespace vexil::module::video_card
