#include "module/video_card/direct3d/math_operations/math_op_test.h"

#include "core/message_keys.h"
#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/direct3d/direct3d_offer.h"
#include "module/video_card/direct3d/dx11_reset_guard.h"
#include "module/video_card/direct3d/dx11_stop_check.h"
#include "module/video_card/direct3d/math_operations/math_op.h"

#include <utility>

namespace vexil::module::video_card {

using core::TestResult;

namespace {

/// The message of a card that refused something is the only one of the module with this kind.
constexpr std::uint8_t refusalKind = 1;

std::uint8_t stopCheck(const core::TestRunArguments& arguments) {
    return dx11StopCheck(arguments) ? TestResult::NotCompleted : TestResult::Passed;
}

ComShared<ID3D11ComputeShader> createShader(ID3D11Device& device, std::span<const std::byte> bytecode) {
    ComShared<ID3D11ComputeShader> shader;
    if (!bytecode.empty()) {
        // The dispatch tells what comes of a failure: a card without doubles has no shader for them.
        static_cast<void>(createCom(shader, [&](auto out) {
            return device.CreateComputeShader(bytecode.data(), bytecode.size(), nullptr, out);
        }));
    }
    return shader;
}

} // namespace

DirectComputeMathOpTest::DirectComputeMathOpTest(core::TestDescriptor descriptor)
    : Test(std::move(descriptor)) {}

bool DirectComputeMathOpTest::isSupported(core::Device* device, std::shared_ptr<core::Device>) const {
    return hasHardwareDirect3D(device);
}

std::uint8_t DirectComputeMathOpTest::runShaders(const core::TestRunArguments& arguments,
                                                 ID3D11Device& device, DirectComputeMathOp& operations,
                                                 std::int32_t mode, Bytecode shader, Bytecode dotShader) {
    const auto end = [&](std::uint8_t result, const core::TestMessage& message) {
        arguments.reporter->setProgress(100);
        arguments.reporter->report(message);
        return result;
    };
    const auto mainShader = createShader(device, shader);
    const auto otherShader = createShader(device, dotShader);
    switch (operations.execute(mode, mainShader.get(), otherShader.get())) {
    case TestResult::NotCompleted:
        return end(TestResult::NotCompleted, {refusalKind, keys::couldNotExecuteOperation});
    case TestResult::Failed:
        return end(TestResult::Failed, {0, keys::mathOperationFailed});
    default:
        return stopCheck(arguments);
    }
}

std::uint8_t DirectComputeMathOpTest::execute(const core::TestRunArguments& arguments) {
    using Stage =
        std::uint8_t (DirectComputeMathOpTest::*)(const core::TestRunArguments&, const Device::Direct3DLock&);
    static constexpr Stage stages[] = {&DirectComputeMathOpTest::runIntegerStage,
                                       &DirectComputeMathOpTest::runFloatStage,
                                       &DirectComputeMathOpTest::runDoubleStage};

    if (const auto result = stopCheck(arguments); result != TestResult::Passed) {
        return result;
    }
    if (const auto device = std::dynamic_pointer_cast<Device>(arguments.device.lock()); !device) {
        return TestResult::DeviceUnavailable;
    } else if (!device->lock().slot()) {
        arguments.reporter->setProgress(100);
        arguments.reporter->report({0, keys::notSupportedInThisDevice});
        return TestResult::NotSupported;
    }
    // The look was with a lock of its own. What the card lost since then ends the run without a message.
    const auto device = std::dynamic_pointer_cast<Device>(arguments.device.lock());
    if (!device) {
        return TestResult::DeviceUnavailable;
    }
    const auto access = device->lock();
    if (!access.slot()) {
        return TestResult::NotSupported;
    }
    const Dx11ResetGuard reset(access);
    for (const auto stage : stages) {
        if (stopCheck(arguments) != TestResult::Passed) {
            return TestResult::NotCompleted;
        }
        if (const auto result = (this->*stage)(arguments, access); result != TestResult::Passed) {
            return result;
        }
    }
    return stopCheck(arguments);
}

} // namespace vexil::module::video_card
