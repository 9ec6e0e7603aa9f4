#pragma once

#include "core/test.h"

#include <cstdint>
#include <memory>

namespace vexil::module::video_card {

/// Base of the two CUDA arithmetic tests: an integer stage, then a floating-point stage. A stop is looked at
/// before the test and after each stage.
class CudaAbstractMathOpTest : public core::Test {
public:
    std::uint8_t execute(const core::TestRunArguments& arguments) override;
    [[nodiscard]] bool requiresExclusiveRun() const override { return false; }
    [[nodiscard]] std::uint32_t expectedDurationMinutes() const override = 0;
    [[nodiscard]] bool isSupported(core::Device* device, std::shared_ptr<core::Device> holder) const override;

protected:
    explicit CudaAbstractMathOpTest(std::int32_t id);

    /// `Passed` means go on. A user's stop is silent, an event of the machine is reported.
    virtual std::uint8_t checkStop(const core::TestRunArguments& arguments);
    virtual std::uint8_t runIntegerStage(const core::TestRunArguments& arguments) = 0;
    virtual std::uint8_t runFloatStage(const core::TestRunArguments& arguments) = 0;

    /// Runs a stage of that mode and looks for a stop if it passed.
    template <typename Stage>
    std::uint8_t runStage(std::int32_t mode, const core::TestRunArguments& arguments);
};

/// The four basic operations.
class CudaStandardMathOperation final : public CudaAbstractMathOpTest {
public:
    CudaStandardMathOperation();
    [[nodiscard]] std::uint32_t expectedDurationMinutes() const override { return 1; }

protected:
    std::uint8_t runIntegerStage(const core::TestRunArguments& arguments) override;
    std::uint8_t runFloatStage(const core::TestRunArguments& arguments) override;
};

/// A wider set of operations, the approximate ones of the special function units among them.
class CudaAdvancedMathOperation final : public CudaAbstractMathOpTest {
public:
    CudaAdvancedMathOperation();
    [[nodiscard]] std::uint32_t expectedDurationMinutes() const override { return 1; }

protected:
    std::uint8_t runIntegerStage(const core::TestRunArguments& arguments) override;
    std::uint8_t runFloatStage(const core::TestRunArguments& arguments) override;
};

} // namespace vexil::module::video_card
