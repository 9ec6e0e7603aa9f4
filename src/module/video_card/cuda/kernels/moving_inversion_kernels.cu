#include "kernels.h"
#include "walks.h"

VEXIL_KERNELS_BEGIN

VEXIL_MEMORY_KERNEL moving_inversion_kernel_check(Word chunkBytes, Byte* base, Byte* end, Word expected,
                                                  Byte* flag) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    if (anyWordDiffers<true>(chunk, chunkBytes, expected)) {
        *flag = 0;
    }
}

VEXIL_MEMORY_KERNEL moving_inversion_kernel_check_write(Word chunkBytes, Byte* base, Byte* end, Word expected,
                                                        Word next, Byte* flag) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    if (exchangeWords<true>(chunk, chunkBytes, expected, next)) {
        *flag = 0;
    }
}

VEXIL_MEMORY_KERNEL moving_inversion_kernel_write(Word chunkBytes, Byte* base, Byte* end, Word value) {
    Byte* const chunk = chunkOfBlock(base, chunkBytes);
    if (chunk >= end) {
        return;
    }
    fillWords<true>(chunk, chunkBytes, value);
}

VEXIL_KERNELS_END
