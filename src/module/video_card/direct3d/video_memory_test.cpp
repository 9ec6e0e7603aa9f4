#include "module/video_card/direct3d/video_memory_test.h"

#include "core/message_keys.h"
#include "module/video_card/catalogue.h"
#include "module/video_card/direct3d/adapter_memory.h"
#include "module/video_card/direct3d/dx11_reset_guard.h"
#include "module/video_card/direct3d/dx11_stop_check.h"
#include "module/video_card/direct3d/surface_list.h"
#include "module/video_card/direct3d/surface_read_back.h"
#include "module/video_card/direct3d/surface_render_pipeline.h"
#include "module/video_card/vocabulary.h"
#include "utils/mersenne_twister.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace vexil::module::video_card {

using core::TestResult;

namespace {

constexpr std::int32_t testId = 1;
constexpr std::int32_t mostSurfaces = 50; ///< 200 MiB
/// Constant, so that every run writes the same images.
constexpr std::uint32_t imageSeed = 123;

} // namespace

/// What one run holds on the card's device. The members go in reverse order: the surfaces, then the pipeline.
class Dx11VideoMemoryTest::Run {
public:
    Run(const Dx11VideoMemoryTest& test, const core::TestRunArguments& arguments, Device& device)
        : test_(test), arguments_(arguments), card_(device), dx11_(device.dx11Context()) {}

    std::uint8_t execute() {
        if (isDeviceRemoved() || FAILED(pipeline_.create(*dx11_.device, *dx11_.context))) {
            return end(keys::couldNotBeCompleted);
        }
        if (!allocate()) {
            return end(keys::couldNotAllocateMemory);
        }
        for (const auto& surface : surfaces_) {
            if (const auto result = testSurface(surface); result != TestResult::Passed) {
                return result;
            }
        }
        // Both numbers are what was tested: a memory that was full early is no failure.
        const auto tested = std::to_string(tested_);
        arguments_.reporter->report({0, keys::totalSurfacesTested + ": " + tested + "/" + tested});
        return TestResult::Passed;
    }

private:
    bool isDeviceRemoved() const { return dx11_.device->GetDeviceRemovedReason() != S_OK; }

    std::uint8_t end(const std::string& key) const {
        arguments_.reporter->setProgress(100);
        arguments_.reporter->report({0, key});
        return TestResult::NotCompleted;
    }

    bool allocate() {
        try {
            sourceImage_.resize(surfaceBytes);
            readBackImage_.resize(surfaceBytes);
        } catch (const std::bad_alloc&) {
            return false;
        }
        std::uint32_t count = 0;
        return test_.surfaceCount(&card_, arguments_, &count) == 0 &&
               createSurfaces(*dx11_.device, count, surfaces_);
    }

    std::uint8_t testSurface(const VideoSurface& surface) {
        if (isDeviceRemoved()) {
            return end(keys::couldNotBeCompleted);
        }
        random_.fillLowBytes(sourceImage_);
        upload(*surface.texture);
        pipeline_.draw(*dx11_.context, surface.view.get());
        if (FAILED(readBackSurface(*dx11_.device, *dx11_.context, *surface.texture, readBackImage_))) {
            return end(keys::couldNotExecuteOperation);
        }
        if (std::memcmp(sourceImage_.data(), readBackImage_.data(), surfaceBytes) != 0) {
            // Without a message and with the progress left where it is: the result alone tells of the
            // failure.
            return TestResult::Failed;
        }
        ++tested_;
        percents_ += 100;
        arguments_.reporter->setProgress(static_cast<std::uint8_t>(percents_ / surfaces_.size()));
        return dx11StopCheck(arguments_, Dx11StopManner::progressFirst) ? TestResult::NotCompleted
                                                                        : TestResult::Passed;
    }

    void upload(ID3D11Texture2D& texture) const {
        D3D11_TEXTURE2D_DESC description{};
        texture.GetDesc(&description);
        dx11_.context->UpdateSubresource(&texture, 0, nullptr, sourceImage_.data(), description.Width * 4, 0);
    }

    const Dx11VideoMemoryTest& test_;
    const core::TestRunArguments& arguments_;
    Device& card_;
    Dx11Context dx11_;
    SurfaceRenderPipeline pipeline_;
    std::vector<std::uint8_t> sourceImage_;
    std::vector<std::uint8_t> readBackImage_;
    utils::MersenneTwister random_{imageSeed};
    std::vector<VideoSurface> surfaces_;
    std::uint32_t tested_ = 0;
    std::uint64_t percents_ = 0;
};

Dx11VideoMemoryTest::Dx11VideoMemoryTest() : Dx11VideoMemoryTest(catalogueDescriptor(testId)) {}

Dx11VideoMemoryTest::Dx11VideoMemoryTest(core::TestDescriptor descriptor) : Test(std::move(descriptor)) {}

bool Dx11VideoMemoryTest::isSupported(core::Device*, std::shared_ptr<core::Device>) const { return true; }

std::uint32_t Dx11VideoMemoryTest::surfaceCount(core::Device* device, const core::TestRunArguments&,
                                                std::uint32_t* count) const {
    const auto* const card = dynamic_cast<const Device*>(device);
    if (card == nullptr) {
        return 1;
    }
    // Counted with a sign: free memory beyond all reason may turn out as a negative number, which makes none.
    const auto surfaces = static_cast<std::int32_t>(testableBytes(*card) >> surfaceBytesShift);
    *count = static_cast<std::uint32_t>(std::clamp(surfaces, 0, mostSurfaces));
    return 0;
}

std::uint8_t Dx11VideoMemoryTest::execute(const core::TestRunArguments& arguments) {
    if (dx11StopCheck(arguments, Dx11StopManner::progressFirst)) {
        return TestResult::NotCompleted;
    }
    auto& reporter = *arguments.reporter;
    const auto refuse = [&](std::uint8_t result) {
        reporter.report({0, keys::couldNotExecuteOperation});
        reporter.setProgress(100);
        return result;
    };
    const auto device = std::dynamic_pointer_cast<Device>(arguments.device.lock());
    if (!device) {
        return refuse(TestResult::DeviceUnavailable);
    }
    const auto lock = device->lock();
    if (!lock.slot()) {
        return refuse(TestResult::NotSupported);
    }
    if (device->displayName() == vocabulary::basicDisplayAdapter) {
        reporter.setProgress(100);
        reporter.report({0, keys::couldNotExecuteOperation});
        reporter.report({0, keys::noDriver});
        return TestResult::NotSupported;
    }
    const Dx11ResetGuard reset(lock);
    reporter.setProgress(0);
    return Run(*this, arguments, *device).execute();
}

} // namespace vexil::module::video_card
