#include "module/video_card/direct3d/adapter_memory.h"

#include "module/video_card/device.h"
#include "module/video_card/vocabulary.h"

#include <string>

namespace vexil::module::video_card {

namespace {

constexpr UINT intelVendor = 0x8086;

} // namespace

std::uint64_t adapterMemoryBytes(const Device& device) {
    const auto desc = device.dx11Context().adapterInfo.desc;
    // Intel's cards with memory of their own are told by their name, which the identifier holds.
    const bool isArc = device.udi().find(vocabulary::arc) != std::string::npos;
    if (desc.VendorId == intelVendor && !isArc) {
        return desc.SharedSystemMemory;
    }
    return desc.DedicatedVideoMemory != 0 ? desc.DedicatedVideoMemory : desc.SharedSystemMemory;
}

std::uint64_t testableBytes(const Device& device) {
    std::uint64_t bytes = 0;
    if (device.getFreeMemory(bytes)) {
        return bytes;
    }
    return static_cast<std::uint64_t>(static_cast<float>(adapterMemoryBytes(device)) * 0.8F);
}

} // namespace vexil::module::video_card
