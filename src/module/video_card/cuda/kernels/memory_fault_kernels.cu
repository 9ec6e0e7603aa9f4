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
