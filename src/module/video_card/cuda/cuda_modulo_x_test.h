#pragma once

#include "module/video_card/cuda/cuda_abstract_test.h"

namespace vexil::module::video_card {

/// Stores one value in every twentieth word and its complement in all others, for each of the 20 possible
/// offsets.
class CudaModuloXTest : public CudaAbstractTest {
public:
    CudaModuloXTest();
    [[nodiscard]] std::uint32_t expectedDurationMinutes() const override { return 1; }

protected:
    std::uint8_t runBody(const core::TestRunArguments& arguments) override;
};

} // namespace vexil::module::video_card
