#pragma once

#include "module/video_card/cuda/cuda_abstract_test.h"

namespace vexil::module::video_card {

/// Fills each MiB with pairs of equal words, moves it by blocks inside the MiB and proves that the pairs
/// still agree. Nothing is compared with a stored expectation, so a fault that leaves both words of a pair
/// equal goes unseen.
class CUDABlockMoveTest : public CudaAbstractTest {
public:
    CUDABlockMoveTest();
    [[nodiscard]] std::uint32_t expectedDurationMinutes() const override { return 1; }

protected:
    std::uint8_t runBody(const core::TestRunArguments& arguments) override;
};

} // namespace vexil::module::video_card
