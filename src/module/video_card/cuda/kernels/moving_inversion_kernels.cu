#include "kernels.h"
#include "walks.h"

VEXIL_KERNELS_BEGIN

VEXIL_MEMORY_KERNEL moving_inversion_kernel_check(Word chunkBytes, Byte* base, Byte* end, Word expected,
                                                  Byte* flag) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end)
        return;
    if (anyWordDiffers<true>(chunk, chunkBytes, expected))
        *flag = 0;
}

// A vector is read and written whole. No word is read after another word of its batch was written, which this
// test does not ask for: it proves that words hold the pattern, not that they leave their neighbours alone.
VEXIL_MEMORY_KERNEL moving_inversion_kernel_check_write(Word chunkBytes, Byte* base, Byte* end, Word expected,
                                                        Word next, Byte* flag) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end)
        return;
    const Word batched = batchedBytes(chunk, chunkBytes);
    Vector different = sameWords(0);
    for (Word first = 0; first < batched; first += batchBytes) {
        Vector seen[vectorsInFlight];
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k)
            seen[k] = loadVector(chunk + first + k * vectorBytes);
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k)
            storeVector(chunk + first + k * vectorBytes, sameWords(next));
        VEXIL_UNROLL
        for (Word k = 0; k < vectorsInFlight; ++k)
            different |= seen[k] ^ expected;
    }
    for (Word at = batched; at < chunkBytes; at += wordBytes) {
        different[0] |= loadWord(chunk + at) ^ expected;
        storeWord(chunk + at, next);
    }
    if (anyBit(different))
        *flag = 0;
}

VEXIL_MEMORY_KERNEL moving_inversion_kernel_write(Word chunkBytes, Byte* base, Byte* end, Word value) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end)
        return;
    fillWords<true>(chunk, chunkBytes, value);
}

VEXIL_KERNELS_END
