#include "plain_walk.h"

namespace vexil::tests::plain_walk {

namespace {

std::uintptr_t address(const Chunk& chunk, const Word* word) {
    return reinterpret_cast<std::uintptr_t>(word) + chunk.moved;
}
Word low(std::uintptr_t address) { return static_cast<Word>(address); }
Word high(std::uintptr_t address) { return static_cast<Word>(address >> 32); }

/// The cursor of the memory-fault kernels: post-tested, within [base, end], until the stop address.
template <typename Visit>
void walk(const Chunk& chunk, bool ascending, Visit&& visit) {
    const auto base = reinterpret_cast<std::intptr_t>(chunk.base);
    const auto end = reinterpret_cast<std::intptr_t>(chunk.end);
    const auto begin = reinterpret_cast<std::intptr_t>(chunk.begin);
    const std::intptr_t step = ascending ? 4 : -4;
    std::intptr_t cursor = ascending ? begin : begin + chunk.bytes - 4;
    const std::intptr_t stop = ascending ? begin + chunk.bytes : begin - 4;
    while (cursor >= base && cursor <= end && cursor != stop) {
        visit(reinterpret_cast<Word*>(cursor));
        cursor += step;
    }
}

} // namespace

void addressWrite(const Chunk& chunk, const Access& access) {
    for (std::uint32_t i = 0; i + 1 < chunk.count(); i += 2) {
        Word* const word = chunk.words() + i;
        access.store(word, low(address(chunk, word)));
        access.store(word + 1, high(address(chunk, word)));
    }
}

void addressCheck(const Chunk& chunk, const Access& access) {
    for (std::uint32_t i = 0; i + 1 < chunk.count(); i += 2) {
        const Word* const word = chunk.words() + i;
        const Word first = access.load(word);
        const Word second = access.load(word + 1);
        if (first != low(address(chunk, word)) || second != high(address(chunk, word))) {
            *chunk.flag = 0;
        }
    }
}

void blockMoveInit(const Chunk& chunk, const Access& access) {
    Word value = 1;
    const std::uint32_t groups = (chunk.count() - 1) / 16 + 1;
    for (std::uint32_t group = 0; group < groups; ++group) {
        for (std::uint32_t i = 0; i < 16; ++i) {
            access.store(chunk.words() + group * 16 + i, i % 4 < 2 ? value : ~value);
        }
        value <<= 1;
        if (value == 0) {
            value = 1;
        }
    }
}

void blockMoveMove(const Chunk& chunk, const Access& access) {
    Word* const word = chunk.words();
    const std::uint32_t half = chunk.bytes / 8;
    for (std::uint32_t i = 0; i < half; ++i) {
        access.store(word + half + i, access.load(word + i));
    }
    for (std::uint32_t i = 0; i + 8 < half; ++i) {
        access.store(word + i + 8, access.load(word + half + i));
    }
    for (std::uint32_t j = 0; j < 8; ++j) {
        access.store(word + j, access.load(word + 2 * half - 8 + j));
    }
}

void blockMoveCheck(const Chunk& chunk, const Access& access) {
    for (std::uint32_t i = 0; i + 1 < chunk.count(); i += 2) {
        const Word first = access.load(chunk.words() + i);
        if (access.load(chunk.words() + i + 1) != first) {
            *chunk.flag = 0;
        }
    }
}

void memoryFaultWrite(const Chunk& chunk, const Access& access, bool ascending, Word value) {
    walk(chunk, ascending, [&](Word* word) { access.store(word, value); });
}

void memoryFaultCheckWrite(const Chunk& chunk, const Access& access, bool ascending, Word expected,
                           Word next) {
    walk(chunk, ascending, [&](Word* word) {
        if (access.load(word) != expected) {
            *chunk.flag = 0;
        }
        access.store(word, next);
    });
}

void memoryFaultCheck(const Chunk& chunk, const Access& access, bool ascending, Word expected) {
    walk(chunk, ascending, [&](Word* word) {
        if (access.load(word) != expected) {
            *chunk.flag = 0;
        }
    });
}

void moduloXWrite(const Chunk& chunk, const Access& access, Word offset, Word value, Word other) {
    for (std::uint64_t i = offset; i < chunk.count(); i += 20) {
        access.store(chunk.words() + i, value);
    }
    for (std::uint32_t i = 0; i < chunk.count(); ++i) {
        if (i % 20 != offset) {
            access.store(chunk.words() + i, other);
        }
    }
}

void moduloXCheck(const Chunk& chunk, const Access& access, Word offset, Word value) {
    for (std::uint64_t i = offset; i < chunk.count(); i += 20) {
        if (access.load(chunk.words() + i) != value) {
            *chunk.flag = 0;
        }
    }
}

void movingInversionWrite(const Chunk& chunk, const Access& access, Word value) {
    for (std::uint32_t i = 0; i < chunk.count(); ++i) {
        access.store(chunk.words() + i, value);
    }
}

void movingInversionCheckWrite(const Chunk& chunk, const Access& access, Word expected, Word next) {
    for (std::uint32_t i = 0; i < chunk.count(); ++i) {
        if (access.load(chunk.words() + i) != expected) {
            *chunk.flag = 0;
        }
        access.store(chunk.words() + i, next);
    }
}

void movingInversionCheck(const Chunk& chunk, const Access& access, Word expected) {
    for (std::uint32_t i = 0; i < chunk.count(); ++i) {
        if (access.load(chunk.words() + i) != expected) {
            *chunk.flag = 0;
        }
    }
}

void randomWrite(const Chunk& chunk, const Access& access, const Word* reference) {
    for (std::uint32_t i = 0; i < chunk.count(); ++i) {
        access.store(chunk.words() + i, access.load(reference + i));
    }
}

void randomCheckWrite(const Chunk& chunk, const Access& access, const Word* reference) {
    for (std::uint32_t i = 0; i < chunk.count(); ++i) {
        Word value = access.load(reference + i);
        if (access.load(chunk.words() + i) != value) {
            *chunk.flag = 0;
            value = access.load(reference + i);
        }
        access.store(chunk.words() + i, ~value);
    }
}

void randomCheck(const Chunk& chunk, const Access& access, const Word* reference) {
    for (std::uint32_t i = 0; i < chunk.count(); ++i) {
        if (access.load(chunk.words() + i) != ~access.load(reference + i)) {
            *chunk.flag = 0;
        }
    }
}

} // namespace vexil::tests::plain_walk
