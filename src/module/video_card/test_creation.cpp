#include "module/video_card/test_creation.h"

#include "module/video_card/direct3d/extended_video_memory_test.h"
#include "module/video_card/direct3d/video_memory_test.h"
#include "module/video_card/tool/thermal_monitor_tool.h"

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
    CreationRow{4, make<Dx11ExtendedVideoMemoryTest>},
    CreationRow{90, make<tool::ThermalMonitorToolVideocard>},
};

} // namespace

std::unique_ptr<core::Test> makeTest(std::int32_t id) {
    const auto row = std::ranges::find(creation, id, &CreationRow::id);
    return row == creation.end() ? nullptr : row->make();
}

} // namespace vexil::module::video_card
