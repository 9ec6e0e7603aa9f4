#include "module/video_card/test_creation.h"

#include "module/video_card/direct3d/extended_video_memory_test.h"
#include "module/video_card/direct3d/math_operations/math_op_test.h"
#include "module/video_card/direct3d/texture_pipeline/texture_pipeline_test.h"
#include "module/video_card/direct3d/video_memory_test.h"

#include <algorithm>
#include <array>

namespace vexil::module::video_card {

namespace {

template <typename TestClass>
std::unique_ptr<core::Test> make() {
    return std::make_unique<TestClass>();
}

struct CreationRow {
    std::int32_t id;
    std::unique_ptr<core::Test> (*make)();
};

constexpr std::array creation = {
    CreationRow{1, make<Dx11VideoMemoryTest>},
    CreationRow{3, make<Dx11TexturePipelineTest>},
    CreationRow{17, make<DirectComputeMathOpStandardTest>},
    CreationRow{18, make<DirectComputeMathOpAdvancedTest>},
    CreationRow{4, make<Dx11ExtendedVideoMemoryTest>},
};

} // namespace

std::unique_ptr<core::Test> makeTest(std::int32_t id) {
    const auto row = std::ranges::find(creation, id, &CreationRow::id);
    return row == creation.end() ? nullptr : row->make();
}

} // namespace vexil::module::video_card
