#include "module/video_card/direct3d/extended_video_memory_test.h"
#include "support/card_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <vector>

// A program of its own, since it replaces the allocation functions: the memory of the host that a run takes
// in blocks of at least a quarter of an image.
namespace {

constexpr std::size_t largeBlock = 1 << 20;

std::array<std::size_t, 64> blocks{};
std::atomic<std::size_t> blockCount = 0;
std::atomic<bool> counting = false;
std::atomic<std::size_t> blocksLeft = blocks.size(); ///< that can still be had while they are counted

void* allocate(std::size_t size) {
    if (counting && size >= largeBlock) {
        if (blockCount == blocksLeft) {
            throw std::bad_alloc();
        }
        blocks.at(blockCount++) = size;
    }
    if (void* const block = std::malloc(size == 0 ? 1 : size)) {
        return block;
    }
    throw std::bad_alloc();
}

} // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }

namespace vexil::tests {
namespace {

TEST(VideoMemoryHostMemory, CouldNotAllocateWithoutRoomForBothImages) {
    for (const std::size_t images : {0U, 1U}) {
        CardSetup setup;
        setup.freeMemory = std::uint64_t{2} << 22;
        CardUnderTest card(setup);
        module::video_card::Dx11VideoMemoryTest test;
        blockCount = 0;
        blocksLeft = images;
        counting = true;
        const auto result = card.run(test);
        counting = false;
        EXPECT_EQ(result, core::TestResult::NotCompleted);
        EXPECT_THAT(card.reporter.events,
                    testing::ElementsAre("progress 0", "progress 100",
                                         "report 0 A_VIDEO_CARD_COULD_NOT_ALLOCATE_MEMORY"));
    }
    blocksLeft = blocks.size();
}

TEST(VideoMemoryHostMemory, HoldsTwoImagesAndNoThirdHoweverManySurfacesThereAre) {
    CardSetup setup;
    setup.freeMemory = std::uint64_t{60} << 22;
    CardUnderTest card(setup);
    module::video_card::Dx11ExtendedVideoMemoryTest test;
    blockCount = 0;
    counting = true;
    const auto result = card.run(test);
    counting = false;
    EXPECT_EQ(result, core::TestResult::Passed);
    EXPECT_EQ(card.reporter.events.back(), "report 0 TOTAL_SURFACES_TESTED: 60/60");
    EXPECT_THAT(std::vector(blocks.begin(), blocks.begin() + static_cast<std::ptrdiff_t>(blockCount.load())),
                testing::ElementsAre(0x400000U, 0x400000U));
}

} // namespace
} // namespace vexil::tests
