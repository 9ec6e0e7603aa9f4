#include "module/video_card/statistics/adl/adl_device_statistics.h"

#include "module/video_card/adapter_record.h"

#include <utility>

namespace vexil::module::video_card {

namespace adl = platform::adl;
using Status = VideoCardStatisticsStatus;

namespace {

/// Outside the accepted range, so that a call that writes nothing gives no temperature.
constexpr std::int32_t noReading = 999999;
constexpr std::int32_t thermalControllers = 10;

} // namespace

std::uint64_t freeAdlMemory(std::uint64_t totalBytes, std::int32_t usedMegabytes) {
    const auto used = static_cast<std::int32_t>(static_cast<std::uint32_t>(usedMegabytes) << 20);
    return totalBytes - static_cast<std::uint64_t>(std::int64_t{used});
}

Status convertAdlTemperature(std::int32_t millidegrees, std::int64_t& celsius) {
    celsius = millidegrees / 1000;
    return celsius < -50 || celsius > 200 ? Status::Unavailable : Status::Ok;
}

ADLDeviceStatistics::ADLDeviceStatistics(std::int32_t adapterIndex, std::string location,
                                         ADLContexts& contexts)
    : adapterIndex_(adapterIndex), location_(std::move(location)), contexts_(contexts) {}

bool ADLDeviceStatistics::matches(const AdapterRecord& adapter) const {
    return adapter.location == location_;
}

Status ADLDeviceStatistics::getTotalMemory(std::uint64_t& bytes) {
    if (!context() || context()->memory->memoryInfoGet == nullptr) {
        return Status::Unavailable;
    }
    adl::MemoryInfo info{};
    if (context()->memory->memoryInfoGet(adapterIndex_, &info) != adl::ok) {
        return Status::Unavailable;
    }
    bytes = static_cast<std::uint64_t>(info.iMemorySize);
    return Status::Ok;
}

Status ADLDeviceStatistics::getFreeMemory(std::uint64_t& bytes) {
    if (!context() || context()->memory->vramUsageGet == nullptr) {
        return Status::Unavailable;
    }
    std::int32_t used = 0;
    if (context()->memory->vramUsageGet(nullptr, adapterIndex_, &used) != adl::ok) {
        return Status::Unavailable;
    }
    std::uint64_t total = 0;
    if (getTotalMemory(total) != Status::Ok) {
        return Status::Unavailable;
    }
    bytes = freeAdlMemory(total, used);
    return Status::Ok;
}

Status ADLOD5DeviceStatistics::getTemperature(std::int64_t& celsius) {
    if (!context() || !context()->overdrive5) {
        return Status::Unavailable;
    }
    for (std::int32_t controller = 0; controller < thermalControllers; ++controller) {
        adl::ThermalControllerInfo info{};
        if (context()->overdrive5->thermalDevicesEnum(adapterIndex(), controller, &info) != adl::ok ||
            info.iThermalDomain != adl::gpuDomain) {
            continue;
        }
        adl::Temperature temperature{0, noReading};
        if (context()->overdrive5->temperatureGet(adapterIndex(), controller, &temperature) != adl::ok) {
            return convertAdlTemperature(temperature.iTemperature, celsius);
        }
    }
    return Status::Unavailable;
}

Status ADLOD5DeviceStatistics::getUsage(std::uint64_t&) { return Status::Unavailable; }

Status ADLOD6DeviceStatistics::getTemperature(std::int64_t& celsius) {
    std::int32_t millidegrees = noReading;
    if (!context() || !context()->overdrive6 ||
        context()->overdrive6->temperatureGet(adapterIndex(), &millidegrees) != adl::ok) {
        return Status::Unavailable;
    }
    return convertAdlTemperature(millidegrees, celsius);
}

Status ADLOD6DeviceStatistics::getUsage(std::uint64_t&) { return Status::Unavailable; }

Status ADLDNDeviceStatistics::getTemperature(std::int64_t& celsius) {
    std::int32_t millidegrees = noReading;
    if (!context() || !context()->overdriveN ||
        context()->overdriveN->temperatureGet(nullptr, adapterIndex(), adl::coreTemperature, &millidegrees) !=
            adl::ok) {
        return Status::Unavailable;
    }
    return convertAdlTemperature(millidegrees, celsius);
}

Status ADLDNDeviceStatistics::getUsage(std::uint64_t&) { return Status::Unavailable; }

} // namespace vexil::module::video_card
