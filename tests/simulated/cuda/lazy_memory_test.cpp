#include "simulated/cuda/lazy_memory.h"

#include "support/process_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <span>

namespace vexil::tests {

using simulated::cuda::LazyMemory;

TEST(LazyMemory, IsZeroAndHoldsWhatIsWritten) {
    LazyMemory memory(100'000);
    ASSERT_NE(memory.begin(), nullptr);
    EXPECT_EQ(memory.size(), 100'000U);
    EXPECT_TRUE(
        std::ranges::all_of(std::span(memory.begin(), memory.size()), [](auto byte) { return byte == 0; }));
    memory.begin()[99'999] = 7;
    LazyMemory moved = std::move(memory);
    EXPECT_EQ(moved.begin()[99'999], 7);
    EXPECT_EQ(memory.begin(), nullptr);
}

TEST(LazyMemory, HoldsNothingWhenThereIsNoRoom) {
    EXPECT_EQ(LazyMemory(std::numeric_limits<std::size_t>::max()).begin(), nullptr);
    EXPECT_EQ(LazyMemory(std::size_t{1} << 60).begin(), nullptr);
}

TEST(LazyMemory, CostsOnlyWhatIsTouched) {
    const long before = residentKibibytes();
    LazyMemory memory(std::size_t{8} << 30);
    ASSERT_NE(memory.begin(), nullptr);
    // Wine keeps a byte for each page: 2 MiB.
    constexpr long book = 3 * 1024;
    EXPECT_LT(residentKibibytes() - before, book);
    for (std::size_t at = 0; at < 64; ++at) {
        memory.begin()[at << 27] = 1;
    }
    // 64 places, each in a page of at most 2 MiB.
    EXPECT_LT(residentKibibytes() - before, 64 * 2048 + book);
}

#ifdef GTEST_HAS_DEATH_TEST
TEST(LazyMemoryDeathTest, EndsAProgramThatLeavesIt) {
    LazyMemory memory(0x1000);
    volatile std::uint8_t* const begin = memory.begin();
    EXPECT_DEATH(begin[-1] = 1, "");
    EXPECT_DEATH(begin[0x1000] = 1, "");
}
#endif

} // namespace vexil::tests
