#pragma once

#include "module/video_card/cuda/cuda_device_record.h"

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

class StringHandler;

namespace vexil::module::video_card {

/// Room for "0000:0A:00.0" and the NUL at its end.
using PciBusIdText = std::array<char, 13>;

/// The two questions to CUDA that listing its devices takes. True on success.
struct CudaListing {
    std::function<bool(std::int32_t& count)> deviceCount;                 ///< `cudaGetDeviceCount`
    std::function<bool(std::int32_t index, PciBusIdText& text)> pciBusId; ///< `cudaDeviceGetPCIBusId`
};

/// CUDA's devices by location. Devices that do not tell theirs are left out, and so is the PCI domain,
/// unread: a card in another domain matches by bus, device and function alone.
[[nodiscard]] std::vector<CudaDeviceRecord> listCudaDevices(const CudaListing& cuda, StringHandler& strings);

} // namespace vexil::module::video_card
