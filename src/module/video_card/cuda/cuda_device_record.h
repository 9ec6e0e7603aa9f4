#pragma once

#include <cstdint>
#include <string>

namespace vexil::module::video_card {

/// A card's place in CUDA's list.
struct CudaDeviceRecord {
    std::string pciBusId;   ///< in the form of `AdapterRecord::location`
    std::int32_t index = 0; ///< the CUDA device number
};

} // namespace vexil::module::video_card
