#include "simulated/cuda/simulated_card.h"

#include "simulated/cuda/simulated_driver.h"

#include <gtest/gtest.h>

namespace vexil::tests {

using namespace simulated;
using namespace simulated::cuda;

namespace {

constexpr std::uint64_t mebibyte = 1U << 20;
using Sizes = std::vector<std::uint64_t>;

CudaCardSection cardOf(std::uint64_t mebibytes) {
    CudaCardSection card;
    card.memoryBytes = mebibytes * mebibyte;
    return card;
}

constexpr const char* ptx =
    ".version 7.3\n.visible .entry address_kernel_write(\n)\n.visible .entry unknown_kernel(\n)";

} // namespace

TEST(SimulatedCard, PlacesLargeBlocksFromItsStartAndReportsWhatIsLeft) {
    SimulatedCard card(cardOf(100));
    CUdeviceptr small = 0, first = 0, second = 0, third = 0;
    EXPECT_EQ(card.memAlloc(&small, 1), CUDA_SUCCESS);
    std::size_t free = 0, total = 0;
    card.memGetInfo(&free, &total);
    EXPECT_EQ(free, 100 * mebibyte) << "what is small comes out of the driver's own share";
    EXPECT_EQ(card.memAlloc(&first, 30 * mebibyte), CUDA_SUCCESS);
    EXPECT_EQ(card.memAlloc(&second, 60 * mebibyte), CUDA_SUCCESS);
    EXPECT_EQ(card.memAlloc(&third, 11 * mebibyte), CUDA_ERROR_OUT_OF_MEMORY);
    card.memGetInfo(&free, &total);
    EXPECT_EQ(free, 10 * mebibyte);
    EXPECT_EQ(total, 100 * mebibyte);
    EXPECT_EQ(card.memFree(first), CUDA_SUCCESS);
    EXPECT_EQ(card.memFree(first), CUDA_ERROR_INVALID_VALUE)
        << "before its address can belong to another block";
    EXPECT_EQ(card.memAlloc(&third, 20 * mebibyte), CUDA_SUCCESS);
    EXPECT_EQ(card.allocations(), (Sizes{20 * mebibyte, 60 * mebibyte, 1}));
}

TEST(SimulatedCard, HasNoMoreThanItsMemoryWhateverItReports) {
    auto section = cardOf(20);
    section.reportedTotalBytes = ~std::uint64_t{0};
    section.reportedFreeBytes = 3;
    SimulatedCard card(section);
    std::size_t free = 0, total = 0;
    card.memGetInfo(&free, &total);
    EXPECT_EQ(free, 3U);
    EXPECT_EQ(total, ~std::size_t{0});
    CUdeviceptr memory = 0;
    EXPECT_EQ(card.memAlloc(&memory, 21 * mebibyte), CUDA_ERROR_OUT_OF_MEMORY);
    EXPECT_EQ(card.memAlloc(&memory, 20 * mebibyte), CUDA_SUCCESS);
    EXPECT_EQ(card.requests(), (Sizes{21 * mebibyte, 20 * mebibyte}));
}

TEST(SimulatedCard, HasAlmost4GibibytesToGiveWithoutTouchingThem) {
    SimulatedCard card(cardOf(8192));
    CUdeviceptr memory = 0;
    EXPECT_EQ(card.memAlloc(&memory, 4084 * mebibyte), CUDA_SUCCESS);
    const unsigned word = 7;
    EXPECT_EQ(card.copyToCard(memory + 4084 * mebibyte - 4, &word, 4), CUDA_SUCCESS);
}

TEST(SimulatedCard, CopiesOnlyWithinABlock) {
    SimulatedCard card(cardOf(4));
    CUdeviceptr memory = 0;
    ASSERT_EQ(card.memAlloc(&memory, 16), CUDA_SUCCESS);
    std::uint32_t words[] = {1, 2, 3, 4}, back[4] = {};
    EXPECT_EQ(card.copyToCard(memory, words, 16), CUDA_SUCCESS);
    EXPECT_EQ(card.copyToCard(memory + 4, words, 16), CUDA_ERROR_INVALID_VALUE);
    EXPECT_EQ(card.copyToCard(0, words, 4), CUDA_ERROR_INVALID_VALUE);
    EXPECT_EQ(card.copyFromCard(back, memory - 4, 4), CUDA_ERROR_INVALID_VALUE);
    EXPECT_EQ(card.copyOnCard(memory, memory + 8, 8), CUDA_SUCCESS);
    EXPECT_EQ(card.copyFromCard(back, memory, 16), CUDA_SUCCESS);
    EXPECT_EQ(back[0], 3U);
    EXPECT_EQ(back[3], 4U);
    EXPECT_EQ(card.setWords(memory, 9, 4), CUDA_SUCCESS);
    EXPECT_EQ(card.setWords(memory, 9, 5), CUDA_ERROR_INVALID_VALUE);
}

TEST(SimulatedCard, RunsTheKernelsThatTheLoadedCodeHasAnEntryFor) {
    SimulatedCard card(cardOf(4));
    CUmodule module = nullptr;
    CUfunction function = nullptr;
    EXPECT_EQ(card.loadModule(&module, "no device code"), CUDA_ERROR_INVALID_PTX);
    ASSERT_EQ(card.loadModule(&module, ptx), CUDA_SUCCESS);
    EXPECT_EQ(card.getFunction(&function, module, "address_kernel_check"), CUDA_ERROR_NOT_FOUND);
    EXPECT_EQ(card.getFunction(&function, module, "unknown_kernel"), CUDA_ERROR_NOT_FOUND);
    ASSERT_EQ(card.getFunction(&function, module, "address_kernel_write"), CUDA_SUCCESS);
    CUdeviceptr memory = 0;
    ASSERT_EQ(card.memAlloc(&memory, 64), CUDA_SUCCESS);
    std::uint32_t chunk = 32;
    CUdeviceptr end = memory + 64;
    void* arguments[] = {&chunk, &memory, &end};
    EXPECT_EQ(card.launch(function, 16, 1, arguments), CUDA_SUCCESS);
    std::uint64_t words[8] = {};
    card.copyFromCard(words, memory, 64);
    for (unsigned i = 0; i < 8; ++i) {
        EXPECT_EQ(words[i], memory + 8 * i);
    }
    EXPECT_EQ(card.unloadModule(module), CUDA_SUCCESS);
    EXPECT_EQ(card.launch(function, 16, 1, arguments), CUDA_ERROR_INVALID_HANDLE);
}

TEST(SimulatedDriver, KeepsAContextForAsLongAsItIsHeld) {
    SimulatedDriver driver;
    EXPECT_EQ(driver.initialisation(), CUDA_ERROR_NO_DEVICE) << "no scenario, no card";
    driver.configure({11030, {cardOf(16), cardOf(32)}});
    EXPECT_EQ(driver.version(), 11030);
    EXPECT_EQ(driver.count(), 2);
    EXPECT_EQ(driver.card(2), nullptr);
    EXPECT_EQ(driver.card(-1), nullptr);
    CUcontext context = nullptr;
    ASSERT_EQ(driver.retain(1, &context), CUDA_SUCCESS);
    EXPECT_EQ(driver.current(), nullptr);
    ASSERT_EQ(driver.setCurrent(context), CUDA_SUCCESS);
    EXPECT_EQ(driver.current(), driver.card(1));
    CUdeviceptr memory = 0;
    driver.current()->memAlloc(&memory, 4);
    EXPECT_EQ(driver.reset(1), CUDA_SUCCESS);
    EXPECT_EQ(driver.current(), nullptr);
    EXPECT_EQ(driver.setCurrent(context), CUDA_ERROR_INVALID_CONTEXT);
    EXPECT_EQ(driver.state(1).allocations, Sizes{});
    EXPECT_EQ(driver.state(1).retained, 1) << "a reset does not end the hold";
    EXPECT_EQ(driver.release(1), CUDA_SUCCESS);
    EXPECT_EQ(driver.release(1), CUDA_ERROR_INVALID_CONTEXT);
    EXPECT_EQ(driver.retain(2, &context), CUDA_ERROR_INVALID_DEVICE);
}

} // namespace vexil::tests
