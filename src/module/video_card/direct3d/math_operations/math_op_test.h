#pragma once

#include "core/test.h"
#include "module/video_card/device.h"

#include <cstddef>
#include <span>

namespace vexil::module::video_card {

class DirectComputeMathOp;

/// Runs fixed tables of operands through compute shaders, in three stages, and compares what the card makes
/// of them with stored results. A run can be stopped between the stages only.
class DirectComputeMathOpTest : public core::Test {
public:
    std::uint8_t execute(const core::TestRunArguments& arguments) override;
    /// True for a card with a Direct3D device that is not the system's software adapter.
    [[nodiscard]] bool isSupported(core::Device* device, std::shared_ptr<core::Device> holder) const override;

    // Each returns a `TestResult`; anything but `Passed` ends the test with it. `access` holds the lock of a
    // card with a Direct3D device.
    virtual std::uint8_t runIntegerStage(const core::TestRunArguments& arguments,
                                         const Device::Direct3DLock& access) = 0;
    virtual std::uint8_t runFloatStage(const core::TestRunArguments& arguments,
                                       const Device::Direct3DLock& access) = 0;
    virtual std::uint8_t runDoubleStage(const core::TestRunArguments& arguments,
                                        const Device::Direct3DLock& access) = 0;

protected:
    using Bytecode = std::span<const std::byte>;

    explicit DirectComputeMathOpTest(core::TestDescriptor descriptor);

    /// One stage: creates the shaders on the card's device, has `Operations` run them, and reports what goes
    /// wrong. A shader that the card cannot create is left out, and so is an empty one.
    template <typename Operations>
    static std::uint8_t runStage(const core::TestRunArguments& arguments, const Device::Direct3DLock& access,
                                 std::int32_t mode, Bytecode shader, Bytecode dotShader = {});

private:
    static std::uint8_t runShaders(const core::TestRunArguments& arguments, ID3D11Device& device,
                                   DirectComputeMathOp& operations, std::int32_t mode, Bytecode shader,
                                   Bytecode dotShader);
};

/// The basic operations: sums, products and quotients.
class DirectComputeMathOpStandardTest final : public DirectComputeMathOpTest {
public:
    DirectComputeMathOpStandardTest();

    std::uint8_t runIntegerStage(const core::TestRunArguments& arguments,
                                 const Device::Direct3DLock& access) override;
    std::uint8_t runFloatStage(const core::TestRunArguments& arguments,
                               const Device::Direct3DLock& access) override;
    std::uint8_t runDoubleStage(const core::TestRunArguments& arguments,
                                const Device::Direct3DLock& access) override;
};

/// The operations beyond: multiply-add, extremes, roots, exponentials, trigonometry, dot products.
class DirectComputeMathOpAdvancedTest final : public DirectComputeMathOpTest {
public:
    DirectComputeMathOpAdvancedTest();

    std::uint8_t runIntegerStage(const core::TestRunArguments& arguments,
                                 const Device::Direct3DLock& access) override;
    std::uint8_t runFloatStage(const core::TestRunArguments& arguments,
                               const Device::Direct3DLock& access) override;
    std::uint8_t runDoubleStage(const core::TestRunArguments& arguments,
                                const Device::Direct3DLock& access) override;
};

} // namespace vexil::module::video_card
