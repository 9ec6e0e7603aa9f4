#include "module/video_card/catalogue.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

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

TEST(Catalogue, GivesEachTestANameAndAToolTipOfItsOwn) {
    std::set<std::string> texts;
    for (const auto& row : catalogue) {
        texts.insert(row.name);
        texts.insert(row.tooltip);
    }
    EXPECT_EQ(texts.size(), 32U);
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
