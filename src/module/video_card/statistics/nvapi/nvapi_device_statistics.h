#pragma once

#include "module/video_card/statistics/nvapi/nvapi_runtime.h"
#include "module/video_card/statistics/video_card_statistics.h"
#include "platform/nvapi.h"

#include <cstdint>
#include <string>

namespace vexil::module::video_card {

/// "bb:dd" of a bus and a slot number, in lower-case hexadecimal: a location without its function.
[[nodiscard]] std::string nvapiLocation(std::uint32_t bus, std::uint32_t slot);

/// The mean of the record's first `count` sensors in whole degrees, truncated toward zero; with a count of
/// zero the least 64-bit integer. The count is taken as NVAPI gave it, and the sensors beyond the record's
/// three count as zero.
[[nodiscard]] std::int64_t meanTemperature(const platform::nvapi::ThermalSettings& settings);

/// KiB to bytes in 32 bits, the carry lost: hosts and tests rely on the figure that this gives for 4 GiB and
/// more.
[[nodiscard]] std::uint64_t bytesOfKib(std::uint32_t kib);

/// One NVIDIA GPU through NVAPI. Keeps no state between queries.
class NvapiDeviceStatistics final : public VideoCardStatistics {
public:
    /// Takes an NVAPI reference and loads the library. Throws the NVAPI status as an `int` if the reference
    /// is refused, and the text "Error loading nvapi dynamic library." as a `std::string` if the library or
    /// the usage function is missing.
    NvapiDeviceStatistics(platform::nvapi::GpuHandle gpu, std::string location,
                          const NvapiRuntime& runtime = systemNvapi());
    ~NvapiDeviceStatistics() override;

    /// Whether the adapter's location begins with this one's, whatever its function.
    [[nodiscard]] bool matches(const AdapterRecord& adapter) const override;
    VideoCardStatisticsStatus getTemperature(std::int64_t& celsius) override;
    VideoCardStatisticsStatus getUsage(std::uint64_t& percent) override;
    VideoCardStatisticsStatus getTotalMemory(std::uint64_t& bytes) override;
    VideoCardStatisticsStatus getFreeMemory(std::uint64_t& bytes) override;

private:
    void releaseLibrary();

    platform::nvapi::GpuHandle gpu_;
    void* library_ = nullptr;
    platform::nvapi::QueryInterface query_ = nullptr;
    platform::nvapi::GetUsage usage_ = nullptr;
    std::string location_;
    const NvapiRuntime& runtime_;
    NvapiReference reference_; ///< the last: the location outlives it
};

} // namespace vexil::module::video_card
