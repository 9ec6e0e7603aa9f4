#include "module/video_card/test_creation.h"

#include "module/video_card/cuda/cuda_abstract_math_op_test.h"
#include "module/video_card/cuda/cuda_address_test.h"
#include "module/video_card/cuda/cuda_block_move_test.h"
#include "module/video_card/cuda/cuda_memory_fault_test.h"
#include "module/video_card/cuda/cuda_modulo_x_test.h"
#include "module/video_card/cuda/cuda_moving_inversion_test.h"
#include "module/video_card/cuda/cuda_random_number_sequence_test.h"
#include "module/video_card/direct3d/extended_video_memory_test.h"
#include "module/video_card/direct3d/math_operations/math_op_test.h"
#include "module/video_card/direct3d/texture_pipeline/texture_pipeline_test.h"
#include "module/video_card/direct3d/video_memory_test.h"
#include "module/video_card/stress/d3d11_stress_test.h"
#include "module/video_card/tool/thermal_monitor_tool.h"

#include <algorithm>
#include <array>

namespace vexil::module::video_card {

namespace {

template <typename TestClass>
std::unique_ptr<core::Test> make() {
    return std::make_unique<TestClass>();
}

template <bool wireframe>
std::unique_ptr<core::Test> makeStressTest() {
    return std::make_unique<D3D11StressTest>(wireframe);
}

struct CreationRow {
    std::int32_t id;
    std::unique_ptr<core::Test> (*make)();
};

// clang-format off
constexpr std::array creation = {
    CreationRow{1, make<Dx11VideoMemoryTest>},
    CreationRow{3, make<Dx11TexturePipelineTest>},
    CreationRow{11, make<CUDAMemoryFaultTest>},
    CreationRow{12, make<CUDAAddressTest>},
    CreationRow{13, make<CUDAMovingInversionTest>},
    CreationRow{14, make<CUDABlockMoveTest>},
    CreationRow{15, make<CudaRandomNumberSequenceTest>},
    CreationRow{16, make<CudaModuloXTest>},
    CreationRow{17, make<DirectComputeMathOpStandardTest>},
    CreationRow{18, make<DirectComputeMathOpAdvancedTest>},
    CreationRow{19, make<CudaStandardMathOperation>},
    CreationRow{20, make<CudaAdvancedMathOperation>},
    CreationRow{4, make<Dx11ExtendedVideoMemoryTest>},
    CreationRow{90, make<tool::ThermalMonitorToolVideocard>},
    CreationRow{5, makeStressTest<false>},
    CreationRow{21, makeStressTest<true>},
};
// clang-format on

} // namespace

std::unique_ptr<core::Test> makeTest(std::int32_t id) {
    const auto row = std::ranges::find(creation, id, &CreationRow::id);
    return row == creation.end() ? nullptr : row->make();
}

} // namespace vexil::module::video_card
