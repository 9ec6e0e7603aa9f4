// Walks over the words of one chunk that several kernels share. A walk takes whole batches of vectors, with
// all loads of a batch in flight before the first is looked at, and then the words that are left over.
#pragma once

#include "kernel_support.h"

VEXIL_KERNELS_BEGIN

constexpr Word batchBytes = vectorsInFlight * vectorBytes;

VEXIL_INLINE Vector sameWords(Word value) { return Vector{value, value, value, value}; }
VEXIL_INLINE bool anyBit(Vector v) { return (v[0] | v[1] | v[2] | v[3]) != 0; }

/// First byte of this block's share; the product is 32 bits wide.
VEXIL_INLINE Byte* chunkOfBlock(Byte* base, Word chunkBytes) { return base + blockIndex() * chunkBytes; }

/// Bytes from `chunk` on that whole batches cover; 0 where vectors would not be aligned.
VEXIL_INLINE Word batchedBytes(const Byte* chunk, Word bytes) {
    return reinterpret_cast<LongWord>(chunk) % vectorBytes == 0 ? bytes - bytes % batchBytes : 0;
}

/// Place of the kth of `count` equal parts, in the direction of the walk.
template <bool ascending>
VEXIL_INLINE Word part(Word k, Word count) {
    return ascending ? k : count - 1 - k;
}

template <bool ascending>
VEXIL_INLINE void fillWords(Byte* chunk, Word bytes, Word value) {
    const Word batched = batchedBytes(chunk, bytes);
    const Word batches = batched / batchBytes;
    if (!ascending) {
        for (Word at = bytes; at > batched; at -= wordBytes) {
            storeWord(chunk + at - wordBytes, value);
        }
    }
    for (Word batch = 0; batch < batches; ++batch) {
        Byte* const first = chunk + part<ascending>(batch, batches) * batchBytes;
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            storeVector(first + part<ascending>(k, vectorsInFlight) * vectorBytes, sameWords(value));
        }
    }
    if (ascending) {
        for (Word at = batched; at < bytes; at += wordBytes) {
            storeWord(chunk + at, value);
        }
    }
}

/// Whether any word differs from `expected`; reads them all.
template <bool ascending>
VEXIL_INLINE bool anyWordDiffers(const Byte* chunk, Word bytes, Word expected) {
    const Word batched = batchedBytes(chunk, bytes);
    const Word batches = batched / batchBytes;
    Vector different = sameWords(0);
    for (Word batch = 0; batch < batches; ++batch) {
        const Byte* const first = chunk + part<ascending>(batch, batches) * batchBytes;
        prefetchAhead<ascending>(first, batchBytes, batched - batch * batchBytes);
        Vector seen[vectorsInFlight];
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            seen[k] = loadVector(first + part<ascending>(k, vectorsInFlight) * vectorBytes);
        }
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            different |= seen[k] ^ expected;
        }
    }
    for (Word at = batched; at < bytes; at += wordBytes) {
        different[0] |= loadWord(chunk + at) ^ expected;
    }
    return anyBit(different);
}

/// Puts `next` into all words and tells whether any of them differed from `expected`. A batch is read before
/// any word of it is written.
VEXIL_INLINE bool exchangeVectors(Byte* chunk, Word bytes, Word expected, Word next) {
    const Word batched = batchedBytes(chunk, bytes);
    Vector different = sameWords(0);
    for (Word first = 0; first < batched; first += batchBytes) {
        prefetchAhead<true>(chunk + first, batchBytes, batched - first);
        Vector seen[vectorsInFlight];
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            seen[k] = loadVector(chunk + first + k * vectorBytes);
        }
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            storeVector(chunk + first + k * vectorBytes, sameWords(next));
        }
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            different |= seen[k] ^ expected;
        }
    }
    for (Word at = batched; at < bytes; at += wordBytes) {
        different[0] |= loadWord(chunk + at) ^ expected;
        storeWord(chunk + at, next);
    }
    return anyBit(different);
}

/// Copies between places that do not overlap, from the lowest word up.
VEXIL_INLINE void copyWords(Byte* to, const Byte* from, Word bytes) {
    const Word batched = reinterpret_cast<LongWord>(to) % vectorBytes == 0 ? batchedBytes(from, bytes) : 0;
    for (Word first = 0; first < batched; first += batchBytes) {
        prefetchAhead<true>(from + first, batchBytes, batched - first);
        Vector moved[vectorsInFlight];
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            moved[k] = loadVector(from + first + k * vectorBytes);
        }
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k) {
            storeVector(to + first + k * vectorBytes, moved[k]);
        }
    }
    for (Word at = batched; at < bytes; at += wordBytes) {
        storeWord(to + at, loadWord(from + at));
    }
}

VEXIL_KERNELS_END
