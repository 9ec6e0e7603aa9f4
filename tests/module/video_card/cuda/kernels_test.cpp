// The kernels as the host's compiler makes them, against the plain walk: same memory, same flag.
#include "kernel_cases.h"
#include "module/video_card/cuda/kernels/kernel_support.h"
#include "module/video_card/cuda/kernels/kernel_table.h"
#include "plain_walk.h"
#include "simulated/cuda/watched_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <random>
#include <span>
#include <string_view>
#include <vector>

namespace vexil::tests {

namespace kernels = module::video_card::kernels;
using plain_walk::Access;
using plain_walk::Case;
using plain_walk::Chunk;
using plain_walk::list;
using plain_walk::Word;

namespace {

constexpr unsigned blocks = 16;

/// Memory under test with nothing behind it: an access outside it is found by the address sanitizer, and one
/// into the margins by the comparison. Aligned like a card's.
class Block {
public:
    explicit Block(std::size_t bytes)
        : bytes_(bytes), memory_(static_cast<std::uint8_t*>(::operator new(bytes, alignment))) {}
    ~Block() { ::operator delete(memory_, alignment); }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    [[nodiscard]] std::uint8_t* begin() const { return memory_; }
    [[nodiscard]] std::uint8_t* end() const { return memory_ + bytes_; }
    [[nodiscard]] std::size_t size() const { return bytes_; }

private:
    static constexpr std::align_val_t alignment{4096};

