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

/// What `exchangeWords` does upwards, by batches, each read before any word of it is written: for memory in
/// which nobody can tell.
VEXIL_INLINE bool exchangeVectors(Byte* chunk, Word bytes, Word expected, Word next) {
    const Word batched = batchedBytes(chunk, bytes);
    Vector different = sameWords(0);
    for (Word first = 0; first < batched; first += batchBytes) {
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

/// Puts `next` into all words, one after another, and tells whether any of them differed from `expected`. The
/// load of a word follows the store to the word before it, so that a store which disturbs its neighbour is
/// seen in this very walk; hence no vectors. What is put off is the comparison alone, which lets the accesses
/// flow without waiting for each other.
template <bool ascending>
VEXIL_INLINE bool exchangeWords(Byte* chunk, Word bytes, Word expected, Word next) {
    if (!accessOrderShows) {
        return exchangeVectors(chunk, bytes, expected, next);
    }
    constexpr Word groupBytes = wordsInFlight * wordBytes;
    const Word grouped = bytes - bytes % groupBytes;
    const Word single = bytes - grouped;
    Word different = 0;
    // The words that fill no group are the last of the walk in either direction.
    Byte* const groups = ascending ? chunk : chunk + single;
    for (Word done = 0; done < grouped; done += groupBytes) {
        Byte* const first = groups + (ascending ? done : grouped - groupBytes - done);
        Word seen[wordsInFlight];
        VEXIL_UNROLL
        for (Word k = 0; k < wordsInFlight; ++k) {
            Byte* const word = first + part<ascending>(k, wordsInFlight) * wordBytes;
            seen[k] = loadWordInOrder(word);
            storeWordInOrder(word, next);
        }
        VEXIL_UNROLL
        for (Word k = 0; k < wordsInFlight; ++k) {
            different |= seen[k] ^ expected;
        }
    }
    for (Word done = 0; done < single; done += wordBytes) {
        Byte* const word = ascending ? chunk + grouped + done : chunk + single - wordBytes - done;
        different |= loadWordInOrder(word) ^ expected;
        storeWordInOrder(word, next);
    }
    return different != 0;
}

/// Copies between places that do not overlap, from the lowest word up.
VEXIL_INLINE void copyWords(Byte* to, const Byte* from, Word bytes) {
    const Word batched = reinterpret_cast<LongWord>(to) % vectorBytes == 0 ? batchedBytes(from, bytes) : 0;
    for (Word first = 0; first < batched; first += batchBytes) {
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
