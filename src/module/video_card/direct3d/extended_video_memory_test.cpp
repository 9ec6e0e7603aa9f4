#include "module/video_card/direct3d/extended_video_memory_test.h"

#include "module/video_card/catalogue.h"
#include "module/video_card/direct3d/adapter_memory.h"
#include "module/video_card/direct3d/surface_list.h"

namespace vexil::module::video_card {

namespace {

constexpr std::int32_t testId = 4;

} // namespace

Dx11ExtendedVideoMemoryTest::Dx11ExtendedVideoMemoryTest()
    : Dx11VideoMemoryTest(catalogueDescriptor(testId)) {}

std::uint32_t Dx11ExtendedVideoMemoryTest::surfaceCount(core::Device* device, const core::TestRunArguments&,
                                                        std::uint32_t* count) const {
    const auto* const card = dynamic_cast<const Device*>(device);
    if (card == nullptr) {
        return 1;
    }
    *count = static_cast<std::uint32_t>(testableBytes(*card) >> surfaceBytesShift);
    return 0;
}

} // namespace vexil::module::video_card
