#include "kernels.h"
#include "walks.h"

VEXIL_KERNELS_BEGIN

/// Bytes of the chunk that the walk visits. The walk stops at the chunk's far edge or outside [base, end],
/// both bounds inclusive, and a descending walk that would start above `end` is not entered. A whole chunk
/// inside the memory is visited whole; block 0 descending leaves through the lower bound and the edge at
/// once.
VEXIL_INLINE Word walkedBytes(const Byte* chunk, Word chunkBytes, const Byte* end, bool ascending) {
    if (chunkBytes == 0) {
        return 0;
    }
    const LongWord toEnd = static_cast<LongWord>(end - chunk);
    if (chunkBytes - wordBytes <= toEnd) {
        return chunkBytes;
    }
    return ascending ? static_cast<Word>(toEnd / wordBytes * wordBytes + wordBytes) : 0;
}

/// Loads, compares and rewrites word after word. The load of a word follows the store to the word before it,
/// so that a store which disturbs its neighbour is seen in this very walk; hence no vectors. What is put off
/// is the comparison alone, which lets the accesses flow without waiting for each other.
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
        prefetchAhead<ascending>(first, groupBytes, grouped - done);
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

VEXIL_MEMORY_KERNEL memory_fault_kernel_check(Word chunkBytes, Byte* base, Byte* end, bool ascending,
                                              Word expected, Byte* flag) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    const Word bytes = walkedBytes(chunk, chunkBytes, end, ascending);
    if (ascending ? anyWordDiffers<true>(chunk, bytes, expected)
                  : anyWordDiffers<false>(chunk, bytes, expected)) {
        *flag = 0;
    }
}

VEXIL_MEMORY_KERNEL memory_fault_kernel_check_write(Word chunkBytes, Byte* base, Byte* end, bool ascending,
                                                    Word expected, Word next, Byte* flag) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    const Word bytes = walkedBytes(chunk, chunkBytes, end, ascending);
    if (ascending ? exchangeWords<true>(chunk, bytes, expected, next)
                  : exchangeWords<false>(chunk, bytes, expected, next)) {
        *flag = 0;
    }
}

VEXIL_MEMORY_KERNEL memory_fault_kernel_write(Word chunkBytes, Byte* base, Byte* end, bool ascending,
                                              Word value) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    const Word bytes = walkedBytes(chunk, chunkBytes, end, ascending);
    if (ascending) {
        fillWords<true>(chunk, bytes, value);
    } else {
        fillWords<false>(chunk, bytes, value);
    }
}

VEXIL_KERNELS_END
