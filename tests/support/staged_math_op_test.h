#pragma once

#include "core/test_result.h"
#include "module/video_card/catalogue.h"
#include "module/video_card/direct3d/math_operations/math_op_test.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vexil::tests {

/// An arithmetic test with stages of its own: what each does and returns, and which were run.
class StagedTest final : public module::video_card::DirectComputeMathOpTest {
public:
    using Access = module::video_card::Device::Direct3DLock;
    using Stage = std::function<std::uint8_t()>;

    StagedTest() : DirectComputeMathOpTest(module::video_card::catalogueDescriptor(17)) {}

    std::array<Stage, 3> stages = {passed(), passed(), passed()};
    std::vector<std::string> run;

    static Stage passed() {
        return [] { return core::TestResult::Passed; };
    }
    std::uint8_t runIntegerStage(const core::TestRunArguments&, const Access& access) override {
        return stage(0, "integer", access);
    }
    std::uint8_t runFloatStage(const core::TestRunArguments&, const Access& access) override {
        return stage(1, "float", access);
    }
    std::uint8_t runDoubleStage(const core::TestRunArguments&, const Access& access) override {
        return stage(2, "double", access);
    }

private:
    std::uint8_t stage(std::size_t number, const char* name, const Access& access) {
        EXPECT_TRUE(access.slot()->device);
        run.emplace_back(name);
        return stages[number]();
    }
};

} // namespace vexil::tests
