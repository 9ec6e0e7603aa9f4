#include "module/video_card/catalogue.h"
#include "module/video_card/module.h"
#include "support/fake_machine.h"

#include <gtest/gtest.h>

#include <typeinfo>

namespace vexil::module::video_card {
namespace {

class ModuleTest : public testing::Test {
protected:
    tests::FakeMachine machine_;
    Module module_{machine_, 2};
};

TEST_F(ModuleTest, SaysWhatItIs) {
    EXPECT_EQ(module_.moduleId(), 7);
    EXPECT_EQ(module_.shortName(), "VC");
    EXPECT_EQ(module_.nameKey(), "VIDEO_CARD");
    const auto version = module_.moduleVersion();
    EXPECT_EQ(version.major, 5);
    EXPECT_EQ(version.minor, 2);
    EXPECT_EQ(version.patch, 0);
    EXPECT_EQ(version.label, "");
}

TEST_F(ModuleTest, ListsTheCatalogueInOrder) {
    const auto ids = module_.testIds();
    ASSERT_EQ(ids.size(), catalogue.size());
    EXPECT_EQ(std::vector<std::int32_t>(ids.begin(), ids.begin() + 3), (std::vector<std::int32_t>{1, 3, 11}));
    EXPECT_EQ(std::vector<std::int32_t>(ids.end() - 3, ids.end()), (std::vector<std::int32_t>{90, 5, 21}));
}

TEST_F(ModuleTest, HasNoToolIdsAndNoDescriptionHoweverOftenItIsAsked) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(module_.toolIds().empty());
        EXPECT_EQ(module_.description(), "");
    }
}

TEST_F(ModuleTest, MakesNoTestForAnIdThatDoesNotExist) {
    for (const int id : {0, 2, 6, 10, 22, 89, 91, -1}) {
        EXPECT_EQ(module_.createTest(id), nullptr) << id;
    }
}

TEST_F(ModuleTest, MakesEachTestWithTheDescriptorOfItsRow) {
    for (const auto& row : catalogue) {
        const auto test = module_.createTest(row.id);
        ASSERT_NE(test, nullptr) << row.id;
        EXPECT_EQ(test->id(), row.id);
        EXPECT_EQ(test->descriptor().name, row.name);
        EXPECT_EQ(test->descriptor().tooltip, row.tooltip);
        EXPECT_EQ(test->descriptor().group, row.group);
        EXPECT_EQ(test->descriptor().groupRank, row.groupRank);
        EXPECT_FALSE(test->requiresExclusiveRun());
    }
}

TEST_F(ModuleTest, MakesTheTwoStressTestsOfOneClass) {
    const auto window = module_.createTest(5);
    const auto wireframe = module_.createTest(21);
    EXPECT_EQ(typeid(*window), typeid(*wireframe));
    EXPECT_EQ(window->parameters().size(), 5U);
    EXPECT_EQ(wireframe->parameters().size(), 1U);
}

TEST_F(ModuleTest, HandsOutFurtherOwnersOfItsScannerAndDispatcher) {
    EXPECT_EQ(module_.deviceScanner(), module_.deviceScanner());
    EXPECT_EQ(module_.dispatcher(), module_.dispatcher());
    EXPECT_NE(module_.deviceScanner(), nullptr);
    EXPECT_NE(module_.dispatcher(), nullptr);
}

TEST_F(ModuleTest, TouchesNoDeviceUntilTheHostScans) {
    EXPECT_TRUE(machine_.list.filters.empty());
    EXPECT_EQ(machine_.calls, (std::vector<std::string>{"acquire list", "load library"}));
}

} // namespace
} // namespace vexil::module::video_card
