#include "module/video_card/catalogue.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace vexil::module::video_card {
namespace {

TEST(Catalogue, ListsTheSixteenTestsInTheOrderOfTheHost) {
    const std::vector<std::int32_t> expected = {1, 3, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 4, 90, 5, 21};
    std::vector<std::int32_t> ids;
    for (const auto& row : catalogue) {
        ids.push_back(row.id);
    }
    EXPECT_EQ(ids, expected);
}

TEST(Catalogue, HasTheNamesAndToolTipsThatHostsTranslate) {
    struct Texts {
        const char* name;
        const char* tooltip;
    };
    // Three words end the keys of tool tips: hosts know each by its own.
    const std::map<std::int32_t, Texts> expected = {
        {1, {"VIDEO_MEMORY_TEST", "VIDEO_MEMORY_TEST_TOOL_TIP"}},
        {3, {"TEXTURE_PIPELINE_TEST", "TEXTURE_PIPELINE_TEST_TOOL_TIP"}},
        {4, {"EXTENDED_VIDEO_MEMORY_TEST", "EXTENDED_VIDEO_MEMORY_TEST_TOOL_TIP"}},
        {5, {"STRESS_TEST", "STRESS_TEST_TOOL_TIP"}},
        {11, {"CUDA_MEMORY_FAULT_TEST", "CUDA_MEMORY_FAULT_TEST_DESCRIPTION"}},
        {12, {"CUDA_ADDRESS_TEST", "CUDA_ADDRESS_TEST_DESCRIPTION"}},
        {13, {"CUDA_MOVING_INVERSION_TEST", "CUDA_MOVING_INVERSION_TEST_DESCRIPTION"}},
        {14, {"CUDA_BLOCK_MOVE_TEST", "CUDA_BLOCK_MOVE_TEST_DESCRIPTION"}},
        {15, {"CUDA_RANDOM_NUMBER_SEQUENCE_TEST", "CUDA_RANDOM_NUMBER_SEQUENCE_TEST_DESCRIPTION"}},
        {16, {"CUDA_MODULO_X_TEST", "CUDA_MODULO_X_TEST_DESCRIPTION"}},
        {17,
         {"DIRECTCOMPUTE_STANDARD_MATHEMATICAL_OPERATIONS_TEST",
          "DIRECTCOMPUTE_STANDARD_MATHEMATICAL_OPERATIONS_TEST_TOOLTIP"}},
        {18,
         {"DIRECTCOMPUTE_ADVANCED_MATHEMATICAL_OPERATIONS_TEST",
          "DIRECTCOMPUTE_ADVANCED_MATHEMATICAL_OPERATIONS_TEST_TOOLTIP"}},
        {19,
         {"CUDA_STANDARD_MATHEMATICAL_OPERATIONS_TEST",
          "CUDA_STANDARD_MATHEMATICAL_OPERATIONS_TEST_TOOLTIP"}},
        {20,
         {"CUDA_ADVANCED_MATHEMATICAL_OPERATIONS_TEST",
          "CUDA_ADVANCED_MATHEMATICAL_OPERATIONS_TEST_TOOLTIP"}},
        {21, {"WIREFRAME_STRESS_TEST", "WIREFRAME_STRESS_TEST_DESCRIPTION"}},
        {90, {"TEMPERATURE_TOOL_VIDEO_CARD", "TEMPERATURE_TOOL_VIDEO_CARD_DESCRIPTION"}},
    };
    ASSERT_EQ(expected.size(), catalogue.size());
    for (const auto& row : catalogue) {
        EXPECT_STREQ(row.name, expected.at(row.id).name);
        EXPECT_STREQ(row.tooltip, expected.at(row.id).tooltip);
    }
}

TEST(Catalogue, RanksEachGroup) {
    for (const auto& row : catalogue) {
        const std::string group = row.group;
        const bool extended = row.id == 4 || row.id == 5 || row.id == 21;
        EXPECT_EQ(group, row.id == 90 ? "Tool" : extended ? "EXTENDED_TESTS" : "QUICK_TESTS") << row.id;
        EXPECT_EQ(row.groupRank, row.id == 90 ? 0 : extended ? 2 : 1) << row.id;
    }
}

TEST(Catalogue, MakesADescriptorWhoseOtherFieldsAreEmpty) {
    const auto descriptor = catalogueDescriptor(1);
    EXPECT_EQ(descriptor.id, 1);
    EXPECT_EQ(descriptor.name, "VIDEO_MEMORY_TEST");
    EXPECT_EQ(descriptor.tooltip, "VIDEO_MEMORY_TEST_TOOL_TIP");
    EXPECT_EQ(descriptor.group, "QUICK_TESTS");
    EXPECT_EQ(descriptor.groupRank, 1);
    EXPECT_TRUE(descriptor.parameters.empty());
    EXPECT_TRUE(descriptor.reservedText1.empty());
    EXPECT_TRUE(descriptor.reservedText2.empty());
    EXPECT_EQ(descriptor.reservedNumber, 0);
}

TEST(Catalogue, HasNoDescriptorForAnIdThatDoesNotExist) {
    for (const int id : {0, 2, 6, 10, 22, 89, 91, -1}) {
        EXPECT_THROW(static_cast<void>(catalogueDescriptor(id)), std::out_of_range) << id;
    }
}

} // namespace
} // namespace vexil::module::video_card
