#pragma once

#include "module/video_card/cuda/cuda_device_record.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class StringHandler;

namespace vexil::module::video_card {

/// The three questions to CUDA that listing its devices takes. True on success.
struct CudaListing {
    std::function<bool(std::int32_t& count)> deviceCount; ///< `cudaGetDeviceCount`
    std::function<bool(std::int32_t index, std::string& text)>
        pciBusId; ///< `cudaDeviceGetPCIBusId`, 13 characters
};

/// CUDA's devices by location. Devices that do not tell theirs are left out, and so is the PCI domain,
/// unread: a card in another domain matches by bus, device and function alone.
[[nodiscard]] std::vector<CudaDeviceRecord> listCudaDevices(const CudaListing& cuda, StringHandler& strings);

} // namespace vexil::module::video_card
