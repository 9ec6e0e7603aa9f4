#include "kernels.h"
#include "walks.h"

VEXIL_KERNELS_BEGIN

constexpr Word period = 20;
constexpr Word periodBytes = period * wordBytes;
constexpr Word vectorsPerPeriod = period / wordsPerVector;
static_assert(period % wordsPerVector == 0, "the odd word has the same lane in every period");

/// Stores the three words of a vector that lie around `lane`, and `value` with them where nobody can tell
/// when that was written.
template <Word lane>
VEXIL_INLINE void storeAround(Byte* vector, Word value, Word other) {
    if (!accessOrderShows) {
        Vector words = sameWords(other);
        words[lane] = value;
        storeVector(vector, words);
    } else if (lane < 2) {
        storeWord(vector + (1 - lane) * wordBytes, other);
        storePair(vector + 2 * wordBytes, Pair{other, other});
    } else {
        storePair(vector, Pair{other, other});
        storeWord(vector + (5 - lane) * wordBytes, other);
    }
}

/// Fills with `other` from a vector whose word `lane` is left out, as that of every fifth vector after it.
template <Word lane>
VEXIL_INLINE void fillAround(Byte* from, Word vectors, Word value, Word other) {
    const Word whole = vectors / vectorsPerPeriod;
    VEXIL_UNROLL_BY(8)
    for (Word k = 0; k < whole; ++k) {
        Byte* const first = from + k * periodBytes;
        storeAround<lane>(first, value, other);
        VEXIL_UNROLL
        for (Word vector = 1; vector < vectorsPerPeriod; ++vector) {
            storeVector(first + vector * vectorBytes, sameWords(other));
        }
    }
    for (Word vector = whole * vectorsPerPeriod; vector < vectors; ++vector) {
        if (vector % vectorsPerPeriod == 0) {
            storeAround<lane>(from + vector * vectorBytes, value, other);
        } else {
            storeVector(from + vector * vectorBytes, sameWords(other));
        }
    }
}

VEXIL_MEMORY_KERNEL modulo_x_kernel_check(Word chunkBytes, Byte* base, Byte* end, Word offset, Word value,
                                          Byte* flag) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    const Word words = chunkBytes / wordBytes;
    if (chunk >= end || offset >= words) {
        return;
    }
    const Word count = (words - offset - 1) / period + 1;
    const Word grouped = count - count % wordsInFlight;
    const Byte* const first = chunk + offset * wordBytes;
    Word different = 0;
    for (Word done = 0; done < grouped; done += wordsInFlight) {
        Word seen[wordsInFlight];
        VEXIL_UNROLL
        for (Word k = 0; k < wordsInFlight; ++k) {
            seen[k] = loadWord(first + (done + k) * periodBytes);
        }
        VEXIL_UNROLL
        for (Word k = 0; k < wordsInFlight; ++k) {
            different |= seen[k] ^ value;
        }
    }
    for (Word k = grouped; k < count; ++k) {
        different |= loadWord(first + k * periodBytes) ^ value;
    }
    if (different != 0) {
        *flag = 0;
    }
}

// First every twentieth word, then all around them, as two walks: a store of the second that lands on a word
// of the first has to stay there for the check to see.
VEXIL_MEMORY_KERNEL modulo_x_kernel_write(Word chunkBytes, Byte* base, Byte* end, Word offset, Word value,
                                          Word other) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    const Word words = chunkBytes / wordBytes;
    const Word odd = offset / wordsPerVector;
    const Word vectors = offset < period ? batchedBytes(chunk, chunkBytes) / vectorBytes : 0;
    const Word inVectors = vectors > odd ? vectors * wordsPerVector : 0;

    Word place = offset;
    if (!accessOrderShows && inVectors > offset) {
        place += (inVectors - offset + period - 1) / period * period;
    }
    if (place < words) {
        const Word count = (words - place - 1) / period + 1;
        VEXIL_UNROLL_BY(8)
        for (Word k = 0; k < count; ++k) {
            storeWord(chunk + (place + k * period) * wordBytes, value);
        }
    }

    if (inVectors != 0) {
        for (Word vector = 0; vector < odd; ++vector) {
            storeVector(chunk + vector * vectorBytes, sameWords(other));
        }
        Byte* const first = chunk + odd * vectorBytes;
        switch (offset % wordsPerVector) {
        case 0:
            fillAround<0>(first, vectors - odd, value, other);
            break;
        case 1:
            fillAround<1>(first, vectors - odd, value, other);
            break;
        case 2:
            fillAround<2>(first, vectors - odd, value, other);
            break;
        default:
            fillAround<3>(first, vectors - odd, value, other);
            break;
        }
    }
    for (Word i = inVectors; i < words; ++i) {
        if (i % period != offset) {
            storeWord(chunk + i * wordBytes, other);
        }
    }
}

VEXIL_KERNELS_END
