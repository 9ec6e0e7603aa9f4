#pragma once

#include "module/video_card/cuda/cuda_abstract_test.h"

namespace vexil::module::video_card {

/// Turns all zeros into all ones and back, word by word, upwards and then downwards through each MiB.
class CUDAMemoryFaultTest : public CudaAbstractTest {
public:
    CUDAMemoryFaultTest();
    [[nodiscard]] std::uint32_t expectedDurationMinutes() const override { return 1; }

protected:
    std::uint8_t runBody(const core::TestRunArguments& arguments) override;
};

} // namespace vexil::module::video_card
