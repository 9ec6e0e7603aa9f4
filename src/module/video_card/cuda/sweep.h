#pragma once

#include <cstdint>

namespace vexil::module::video_card {

/// When a pass gives up because the error flag is clear.
enum class LeaveOnMismatch : std::uint8_t {
    Never,       ///< the flag is looked at when the body ends
    AfterLaunch, ///< once the flag has been read back
    AroundLaunch ///< then, and before each launch as well
};

/// Which comes first when the flag cannot be read back.
enum class CommunicationErrorOrder : std::uint8_t { MessageFirst, ProgressFirst };

/// One pass over the block as all tests make it. After each launch the accumulator grows by `step`, and the
/// progress is `(accumulator / testedMiB + addend) / divisor + progressBase`, all in unsigned 32-bit
/// integers.
struct SweepPass {
    std::uint32_t progressBase;
    std::uint32_t step; ///< 16 times the pass's weight in percent
    bool readsFlag;     ///< a pass that checks memory
    LeaveOnMismatch leave = LeaveOnMismatch::Never;
    std::uint32_t firstMiB = 0;
    std::uint32_t accumulatorStart = 0;
    std::uint32_t addend = 0;
    std::uint32_t divisor = 1;
    CommunicationErrorOrder errorOrder = CommunicationErrorOrder::MessageFirst;
};

} // namespace vexil::module::video_card
