// Every kernel of the module, by fat binary, in the order in which the fat binary registers them. The names
// and the order of the arguments are the contract between the device code, its launchers and the simulated
// card; each side includes this file, so that a signature is written down once.
//
// Arguments that all memory kernels share: `chunkBytes` is the share of one block in bytes, a multiple of 4;
// `base` is the first byte of the launch and `end` the first byte after the memory under test; `flag` is the
// one byte to which a kernel stores 0 when it finds a wrong word, and which it never sets.
#pragma once

#include "kernel_support.h"

VEXIL_KERNELS_BEGIN

// Address test: each 64-bit word holds its own address.
VEXIL_MEMORY_KERNEL address_kernel_check(Word chunkBytes, Byte* base, Byte* end, Byte* flag);
VEXIL_MEMORY_KERNEL address_kernel_write(Word chunkBytes, Byte* base, Byte* end);

// Block-move test: pairs of equal words, moved by half a chunk and back.
VEXIL_MEMORY_KERNEL block_move_kernel_check(Word chunkBytes, Byte* base, Byte* end, Byte* flag);
VEXIL_MEMORY_KERNEL block_move_kernel_move(Word chunkBytes, Byte* base, Byte* end);
VEXIL_MEMORY_KERNEL block_move_kernel_init(Word chunkBytes, Byte* base, Byte* end);

// Memory-fault test: a constant turned over word by word, upwards or downwards.
VEXIL_MEMORY_KERNEL memory_fault_kernel_check(Word chunkBytes, Byte* base, Byte* end, bool ascending,
                                              Word expected, Byte* flag);
VEXIL_MEMORY_KERNEL memory_fault_kernel_check_write(Word chunkBytes, Byte* base, Byte* end, bool ascending,
                                                    Word expected, Word next, Byte* flag);
VEXIL_MEMORY_KERNEL memory_fault_kernel_write(Word chunkBytes, Byte* base, Byte* end, bool ascending,
                                              Word value);

// Modulo-X test: `value` in every twentieth word, `other` around it.
VEXIL_MEMORY_KERNEL modulo_x_kernel_check(Word chunkBytes, Byte* base, Byte* end, Word offset, Word value,
                                          Byte* flag);
VEXIL_MEMORY_KERNEL modulo_x_kernel_write(Word chunkBytes, Byte* base, Byte* end, Word offset, Word value,
                                          Word other);

// Moving-inversion test: one pattern and its complement.
VEXIL_MEMORY_KERNEL moving_inversion_kernel_check(Word chunkBytes, Byte* base, Byte* end, Word expected,
                                                  Byte* flag);
VEXIL_MEMORY_KERNEL moving_inversion_kernel_check_write(Word chunkBytes, Byte* base, Byte* end, Word expected,
                                                        Word next, Byte* flag);
VEXIL_MEMORY_KERNEL moving_inversion_kernel_write(Word chunkBytes, Byte* base, Byte* end, Word value);

// Random-sequence test: every chunk against one chunk of random words on the card.
VEXIL_MEMORY_KERNEL RandomNumberSequenceKernelCheck(Word chunkBytes, Byte* base, Byte* end, Byte* reference,
                                                    Byte* flag);
VEXIL_MEMORY_KERNEL RandomNumberSequenceKernelCheckWrite(Word chunkBytes, Byte* base, Byte* end,
                                                         Byte* reference, Byte* flag);
VEXIL_MEMORY_KERNEL RandomNumberSequenceKernelWrite(Word chunkBytes, Byte* base, Byte* end, Byte* reference);

// Arithmetic tests: one operation a block, one element a thread; a block without an operation stores 0.
VEXIL_KERNEL cuda_kernel_advanced_execute_integer(const int* a, const int* b, const int* c, int* out);
VEXIL_KERNEL cuda_kernel_standard_execute_integer(const int* a, const int* b, const int* c, int* out);
VEXIL_KERNEL cuda_kernel_advanced_execute_float(const float* a, const float* b, const float* c, float* out);
VEXIL_KERNEL cuda_kernel_standard_execute_float(const float* a, const float* b, const float* c, float* out);

VEXIL_KERNELS_END
