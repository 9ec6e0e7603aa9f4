#pragma once

#include "module/video_card/cuda/cuda_abstract_test.h"

namespace vexil::module::video_card {

/// Runs one pattern through its complement once.
class CUDAMovingInversionTest : public CudaAbstractTest {
public:
    CUDAMovingInversionTest();
    [[nodiscard]] std::uint32_t expectedDurationMinutes() const override { return 1; }

protected:
    std::uint8_t runBody(const core::TestRunArguments& arguments) override;
};

} // namespace vexil::module::video_card
