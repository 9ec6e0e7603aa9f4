#pragma once

#include "module/video_card/direct3d/video_memory_test.h"

namespace vexil::module::video_card {

/// The video memory test over as much memory as the card will give: a surface for every 4 MiB.
class Dx11ExtendedVideoMemoryTest final : public Dx11VideoMemoryTest {
public:
    Dx11ExtendedVideoMemoryTest();

    [[nodiscard]] std::uint32_t surfaceCount(core::Device* device, const core::TestRunArguments& arguments,
                                             std::uint32_t* count) const override;
};

} // namespace vexil::module::video_card
