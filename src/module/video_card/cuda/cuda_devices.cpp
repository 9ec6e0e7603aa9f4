#include "module/video_card/cuda/cuda_devices.h"

#include "core/sal.h"

#include <string>

namespace vexil::module::video_card {

namespace {

/// Of "0000:0A:00.0".
constexpr std::size_t domainLength = 5;

} // namespace

std::vector<CudaDeviceRecord> listCudaDevices(const CudaListing& cuda, StringHandler& strings) {
    std::vector<CudaDeviceRecord> records;
    std::int32_t count = 0;
    if (!cuda.deviceCount(count)) {
        return records;
    }
    for (std::int32_t index = 0; index < count; ++index) {
        PciBusIdText answer{};
        if (!cuda.pciBusId(index, answer)) {
            continue;
        }
        // A driver that lies may fill the room to its end; a text too short to hold a location tells none.
        answer.back() = '\0';
        const std::string text = answer.data();
        if (text.size() < domainLength) {
            continue;
        }
        CudaDeviceRecord record{text.substr(domainLength), index};
        strings.toLower(record.pciBusId);
        records.push_back(std::move(record));
    }
    return records;
}

} // namespace vexil::module::video_card
