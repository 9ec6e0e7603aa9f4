#include "module/video_card/direct3d/texture_pipeline/texture_pipeline_test.h"

#include "core/message_keys.h"
#include "module/video_card/catalogue.h"
#include "module/video_card/device.h"
#include "module/video_card/direct3d/direct3d_offer.h"
#include "module/video_card/direct3d/dx11_reset_guard.h"
#include "module/video_card/direct3d/dx11_stop_check.h"
#include "module/video_card/direct3d/texture_pipeline/texture_pass.h"
#include "module/video_card/direct3d/texture_pipeline/transposition.h"

#include <new>
#include <string>

namespace vexil::module::video_card {

using core::TestResult;

namespace {

constexpr std::int32_t testId = 3;

/// In floats, as the progress of this test has always been counted.
std::uint8_t progressOf(std::uint32_t pass) {
    return static_cast<std::uint8_t>(static_cast<float>(pass) / 1000.0F * 100.0F);
}

} // namespace

/// What one run holds: the quad on the card's device, and the images of the pass at hand.
class Dx11TexturePipelineTest::Run {
public:
    Run(const core::TestRunArguments& arguments, const Dx11Context& dx11)
        : reporter_(*arguments.reporter), arguments_(arguments), dx11_(dx11) {}

    std::uint8_t execute() {
        static constexpr D3D11_VIEWPORT viewport{0, 0, patternExtent, patternExtent, 0, 0};
        dx11_.context->RSSetViewports(1, &viewport);
        if (FAILED(quad_.create(*dx11_.device))) {
            return end(keys::internalError, TestResult::NotCompleted);
        }
        blank_.assign(patternPixels, 0);
        for (std::uint32_t pass = 0; pass < passes; ++pass) {
            if (dx11StopCheck(arguments_)) {
                reporter_.setProgress(100);
                return TestResult::NotCompleted;
            }
            fillPattern(pass, image_);
            if (const auto result = runPass(); result != TestResult::Passed) {
                return result;
            }
            reporter_.setProgress(progressOf(pass));
        }
        return TestResult::Passed;
    }

    std::uint8_t end(const std::string& key, std::uint8_t result) {
        reporter_.report({0, key});
        reporter_.setProgress(100);
        return result;
    }

private:
    std::uint8_t runPass() {
        TexturePass pass(dx11_, quad_);
        if (!pass.create(blank_, image_)) {
            return end(keys::internalError, TestResult::NotCompleted);
        }
        pass.draw();
        if (!pass.readBack(picture_)) {
            return end(keys::internalError, TestResult::NotCompleted);
        }
        const PatternPixels image(image_);
        const PatternPixels picture(picture_);
        return firstTranspositionError(image, picture) ? end(keys::inconsistentImages, TestResult::Failed)
                                                       : TestResult::Passed;
    }

    core::TestReporter& reporter_;
    const core::TestRunArguments& arguments_;
    Dx11Context dx11_;
    PatternQuad quad_;
    PatternImage blank_;
    PatternImage image_;
    PatternImage picture_;
};

Dx11TexturePipelineTest::Dx11TexturePipelineTest() : Test(catalogueDescriptor(testId)) {}

bool Dx11TexturePipelineTest::isSupported(core::Device* device, std::shared_ptr<core::Device>) const {
    return hasDirect3D(device);
}

std::uint8_t Dx11TexturePipelineTest::execute(const core::TestRunArguments& arguments) {
    if (dx11StopCheck(arguments)) {
        arguments.reporter->setProgress(100);
        return TestResult::NotCompleted;
    }
    const auto device = std::dynamic_pointer_cast<Device>(arguments.device.lock());
    if (!device) {
        return TestResult::DeviceUnavailable;
    }
    const auto lock = device->lock();
    if (!lock.slot()) {
        return TestResult::NotSupported;
    }
    const Dx11ResetGuard reset(lock);
    Run run(arguments, *lock.slot());
    try {
        return run.execute();
    } catch (const std::bad_alloc&) {
        return run.end(keys::internalError, TestResult::NotCompleted);
    }
}

} // namespace vexil::module::video_card
