#pragma once

#include "module/video_card/cuda/cuda_driver_api.h"

#include <cstddef>
#include <cstdint>
#include <functional>

namespace vexil::hardware {

/// The driver itself, for what the runtime's calls in use leave out. Entries that it lacks are null.
[[nodiscard]] const cuda::CudaDriverCalls& driver();

/// Seconds of the work on the thread's card, from an idle card to an idle card.
[[nodiscard]] double secondsOf(const std::function<void()>& work);

/// What the card does by itself with a block, in bytes a second that are read or written; 0 where it cannot.
struct PlainSpeed {
    double fill = 0; ///< of the whole block
    double copy = 0; ///< of its first half from its second: as many bytes as the block has
};

/// Measures both on the block, whose content is lost; each once more before, to warm up.
[[nodiscard]] PlainSpeed plainSpeed(std::uint8_t* block, std::size_t bytes);

} // namespace vexil::hardware
