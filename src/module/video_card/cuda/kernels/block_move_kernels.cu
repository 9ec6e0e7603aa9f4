#include "kernels.h"
#include "walks.h"

VEXIL_KERNELS_BEGIN

VEXIL_MEMORY_KERNEL block_move_kernel_check(Word chunkBytes, Byte* base, Byte* end, Byte* flag) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    const Word batched = batchedBytes(chunk, chunkBytes);
    Word different = 0;
    for (Word first = 0; first < batched; first += batchBytes) {
        Vector seen[vectorsInFlight];
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            seen[k] = loadVector(chunk + first + k * vectorBytes);
        }
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            different |= (seen[k][0] ^ seen[k][1]) | (seen[k][2] ^ seen[k][3]);
        }
    }
    for (Word at = batched; at + longWordBytes <= chunkBytes; at += longWordBytes) {
        different |= loadWord(chunk + at) ^ loadWord(chunk + at + wordBytes);
    }
    if (different != 0) {
        *flag = 0;
    }
}

VEXIL_MEMORY_KERNEL block_move_kernel_move(Word chunkBytes, Byte* base, Byte* end) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    constexpr Word shift = 8 * wordBytes;
    const Word half = chunkBytes / 8 * wordBytes;
    // Three steps in this order: each reads what the one before has written.
    copyWords(chunk + half, chunk, half);
    copyWords(chunk + shift, chunk + half, half - shift);
    copyWords(chunk, chunk + 2 * half - shift, shift);
}

/// Writes one group of 16 words, `value, value, ~value, ~value` four times over.
VEXIL_INLINE void storeGroup(Byte* group, Word value) {
    VEXIL_UNROLL
    for (Word k = 0; k < 4; ++k) {
        storeVector(group + k * vectorBytes, Vector{value, value, ~value, ~value});
    }
}

// The value is one bit that moves up by one from group to group and comes in again below.
VEXIL_MEMORY_KERNEL block_move_kernel_init(Word chunkBytes, Byte* base, Byte* end) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    constexpr Word groupBytes = 16 * wordBytes;
    constexpr Word round = 32;
    const Word groups = (chunkBytes / wordBytes - 1) / 16 + 1;
    for (Word first = 0; first < groups / round; ++first) {
        VEXIL_UNROLL
        for (Word bit = 0; bit < round; ++bit) {
            storeGroup(chunk + (first * round + bit) * groupBytes, 1u << bit);
        }
    }
    for (Word group = groups - groups % round; group < groups; ++group) {
        storeGroup(chunk + group * groupBytes, 1u << group % round);
    }
}

VEXIL_KERNELS_END
