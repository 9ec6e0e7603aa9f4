#pragma once

#include "module/video_card/cuda/cuda_abstract_test.h"

namespace vexil::module::video_card {

/// Uploads one MiB of random words and compares every other MiB with it, as it is and then inverted. The
/// first MiB of the block is the reference, which no kernel writes or verifies.
class CudaRandomNumberSequenceTest : public CudaAbstractTest {
public:
    CudaRandomNumberSequenceTest();
    [[nodiscard]] std::uint32_t expectedDurationMinutes() const override { return 1; }

protected:
    std::uint8_t runBody(const core::TestRunArguments& arguments) override;
};

} // namespace vexil::module::video_card
