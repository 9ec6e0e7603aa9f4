#include "kernels.h"
#include "walks.h"

VEXIL_KERNELS_BEGIN

// Within a batch that is aligned to its own size the addresses differ in their lowest bits alone: the upper
// half of each is the same, and the lower half is the batch's with those bits set. That saves the 64-bit
// additions.
static_assert((batchBytes & (batchBytes - 1)) == 0);

/// Bytes from `chunk` on that whole batches cover, each aligned to its own size.
VEXIL_INLINE Word addressedBatches(const Byte* chunk, Word bytes) {
    return reinterpret_cast<LongWord>(chunk) % batchBytes == 0 ? bytes - bytes % batchBytes : 0;
}

/// The addresses of the two 64-bit words at `first + k * 16`, as they lie in memory.
VEXIL_INLINE Vector ownAddresses(LongWord first, Word k) {
    const Word low = static_cast<Word>(first) | k * vectorBytes;
    const Word high = static_cast<Word>(first >> 32);
    return Vector{low, high, low | longWordBytes, high};
}

VEXIL_MEMORY_KERNEL address_kernel_check(Word chunkBytes, Byte* base, Byte* end, Byte* flag) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    const Word batched = addressedBatches(chunk, chunkBytes);
    Vector different = sameWords(0);
    for (Word at = 0; at < batched; at += batchBytes) {
        const LongWord first = reinterpret_cast<LongWord>(chunk + at);
        Vector seen[vectorsInFlight];
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            seen[k] = loadVector(chunk + at + k * vectorBytes);
        }
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            different |= seen[k] ^ ownAddresses(first, k);
        }
    }
    for (Word at = batched; at < chunkBytes / longWordBytes * longWordBytes; at += longWordBytes) {
        const LongWord own = reinterpret_cast<LongWord>(chunk + at);
        different[0] |= loadWord(chunk + at) ^ static_cast<Word>(own);
        different[1] |= loadWord(chunk + at + wordBytes) ^ static_cast<Word>(own >> 32);
    }
    if (anyBit(different)) {
        *flag = 0;
    }
}

VEXIL_MEMORY_KERNEL address_kernel_write(Word chunkBytes, Byte* base, Byte* end) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    const Word batched = addressedBatches(chunk, chunkBytes);
    for (Word at = 0; at < batched; at += batchBytes) {
        const LongWord first = reinterpret_cast<LongWord>(chunk + at);
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            storeVector(chunk + at + k * vectorBytes, ownAddresses(first, k));
        }
    }
    for (Word at = batched; at < chunkBytes / longWordBytes * longWordBytes; at += longWordBytes) {
        const LongWord own = reinterpret_cast<LongWord>(chunk + at);
        storeWord(chunk + at, static_cast<Word>(own));
        storeWord(chunk + at + wordBytes, static_cast<Word>(own >> 32));
    }
}

VEXIL_KERNELS_END
