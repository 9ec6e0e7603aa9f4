#pragma once

#include "module/video_card/cuda/cuda_address_test.h"

#include <gtest/gtest.h>

namespace vexil::tests {

/// A memory test that lets its fields be looked at.
class ProbedTest final : public module::video_card::CUDAAddressTest {
public:
    using CUDAAddressTest::devicePatternOk_;
    using CUDAAddressTest::memoryBegin_;
    using CUDAAddressTest::memoryEnd_;
    using CUDAAddressTest::patternOk_;
    using CUDAAddressTest::releaseAll;
    using CUDAAddressTest::testedMiB_;

    std::uint8_t* begin = nullptr; ///< of the block, while the body ran

protected:
    std::uint8_t runBody(const core::TestRunArguments& arguments) override {
        begin = memoryBegin_;
        EXPECT_NE(devicePatternOk_, reinterpret_cast<std::uint8_t*>(&patternOk_));
        return CUDAAddressTest::runBody(arguments);
    }
};

} // namespace vexil::tests
