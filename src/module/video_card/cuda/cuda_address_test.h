#pragma once

#include "module/video_card/cuda/cuda_abstract_test.h"

namespace vexil::module::video_card {

/// Proves that every 64-bit word of the block can be told apart from every other: each is filled with its own
/// address. The one test that reads to the end even after a mismatch.
class CUDAAddressTest : public CudaAbstractTest {
public:
    CUDAAddressTest();
    [[nodiscard]] std::uint32_t expectedDurationMinutes() const override { return 1; }

protected:
    std::uint8_t runBody(const core::TestRunArguments& arguments) override;
};

} // namespace vexil::module::video_card
