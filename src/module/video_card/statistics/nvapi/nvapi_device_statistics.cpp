#include "module/video_card/statistics/nvapi/nvapi_device_statistics.h"

#include "module/video_card/adapter_record.h"
#include "platform/library_names.h"

#include <cstdio>
#include <limits>
#include <utility>

namespace vexil::module::video_card {

namespace nvapi = platform::nvapi;
using Status = VideoCardStatisticsStatus;

namespace {

/// A record as NVAPI wants it: its version, and zeroes.
template <typename Record>
Record emptyRecord() {
    Record record{};
    record.version = nvapi::versionOf<Record>;
    return record;
}

} // namespace

std::string nvapiLocation(std::uint32_t bus, std::uint32_t slot) {
    char text[2 * 8 + 2];
    std::snprintf(text, sizeof(text), "%02x:%02x", bus, slot);
    return text;
}

std::int64_t meanTemperature(const nvapi::ThermalSettings& settings) {
    if (settings.count == 0) {
        // What the processor's conversion makes of zero divided by zero; the language leaves it open.
        return std::numeric_limits<std::int64_t>::min();
    }
    double sum = 0;
    std::uint32_t sensors = 0;
    for (const auto& sensor : settings.sensors) {
        if (sensors++ < settings.count) {
            sum += static_cast<double>(sensor.currentTemperature);
        }
    }
    return static_cast<std::int64_t>(sum / static_cast<double>(settings.count));
}

std::uint64_t bytesOfKib(std::uint32_t kib) { return std::uint32_t{kib << 10}; }

NvapiDeviceStatistics::NvapiDeviceStatistics(nvapi::GpuHandle gpu, std::string location,
                                             const NvapiRuntime& runtime)
    : gpu_(gpu), location_(std::move(location)), runtime_(runtime), reference_(runtime.access) {
    library_ = runtime_.loader.load(platform::nvapiLibrary(), 1);
    if (library_ == nullptr) {
        // Loaded for its effect on the process alone and never given back: an older driver serves no source.
        runtime_.loader.load(platform::nvapiOlderLibrary(), 1);
    } else {
        query_ = reinterpret_cast<nvapi::QueryInterface>(
            runtime_.loader.resolve(library_, "nvapi_QueryInterface"));
    }
    if (query_ != nullptr) {
        usage_ = reinterpret_cast<nvapi::GetUsage>(query_(nvapi::id::getUsage));
    }
    if (usage_ == nullptr) {
        releaseLibrary();
        throw std::string("Error loading nvapi dynamic library.");
    }
}

NvapiDeviceStatistics::~NvapiDeviceStatistics() { releaseLibrary(); }

void NvapiDeviceStatistics::releaseLibrary() {
    if (library_ != nullptr) {
        runtime_.loader.release(library_);
    }
}

bool NvapiDeviceStatistics::matches(const AdapterRecord& adapter) const {
    return adapter.location.starts_with(location_);
}

Status NvapiDeviceStatistics::getTemperature(std::int64_t& celsius) {
    auto settings = emptyRecord<nvapi::ThermalSettings>();
    if (runtime_.access.getThermalSettings(gpu_, nvapi::allSensors, settings) != nvapi::ok) {
        return Status::Unavailable;
    }
    celsius = meanTemperature(settings);
    return Status::Ok;
}

Status NvapiDeviceStatistics::getUsage(std::uint64_t& percent) {
    auto usage = emptyRecord<nvapi::Usage>();
    if (usage_(gpu_, &usage) != nvapi::ok) {
        return Status::Unavailable;
    }
    percent = usage.graphicsPercent;
    return Status::Ok;
}

Status NvapiDeviceStatistics::getTotalMemory(std::uint64_t& bytes) {
    auto info = emptyRecord<nvapi::MemoryInfo>();
    if (runtime_.access.getMemoryInfo(gpu_, info) != nvapi::ok) {
        return Status::Unavailable;
    }
    bytes = bytesOfKib(info.availableDedicatedVideoMemory);
    return Status::Ok;
}

Status NvapiDeviceStatistics::getFreeMemory(std::uint64_t& bytes) {
    auto info = emptyRecord<nvapi::MemoryInfo>();
    if (runtime_.access.getMemoryInfo(gpu_, info) != nvapi::ok) {
        return Status::Unavailable;
    }
    bytes = bytesOfKib(info.curAvailableDedicatedVideoMemory);
    return Status::Ok;
}

} // namespace vexil::module::video_card
