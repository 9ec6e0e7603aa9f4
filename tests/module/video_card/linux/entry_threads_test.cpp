#include "module/video_card/entry.h"
#include "support/linux/no_more_threads.h"

#include <gtest/gtest.h>

namespace {

TEST(Entry, GivesNullWhereNoThreadCanBeMade) {
    {
        const vexil::tests::NoMoreThreads limit;
        EXPECT_EQ(CreateModuleInstance(), nullptr);
    }
    auto* const module = CreateModuleInstance();
    ASSERT_NE(module, nullptr);
    DestroyModuleInstance(module);
}

} // namespace
