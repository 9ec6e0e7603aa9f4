#include "utils/interaction/legacy_context.h"

#include <gtest/gtest.h>

namespace vexil::utils {
namespace {

TEST(LegacyContext, TellsOfAStopAsSoonAsTheByteIsSet) {
    volatile std::uint8_t cancel = 0;
    core::TestRunArguments arguments;
    arguments.cancelRequested = &cancel;
    const legacy::Context context(&arguments);
    EXPECT_FALSE(context.isCancelled());
    cancel = 1;
    EXPECT_TRUE(context.isCancelled());
    cancel = 0x80;
    EXPECT_TRUE(context.isCancelled());
}

TEST(LegacyContext, KnowsOfNoStopWithoutArgumentsOrWithoutAByte) {
    EXPECT_FALSE(legacy::Context(nullptr).isCancelled());
    const core::TestRunArguments arguments;
    EXPECT_FALSE(legacy::Context(&arguments).isCancelled());
}

TEST(LegacyContext, AnswersEverythingElseWithNothing) {
    const legacy::Context context(nullptr);
    EXPECT_EQ(context.unused1() + context.unused2() + context.unused3() + context.unused4() +
                  context.unused6(),
              0U);
    EXPECT_TRUE(context.values().empty());
    EXPECT_TRUE(context.entries().empty());
}

} // namespace
} // namespace vexil::utils
