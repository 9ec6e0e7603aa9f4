#pragma once

#include "core/test_descriptor.h"

#include <array>
#include <cstdint>

namespace vexil::module::video_card {

/// What the host can know of a test before it makes one. Texts are message keys.
struct CatalogueRow {
    std::int32_t id;
    const char* name;
    const char* tooltip;
    const char* group;
    std::int32_t groupRank;
};

namespace group {
inline constexpr const char* quick = "QUICK_TESTS";
inline constexpr const char* extended = "EXTENDED_TESTS";
inline constexpr const char* tool = "Tool";
} // namespace group

/// Every test of the module, in the order in which the host shows them. Ids that are not here do not exist.
// clang-format off
inline constexpr std::array catalogue = {
    CatalogueRow{1, "VIDEO_MEMORY_TEST", "VIDEO_MEMORY_TEST_TOOL_TIP", group::quick, 1},
    CatalogueRow{3, "TEXTURE_PIPELINE_TEST", "TEXTURE_PIPELINE_TEST_TOOL_TIP", group::quick, 1},
    CatalogueRow{11, "CUDA_MEMORY_FAULT_TEST", "CUDA_MEMORY_FAULT_TEST_DESCRIPTION", group::quick, 1},
    CatalogueRow{12, "CUDA_ADDRESS_TEST", "CUDA_ADDRESS_TEST_DESCRIPTION", group::quick, 1},
    CatalogueRow{13, "CUDA_MOVING_INVERSION_TEST", "CUDA_MOVING_INVERSION_TEST_DESCRIPTION", group::quick, 1},
    CatalogueRow{14, "CUDA_BLOCK_MOVE_TEST", "CUDA_BLOCK_MOVE_TEST_DESCRIPTION", group::quick, 1},
    CatalogueRow{15, "CUDA_RANDOM_NUMBER_SEQUENCE_TEST", "CUDA_RANDOM_NUMBER_SEQUENCE_TEST_DESCRIPTION", group::quick, 1},
    CatalogueRow{16, "CUDA_MODULO_X_TEST", "CUDA_MODULO_X_TEST_DESCRIPTION", group::quick, 1},
    CatalogueRow{17, "DIRECTCOMPUTE_STANDARD_MATHEMATICAL_OPERATIONS_TEST", "DIRECTCOMPUTE_STANDARD_MATHEMATICAL_OPERATIONS_TEST_TOOLTIP", group::quick, 1},
    CatalogueRow{18, "DIRECTCOMPUTE_ADVANCED_MATHEMATICAL_OPERATIONS_TEST", "DIRECTCOMPUTE_ADVANCED_MATHEMATICAL_OPERATIONS_TEST_TOOLTIP", group::quick, 1},
    CatalogueRow{19, "CUDA_STANDARD_MATHEMATICAL_OPERATIONS_TEST", "CUDA_STANDARD_MATHEMATICAL_OPERATIONS_TEST_TOOLTIP", group::quick, 1},
    CatalogueRow{20, "CUDA_ADVANCED_MATHEMATICAL_OPERATIONS_TEST", "CUDA_ADVANCED_MATHEMATICAL_OPERATIONS_TEST_TOOLTIP", group::quick, 1},
    CatalogueRow{4, "EXTENDED_VIDEO_MEMORY_TEST", "EXTENDED_VIDEO_MEMORY_TEST_TOOL_TIP", group::extended, 2},
    CatalogueRow{90, "TEMPERATURE_TOOL_VIDEO_CARD", "TEMPERATURE_TOOL_VIDEO_CARD_DESCRIPTION", group::tool, 0},
    CatalogueRow{5, "STRESS_TEST", "STRESS_TEST_TOOL_TIP", group::extended, 2},
    CatalogueRow{21, "WIREFRAME_STRESS_TEST", "WIREFRAME_STRESS_TEST_DESCRIPTION", group::extended, 2},
};
// clang-format on
static_assert(catalogue.size() == 16);

/// The descriptor that the test of a catalogued id constructs its base from. Throws `std::out_of_range` for
/// an id without a row.
[[nodiscard]] core::TestDescriptor catalogueDescriptor(std::int32_t id);

} // namespace vexil::module::video_card