    std::size_t bytes_;
    std::uint8_t* memory_;
};

void fillRandomly(std::span<std::uint8_t> bytes, unsigned seed) {
    std::mt19937_64 source(seed);
    for (std::size_t i = 0; i + 8 <= bytes.size(); i += 8) {
        const std::uint64_t word = source();
        std::memcpy(bytes.data() + i, &word, 8);
    }
}

void launch(std::span<const kernels::HostKernel> table, const Case& test, Word chunkBytes, std::uint8_t* base,
            std::uint8_t* end, std::uint8_t* flag, std::uint8_t* reference) {
    const auto kernel = std::ranges::find(table, std::string_view(test.kernel), &kernels::HostKernel::name);
    ASSERT_NE(kernel, table.end());
    auto arguments = list(&chunkBytes, &base, &end);
    const auto rest = test.arguments(&flag, &reference);
    arguments.insert(arguments.end(), rest.begin(), rest.end());
    for (unsigned block = 0; block < blocks; ++block) {
        kernels::launchPosition = {block, 1, 0};
        kernel->run(arguments.data());
    }
}

void walk(void (*walkChunk)(const Chunk&, const Access&, const Word*), Word chunkBytes, std::uint8_t* base,
          std::uint8_t* end, std::uint8_t* flag, const Word* reference, const Access& access = {}) {
    for (unsigned block = 0; block < blocks; ++block) {
        std::uint8_t* const begin = base + block * chunkBytes;
        if (begin < end) {
            walkChunk({begin, base, end, chunkBytes, flag}, access, reference);
        }
    }
}

/// Chunk sizes: the one of the tests, and ones that end in the middle of a batch, a vector or a period.
constexpr Word chunkSizes[] = {0x100000, 0x1000, 8 * 21, 4 * 16 * 3, 128, 64, 0x1240};

/// Runs one kernel and its walk over the same memory, in whole blocks.
void compare(std::span<const kernels::HostKernel> table, const Case& test, Word chunkBytes, unsigned chunks,
             bool prepared, int spoiledWord) {
    Block memory(std::size_t{chunkBytes} * chunks);
    Block reference(chunkBytes);
    const auto* const words = reinterpret_cast<const Word*>(reference.begin());
    fillRandomly({reference.begin(), chunkBytes}, 2);
    fillRandomly({memory.begin(), memory.size()}, 1);
    std::uint8_t flag = 1;
    if (prepared && test.prepare != nullptr) {
        walk(test.prepare, chunkBytes, memory.begin(), memory.end(), &flag, words);
    }
    if (spoiledWord >= 0) {
        reinterpret_cast<Word*>(
            memory.begin())[static_cast<std::size_t>(spoiledWord) % (memory.size() / 4)] ^= 0x10;
    }
    const std::vector<std::uint8_t> before(memory.begin(), memory.end());

    std::uint8_t flagOfKernel = 1;
    launch(table, test, chunkBytes, memory.begin(), memory.end(), &flagOfKernel, reference.begin());
    const std::vector<std::uint8_t> byKernel(memory.begin(), memory.end());

    std::ranges::copy(before, memory.begin());
    std::uint8_t flagOfWalk = 1;
    walk(test.walk, chunkBytes, memory.begin(), memory.end(), &flagOfWalk, words);
    EXPECT_EQ(flagOfKernel, flagOfWalk);
    EXPECT_TRUE(std::ranges::equal(byKernel, std::span(memory.begin(), memory.size())));
}

} // namespace

TEST(CudaKernels, LeaveTheMemoryAndTheFlagOfThePlainWalk) {
    for (const Case& test : plain_walk::allCases()) {
        for (const Word chunkBytes : chunkSizes) {
            if (std::string_view(test.kernel).starts_with("block_move") && chunkBytes % 128 != 0) {
                continue; // moves halves of whole groups
            }
            for (const unsigned chunks : {16U, 4U, 1U}) {
                SCOPED_TRACE(testing::Message()
                             << test.kernel << ", chunks of " << chunkBytes << ", " << chunks);
                compare(kernels::plain::kernelTable(), test, chunkBytes, chunks, false, -1);
                compare(kernels::plain::kernelTable(), test, chunkBytes, chunks, true, -1);
            }
        }
    }
}

TEST(CudaKernels, SeeOneWrongWordWhereverItLies) {
    constexpr Word chunkBytes = 0x1000;
    for (const Case& test : plain_walk::allCases()) {
        for (int word = 0; word < static_cast<int>(chunkBytes / 4); word += 7) {
            SCOPED_TRACE(testing::Message() << test.kernel << ", word " << word);
            compare(kernels::plain::kernelTable(), test, chunkBytes, 1, true, word);
        }
    }
}

TEST(CudaKernels, FindNothingInMemoryThatIsRight) {
    for (const Case& test : plain_walk::allCases()) {
        if (test.prepare == nullptr) {
            continue;
        }
        Block memory(0x4000);
        Block reference(0x1000);
        fillRandomly({reference.begin(), reference.size()}, 3);
        std::uint8_t flag = 1;
        walk(test.prepare, 0x1000, memory.begin(), memory.end(), &flag,
             reinterpret_cast<const Word*>(reference.begin()));
        flag = 1;
        launch(kernels::plain::kernelTable(), test, 0x1000, memory.begin(), memory.end(), &flag,
               reference.begin());
        EXPECT_EQ(flag, 1) << test.kernel;
    }
}

// On faulty memory the order of the accesses shows.
TEST(CudaKernels, KeepTheOrderOfThePlainWalkOnFaultyMemory) {
    std::mt19937 source(7);
    for (const Case& test : plain_walk::allCases()) {
        const std::string_view name = test.kernel;
        for (int round = 0; round < 40; ++round) {
            SCOPED_TRACE(testing::Message() << name << ", round " << round);
            // Whole batches, and words that fill none, except where halves of whole groups are moved.
            const Word chunkBytes = round % 8 >= 4 && !name.starts_with("block_move") ? 8 * 21 : 0x400;
            const auto place = [&] { return std::uint64_t{source() % (chunkBytes * 2 / 4)} * 4; };
            simulated::CudaCardSection card;
            const std::uint64_t from = place(), bytes = chunkBytes * 2;
            const std::uint64_t landings[] = {(from + 4) % bytes, (from + bytes - 4) % bytes, place(),
                                              place()};
            // The copies of a move read ahead within the half that they do not write.
            if (name != "block_move_kernel_move") {
                card.shortedWords = {{from, landings[round % 4]}};
            }
            // In one round of four with other faults, which would hide from the flag what a short alone does.
            if (round % 4 == 3) {
                const auto bit = [&] { return static_cast<unsigned>(source() % 32); };
                card.stuckBits = {{place(), bit(), true}, {place(), bit(), false}};
                card.readFlips = {{place(), 0x100, 1}, {place(), 0x1, 2}};
            }

            std::vector<std::uint8_t> memories[2];
            std::uint8_t flags[2] = {1, 1};
            Block memory(chunkBytes * 2);
            Block reference(chunkBytes);
            for (const bool byKernel : {true, false}) {
                fillRandomly({memory.begin(), memory.size()}, 5);
                fillRandomly({reference.begin(), chunkBytes}, 6);
                std::uint8_t ignored = 1;
                const auto* const words = reinterpret_cast<const Word*>(reference.begin());
                if (test.prepare != nullptr) {
                    walk(test.prepare, chunkBytes, memory.begin(), memory.end(), &ignored, words);
                }
                simulated::cuda::WatchedMemory watched;
                watched.add(card, 0, memory.begin(), memory.size());
                if (byKernel) {
                    simulated::cuda::WatchedMemory::watch(&watched);
                    launch(kernels::watched::kernelTable(), test, chunkBytes, memory.begin(), memory.end(),
                           &flags[1], reference.begin());
                    simulated::cuda::WatchedMemory::watch(nullptr);
                } else {
                    const Access access{[&](const Word* word) { return watched.load(word); },
                                        [&](Word* word, Word stored) { watched.store(word, stored); }};
                    walk(test.walk, chunkBytes, memory.begin(), memory.end(), &flags[0], words, access);
                }
                memories[byKernel ? 1 : 0].assign(memory.begin(), memory.end());
            }
            EXPECT_EQ(flags[0], flags[1]);
            EXPECT_EQ(memories[0], memories[1]);
        }
    }
}

TEST(CudaKernels, SeeAStoreThatDisturbsTheNeighbourWhichTheWalkComesToNext) {
    // The last word of a chunk is visited first: a store that disturbs the word below it is seen in the same
    // walk.
    Block memory(0x1000);
    std::ranges::fill(std::span(memory.begin(), memory.size()), std::uint8_t{0});
    simulated::CudaCardSection card;
    card.shortedWords = {{0xFFC, 0xFF8}};
    simulated::cuda::WatchedMemory watched;
    watched.add(card, 0, memory.begin(), memory.size());
    simulated::cuda::WatchedMemory::watch(&watched);
    std::uint8_t flag = 1;
    const Case& descending = *std::ranges::find_if(plain_walk::allCases(), [](const Case& test) {
        return std::string_view(test.kernel) == "memory_fault_kernel_check_write";
    });
    std::uint8_t reference[4] = {};
    launch(kernels::watched::kernelTable(), descending, 0x1000, memory.begin(), memory.end(), &flag,
           reference);
    EXPECT_EQ(flag, 1) << "ascending, the disturbed word has been read already";

    std::ranges::fill(std::span(memory.begin(), memory.size()), std::uint8_t{0xFF});
    launch(kernels::watched::kernelTable(), *(&descending + 1), 0x1000, memory.begin(), memory.end(), &flag,
           reference);
    EXPECT_EQ(flag, 0);
    simulated::cuda::WatchedMemory::watch(nullptr);
}

TEST(CudaKernels, ReadTheReferenceOfAWrongWordAgainBeforeItsComplementIsStored) {
    const auto& cases = plain_walk::allCases();
    const Case& test = *std::ranges::find_if(cases, [](const Case& other) {
        return std::string_view(other.kernel) == "RandomNumberSequenceKernelCheckWrite";
    });
    for (const Word chunkBytes : {0x400U, 24U}) {
        Block memory(chunkBytes), reference(chunkBytes);
        fillRandomly({reference.begin(), chunkBytes}, 4);
        std::ranges::copy(std::span(reference.begin(), chunkBytes), memory.begin());
        auto* const words = reinterpret_cast<Word*>(memory.begin());
        const auto* const expected = reinterpret_cast<const Word*>(reference.begin());
        const Word right = expected[3];
        words[3] ^= 0x80;
        simulated::CudaCardSection card;
        card.readFlips = {{3 * 4, 1, 2}};
        simulated::cuda::WatchedMemory watched;
        watched.add(card, 0, reference.begin(), chunkBytes);
        simulated::cuda::WatchedMemory::watch(&watched);
        std::uint8_t flag = 1;
        launch(kernels::watched::kernelTable(), test, chunkBytes, memory.begin(), memory.end(), &flag,
               reference.begin());
        simulated::cuda::WatchedMemory::watch(nullptr);
        EXPECT_EQ(flag, 0);
        EXPECT_EQ(words[2], ~expected[2]);
        EXPECT_EQ(words[3], ~(right ^ 1)) << "what the second reading gave";
    }
}

// A chunk of a test is always whole; the walk of the memory-fault kernels has a rule for others all the same:
// it goes on while its cursor is within the launch's base and the end, both included, and is not entered
// outside of them.
TEST(CudaKernels, WalkAPartialChunkUpToTheEndAndNotDownFromBehindIt) {
    constexpr Word chunkBytes = 0x1000;
    for (const Case& test : plain_walk::allCases()) {
        if (!std::string_view(test.kernel).starts_with("memory_fault")) {
            continue;
        }
        for (const Word missing : {4U, 8U, 0x804U, 0xFFCU}) {
            SCOPED_TRACE(testing::Message() << test.kernel << ", " << missing << " bytes missing");
            std::vector<std::uint8_t> left[2];
            std::uint8_t flags[2] = {1, 1};
            for (const bool byKernel : {true, false}) {
                Block memory(chunkBytes);
                fillRandomly({memory.begin(), chunkBytes}, 9);
                std::uint8_t* const end = memory.end() - missing;
                if (byKernel) {
                    launch(kernels::plain::kernelTable(), test, chunkBytes, memory.begin(), end, &flags[1],
                           nullptr);
                } else {
                    walk(test.walk, chunkBytes, memory.begin(), end, &flags[0], nullptr);
                }
                left[byKernel ? 1 : 0].assign(memory.begin(), memory.end());
            }
            EXPECT_EQ(flags[0], flags[1]);
            EXPECT_EQ(left[0], left[1]);
        }
    }
}

namespace {

/// Runs a block-move kernel over one chunk of 1 MiB.
void moveBlocks(const char* kernel, Block& memory, std::uint8_t& flag) {
    const auto& cases = plain_walk::allCases();
    const Case& test = *std::ranges::find_if(
        cases, [&](const Case& other) { return std::string_view(other.kernel) == kernel; });
    launch(kernels::plain::kernelTable(), test, static_cast<Word>(memory.size()), memory.begin(),
           memory.end(), &flag, nullptr);
}

} // namespace

TEST(CudaKernels, FillAChunkWithABitThatWalksFromGroupToGroup) {
    Block memory(0x100000);
    std::uint8_t flag = 1;
    moveBlocks("block_move_kernel_init", memory, flag);
    const auto* const words = reinterpret_cast<const Word*>(memory.begin());
    for (Word group = 0; group < 16384; ++group) {
        const Word value = 1U << group % 32;
        for (Word i = 0; i < 16; ++i) {
            ASSERT_EQ(words[group * 16 + i], i % 4 < 2 ? value : ~value)
                << "group " << group << ", word " << i;
        }
    }
}

TEST(CudaKernels, RotateTheFirstHalfOfAChunkBy32BytesAndKeepItsOrderInTheSecond) {
    Block memory(0x100000);
    auto* const words = reinterpret_cast<Word*>(memory.begin());
    constexpr Word half = 131072;
    for (Word i = 0; i < 2 * half; ++i) {
        words[i] = i;
    }
    std::uint8_t flag = 1;
    moveBlocks("block_move_kernel_move", memory, flag);
    for (Word i = 0; i < half; ++i) {
        ASSERT_EQ(words[i], (i + half - 8) % half) << i;
        ASSERT_EQ(words[half + i], i) << "what was in the second half is gone";
    }
}

TEST(CudaKernels, FindPairsEqualAfterTheMoveAndSeeOneWordOfAPair) {
    Block memory(0x100000);
    std::uint8_t flag = 1;
    for (const char* kernel :
         {"block_move_kernel_init", "block_move_kernel_move", "block_move_kernel_check"}) {
        moveBlocks(kernel, memory, flag);
    }
    EXPECT_EQ(flag, 1);
    auto* const words = reinterpret_cast<Word*>(memory.begin());
    words[1000] ^= 4;
    words[1001] ^= 4;
    moveBlocks("block_move_kernel_check", memory, flag);
    EXPECT_EQ(flag, 1) << "a fault that leaves both words equal goes unseen";
    words[2001] ^= 4;
    moveBlocks("block_move_kernel_check", memory, flag);
    EXPECT_EQ(flag, 0);
}

TEST(CudaKernels, ReturnAtOnceInBlocksAtOrAboveTheEnd) {
    for (const Case& test : plain_walk::allCases()) {
        Block memory(0x2000);
        Block reference(0x1000);
        fillRandomly({memory.begin(), memory.size()}, 1);
        const std::vector<std::uint8_t> before(memory.begin() + 0x1000, memory.end());
        std::uint8_t flag = 1;
        launch(kernels::plain::kernelTable(), test, 0x1000, memory.begin(), memory.begin() + 0x1000, &flag,
               reference.begin());
        EXPECT_TRUE(std::ranges::equal(before, std::span(memory.begin() + 0x1000, 0x1000))) << test.kernel;
    }
}

TEST(CudaKernels, DoNothingToThePhaseOfModuloXWhenTheOffsetLiesBehindTheChunk) {
    Block memory(64);
    std::ranges::fill(std::span(memory.begin(), 64), std::uint8_t{0});
    Word chunkBytes = 64, far = 16, value = 1;
    std::uint8_t flag = 1;
    std::uint8_t *base = memory.begin(), *end = memory.end(), *flagAddress = &flag;
    auto arguments = list(&chunkBytes, &base, &end, &far, &value, &flagAddress);
    kernels::launchPosition = {0, 1, 0};
    const auto table = kernels::plain::kernelTable();
    std::ranges::find(table, std::string_view("modulo_x_kernel_check"), &kernels::HostKernel::name)
        ->run(arguments.data());
    EXPECT_EQ(flag, 1);
}

} // namespace vexil::tests
