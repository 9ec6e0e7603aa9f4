#pragma once

#include "core/test.h"

namespace vexil::module::video_card {

/// Proves the path from texture through sampler and pixel shader to the render target: a thousand random
/// images are drawn transposed, and each pixel must come back where it belongs. The images are the same in
/// every run.
class Dx11TexturePipelineTest final : public core::Test {
public:
    static constexpr std::uint32_t passes = 1000;

    Dx11TexturePipelineTest();

    std::uint8_t execute(const core::TestRunArguments& arguments) override;
    /// True for a card with a Direct3D device.
    [[nodiscard]] bool isSupported(core::Device* device, std::shared_ptr<core::Device> holder) const override;

private:
    class Run;
};

} // namespace vexil::module::video_card
