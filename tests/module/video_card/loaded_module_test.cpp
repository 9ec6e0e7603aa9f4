#include "support/loaded_module.h"

#include <gtest/gtest.h>

#include <typeinfo>

namespace vexil::tests {
namespace {

/// VEXIL_MODULE_FILE is the module that this build made.
TEST(LoadedModule, IsMadeAndGivenBackThroughItsExports) {
    const LoadedModule library(VEXIL_MODULE_FILE);
    auto* module = library.create();
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(module->moduleId(), 7);
    EXPECT_EQ(module->shortName(), "VC");
    EXPECT_EQ(module->testIds().size(), 16U);
    library.destroy(module);
}

TEST(LoadedModule, DoesNothingForANullModule) {
    const LoadedModule library(VEXIL_MODULE_FILE);
    library.destroy(nullptr);
}

TEST(LoadedModule, MakesTwoModulesThatKnowNothingOfEachOther) {
    const LoadedModule library(VEXIL_MODULE_FILE);
    auto* first = library.create();
    auto* second = library.create();
    EXPECT_NE(first->deviceScanner(), second->deviceScanner());
    EXPECT_NE(first->dispatcher(), second->dispatcher());
    library.destroy(first);
    EXPECT_EQ(second->moduleId(), 7);
    library.destroy(second);
}

TEST(LoadedModule, MakesBothStressTestsOfOneClassAndListsFiveParametersForTheFirstOnly) {
    const LoadedModule library(VEXIL_MODULE_FILE);
    auto* module = library.create();
    {
        const auto visible = module->createTest(5);
        const auto wireframe = module->createTest(21);
        ASSERT_NE(visible, nullptr);
        ASSERT_NE(wireframe, nullptr);
        const auto& first = *visible;
        const auto& second = *wireframe;
        EXPECT_EQ(typeid(first), typeid(second));
        EXPECT_EQ(visible->parameters().size(), 5U);
        EXPECT_EQ(wireframe->parameters().size(), 1U);
    }
    library.destroy(module);
}

} // namespace
} // namespace vexil::tests
