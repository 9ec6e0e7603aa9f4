#include "module/video_card/entry.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

// A program of its own, since it replaces the allocation functions: the memory that the host's thread may
// still take, and the blocks that are in use by anybody.
namespace {

constexpr int unlimited = -1;

thread_local int allocationsLeft = unlimited;
std::atomic<long> blocksInUse = 0;

void* allocate(std::size_t size) {
    if (allocationsLeft == 0) {
        throw std::bad_alloc();
    }
    allocationsLeft -= allocationsLeft > 0 ? 1 : 0;
    if (void* const block = std::malloc(size == 0 ? 1 : size)) {
        ++blocksInUse;
        return block;
    }
    throw std::bad_alloc();
}

void release(void* block) {
    blocksInUse -= block == nullptr ? 0 : 1;
    std::free(block);
}

} // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }

namespace {

vexil::core::Module* createWith(int allocations) {
    allocationsLeft = allocations;
    auto* const module = CreateModuleInstance();
    allocationsLeft = unlimited;
    return module;
}

TEST(Entry, GivesANewModuleEachTime) {
    auto* const first = CreateModuleInstance();
    auto* const second = CreateModuleInstance();
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    DestroyModuleInstance(first);
    EXPECT_EQ(second->moduleId(), 7);
    DestroyModuleInstance(second);
}

TEST(Entry, DoesNothingForANullModule) { DestroyModuleInstance(nullptr); }

TEST(Entry, GivesNullWhicheverAllocationFailsAndKeepsNothing) {
    DestroyModuleInstance(CreateModuleInstance()); // What stays for the process is there after this.
    const long before = blocksInUse;
    int failed = 0;
    vexil::core::Module* module = nullptr;
    while ((module = createWith(failed)) == nullptr) {
        ++failed;
    }
    EXPECT_EQ(module->testIds().size(), 16U);
    DestroyModuleInstance(module);
    const long after = blocksInUse;
    EXPECT_EQ(after, before);
    EXPECT_GT(failed, 5) << "module, scanner, device list, dispatcher, workers and ids all need memory";
}

} // namespace
