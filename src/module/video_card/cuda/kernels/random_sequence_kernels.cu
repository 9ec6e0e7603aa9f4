#include "kernels.h"
#include "walks.h"

VEXIL_KERNELS_BEGIN

// Two loads belong to each word, so half a batch of each keeps as much in flight as elsewhere.
constexpr Word pairsInFlight = vectorsInFlight / 2;
constexpr Word pairBytes = pairsInFlight * vectorBytes;

/// Bytes that whole batches of pairs cover; 0 where vectors would not be aligned.
VEXIL_INLINE Word pairedBytes(const Byte* chunk, const Byte* reference, Word bytes) {
    const LongWord places = reinterpret_cast<LongWord>(chunk) | reinterpret_cast<LongWord>(reference);
    return places % vectorBytes == 0 ? bytes - bytes % pairBytes : 0;
}

/// One word of the check-and-write walk. A wrong word's reference is read again before its complement is
/// stored.
VEXIL_INLINE void invertWord(Byte* word, const Byte* reference, Byte* flag) {
    Word value = loadWordInOrder(reference);
    if (loadWordInOrder(word) != value) {
        *flag = 0;
        value = loadWordInOrder(reference);
    }
    storeWordInOrder(word, ~value);
}

/// Puts the complements of `wanted` into a batch and what was there into `seen`. Word by word where somebody
/// can tell, so that a store which disturbs the next word is seen when that is read. The reference, which no
/// kernel writes, is read ahead: a store that had to wait for it would hold up all accesses behind it.
VEXIL_INLINE void invertVectors(Byte* batch, const Vector* wanted, Vector* seen) {
    if (accessOrderShows) {
        VEXIL_UNROLL
        for (Word k = 0; k < pairsInFlight; ++k) {
            Vector words{};
            VEXIL_UNROLL
            for (Word lane = 0; lane < wordsPerVector; ++lane) {
                Byte* const word = batch + k * vectorBytes + lane * wordBytes;
                words[lane] = loadWordInOrder(word);
                storeWordInOrder(word, ~wanted[k][lane]);
            }
            seen[k] = words;
        }
        return;
    }
    VEXIL_UNROLL
    for (Word k = 0; k < pairsInFlight; ++k) {
        seen[k] = loadVector(batch + k * vectorBytes);
    }
    VEXIL_UNROLL
    for (Word k = 0; k < pairsInFlight; ++k) {
        storeVector(batch + k * vectorBytes, ~wanted[k]);
    }
}

VEXIL_MEMORY_KERNEL RandomNumberSequenceKernelCheck(Word chunkBytes, Byte* base, Byte* end, Byte* reference,
                                                    Byte* flag) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    const Word paired = pairedBytes(chunk, reference, chunkBytes);
    Vector different = sameWords(0);
    for (Word first = 0; first < paired; first += pairBytes) {
        Vector wanted[pairsInFlight], seen[pairsInFlight];
        VEXIL_UNROLL
        for (Word k = 0; k < pairsInFlight; ++k) {
            wanted[k] = loadVector(reference + first + k * vectorBytes);
            seen[k] = loadVector(chunk + first + k * vectorBytes);
        }
        VEXIL_UNROLL
        for (Word k = 0; k < pairsInFlight; ++k) {
            different |= seen[k] ^ ~wanted[k];
        }
    }
    for (Word at = paired; at < chunkBytes; at += wordBytes) {
        different[0] |= loadWord(chunk + at) ^ ~loadWord(reference + at);
    }
    if (anyBit(different)) {
        *flag = 0;
    }
}

VEXIL_MEMORY_KERNEL RandomNumberSequenceKernelCheckWrite(Word chunkBytes, Byte* base, Byte* end,
                                                         Byte* reference, Byte* flag) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    const Word paired = pairedBytes(chunk, reference, chunkBytes);
    for (Word first = 0; first < paired; first += pairBytes) {
        Vector wanted[pairsInFlight], seen[pairsInFlight];
        VEXIL_UNROLL
        for (Word k = 0; k < pairsInFlight; ++k) {
            wanted[k] = loadVector(reference + first + k * vectorBytes);
        }
        invertVectors(chunk + first, wanted, seen);
        Vector different = sameWords(0);
        VEXIL_UNROLL
        for (Word k = 0; k < pairsInFlight; ++k) {
            different |= seen[k] ^ wanted[k];
        }
        if (!anyBit(different)) {
            continue;
        }
        *flag = 0;
        // Rare: the reference of each wrong word counts as read again, and its complement is what stays.
        VEXIL_UNROLL
        for (Word k = 0; k < pairsInFlight; ++k) {
            VEXIL_UNROLL
            for (Word lane = 0; lane < wordsPerVector; ++lane) {
                if (seen[k][lane] != wanted[k][lane]) {
                    const LongWord at = first + k * vectorBytes + lane * wordBytes;
                    storeWordInOrder(chunk + at, ~loadWordInOrder(reference + at));
                }
            }
        }
    }
    for (Word at = paired; at < chunkBytes; at += wordBytes) {
        invertWord(chunk + at, reference + at, flag);
    }
}

VEXIL_MEMORY_KERNEL RandomNumberSequenceKernelWrite(Word chunkBytes, Byte* base, Byte* end, Byte* reference) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    copyWords(chunk, reference, chunkBytes);
}

VEXIL_KERNELS_END
