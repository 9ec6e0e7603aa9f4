#include "simulated/cuda/watched_memory.h"

#include <gtest/gtest.h>

#include <vector>

namespace vexil::tests {

using simulated::CudaCardSection;
using simulated::cuda::WatchedMemory;
using simulated::cuda::Word;

class WatchedMemoryTest : public testing::Test {
protected:
    static constexpr std::uint64_t blockAddress = 0x100000;

    void watch(const CudaCardSection& card) {
        watched.add(card, blockAddress, bytes(), block.size() * sizeof(Word));
    }
    std::uint8_t* bytes() { return reinterpret_cast<std::uint8_t*>(block.data()); }

    std::vector<Word> block = std::vector<Word>(16);
    WatchedMemory watched;
};

TEST_F(WatchedMemoryTest, LeavesSoundWordsAlone) {
    CudaCardSection card;
    card.stuckBits = {{blockAddress + 8, 0, true}};
    watch(card);
    watched.store(&block[3], 0x1234);
    EXPECT_EQ(watched.load(&block[3]), 0x1234U);
    EXPECT_EQ(block[3], 0x1234U);
    EXPECT_TRUE(watched.touches(bytes(), 12));
    EXPECT_FALSE(watched.touches(bytes(), 8));
    EXPECT_FALSE(watched.touches(bytes() + 12, 52));
}

TEST_F(WatchedMemoryTest, ReadsStuckBitsAsTheyWant) {
    CudaCardSection card;
    card.stuckBits = {{blockAddress, 31, true}, {blockAddress, 0, false}};
    watch(card);
    watched.store(block.data(), 0x00000003);
    EXPECT_EQ(watched.load(block.data()), 0x80000002U);
    EXPECT_EQ(watched.load(block.data()), 0x80000002U);
}

TEST_F(WatchedMemoryTest, FlipsAtTheNthReadAndStaysSoUntilTheWordIsWritten) {
    CudaCardSection card;
    card.readFlips = {{blockAddress + 4, 0xF0, 2}};
    watch(card);
    watched.store(&block[1], 0xFF);
    EXPECT_EQ(watched.load(&block[1]), 0xFFU);
    EXPECT_EQ(watched.load(&block[1]), 0x0FU);
    EXPECT_EQ(watched.load(&block[1]), 0x0FU);
    watched.store(&block[1], 0xFF);
    EXPECT_EQ(watched.load(&block[1]), 0xFFU);
}

TEST_F(WatchedMemoryTest, LetsAShortedWriteLandElsewhereAndReadsWhatIsThere) {
    CudaCardSection card;
    card.shortedWords = {{blockAddress + 8, blockAddress + 20}};
    watch(card);
    watched.store(&block[2], 5);
    EXPECT_EQ(watched.load(&block[2]), 0U);
    EXPECT_EQ(watched.load(&block[5]), 5U);
    watched.store(&block[5], 6);
    EXPECT_EQ(watched.load(&block[2]), 0U) << "the other way is sound";
}

TEST_F(WatchedMemoryTest, CopiesThroughTheFaults) {
    CudaCardSection card;
    card.stuckBits = {{blockAddress, 0, true}};
    card.shortedWords = {{blockAddress + 8, blockAddress + 20}};
    card.readFlips = {{blockAddress + 12, 1, 1}};
    watch(card);
    const std::vector<Word> in = {2, 2, 2, 2};
    watched.copyIn(bytes(), in.data(), 16);
    EXPECT_EQ(block[2], 0U);
    EXPECT_EQ(block[5], 2U);
    std::vector<Word> out(6);
    watched.copyOut(out.data(), bytes(), 24);
    EXPECT_EQ(out, (std::vector<Word>{3, 2, 0, 3, 0, 2}));
}

TEST_F(WatchedMemoryTest, KnowsOnlyTheFaultsOfWhatIsAllocated) {
    CudaCardSection card;
    card.stuckBits = {{0, 0, true},
                      {blockAddress - 4, 0, true},
                      {blockAddress + 64, 0, true},
                      {blockAddress + 60, 0, true}};
    watch(card);
    EXPECT_EQ(watched.load(&block[0]), 0U);
    EXPECT_EQ(watched.load(&block[15]), 1U);
    watched.remove(bytes(), 64);
    EXPECT_EQ(watched.load(&block[15]), 0U);
    EXPECT_FALSE(watched.touches(bytes(), 64));
}

} // namespace vexil::tests
