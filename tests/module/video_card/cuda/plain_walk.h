#pragma once

#include <cstdint>
#include <functional>

// What each memory kernel does to one chunk, written as plainly as it can be said: one word after another, no
// batches, no vectors. The kernels must leave the same memory and the same flag behind.
namespace vexil::tests::plain_walk {

using Word = std::uint32_t;

/// How the walk reaches memory.
struct Access {
    std::function<Word(const Word*)> load = [](const Word* word) { return *word; };
    std::function<void(Word*, Word)> store = [](Word* word, Word value) { *word = value; };
};

/// One block's share of a launch.
struct Chunk {
    std::uint8_t* begin;
    std::uint8_t* base; ///< of the launch
    std::uint8_t* end;  ///< of the memory under test
    std::uint32_t bytes;
    std::uint8_t* flag;
    std::uintptr_t moved = 0; ///< from where the walk works to where the kernel did

    [[nodiscard]] Word* words() const { return reinterpret_cast<Word*>(begin); }
    [[nodiscard]] std::uint32_t count() const { return bytes / 4; }
};

void addressWrite(const Chunk& chunk, const Access& access);
void addressCheck(const Chunk& chunk, const Access& access);
void blockMoveInit(const Chunk& chunk, const Access& access);
void blockMoveMove(const Chunk& chunk, const Access& access);
void blockMoveCheck(const Chunk& chunk, const Access& access);
void memoryFaultWrite(const Chunk& chunk, const Access& access, bool ascending, Word value);
void memoryFaultCheckWrite(const Chunk& chunk, const Access& access, bool ascending, Word expected,
                           Word next);
void memoryFaultCheck(const Chunk& chunk, const Access& access, bool ascending, Word expected);
void moduloXWrite(const Chunk& chunk, const Access& access, Word offset, Word value, Word other);
void moduloXCheck(const Chunk& chunk, const Access& access, Word offset, Word value);
void movingInversionWrite(const Chunk& chunk, const Access& access, Word value);
void movingInversionCheckWrite(const Chunk& chunk, const Access& access, Word expected, Word next);
void movingInversionCheck(const Chunk& chunk, const Access& access, Word expected);
void randomWrite(const Chunk& chunk, const Access& access, const Word* reference);
void randomCheckWrite(const Chunk& chunk, const Access& access, const Word* reference);
void randomCheck(const Chunk& chunk, const Access& access, const Word* reference);

} // namespace vexil::tests::plain_walk
