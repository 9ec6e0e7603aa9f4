// The device's half of kernel_support.h.
#pragma once

#define VEXIL_KERNELS_BEGIN namespace vexil::module::video_card::kernels {
#define VEXIL_KERNELS_END }
#define VEXIL_KERNEL extern "C" __attribute__((global)) void
// Told that a block is one thread, the assembler gives that thread all the registers it can use. Without it
// the loads of a batch are put back one behind the other, to save registers for threads that do not exist.
#define VEXIL_MEMORY_KERNEL extern "C" __attribute__((global, launch_bounds(1, 1))) void
#define VEXIL_INLINE static inline __attribute__((device, always_inline))
#define VEXIL_PRAGMA(text) _Pragma(#text)
#define VEXIL_UNROLL _Pragma("unroll")
#define VEXIL_UNROLL_BY(count) VEXIL_PRAGMA(unroll count)

VEXIL_KERNELS_BEGIN

// Nothing but a thread's own accesses can hide the latency of the memory from it: the more of them are in
// flight, the faster the pass. 32 vectors take 128 of the 255 registers of a thread, 64 words take 64.
#ifndef VEXIL_VECTORS_IN_FLIGHT
#define VEXIL_VECTORS_IN_FLIGHT 32
#endif
#ifndef VEXIL_WORDS_IN_FLIGHT
#define VEXIL_WORDS_IN_FLIGHT 64
#endif
constexpr Word vectorsInFlight = VEXIL_VECTORS_IN_FLIGHT;
constexpr Word wordsInFlight = VEXIL_WORDS_IN_FLIGHT;

/// Whether somebody can tell in which order a thread reaches different words: faulty memory can.
constexpr bool accessOrderShows = true;

VEXIL_INLINE Word blockIndex() { return static_cast<Word>(__nvvm_read_ptx_sreg_ctaid_x()); }
VEXIL_INLINE Word blockSize() { return static_cast<Word>(__nvvm_read_ptx_sreg_ntid_x()); }
VEXIL_INLINE Word threadIndex() { return static_cast<Word>(__nvvm_read_ptx_sreg_tid_x()); }

VEXIL_INLINE Word loadWord(const void* from) { return *static_cast<const AliasedWord*>(from); }
VEXIL_INLINE void storeWord(void* to, Word value) { *static_cast<AliasedWord*>(to) = value; }
VEXIL_INLINE void storePair(void* to, Pair value) { *static_cast<Pair*>(to) = value; }

// 64 bits an access are the widest that the tests promise.
VEXIL_INLINE Vector loadVector(const void* from) {
    const Pair* const pairs = static_cast<const Pair*>(from);
    return __builtin_shufflevector(pairs[0], pairs[1], 0, 1, 2, 3);
}
VEXIL_INLINE void storeVector(void* to, Vector value) {
    Pair* const pairs = static_cast<Pair*>(to);
    pairs[0] = __builtin_shufflevector(value, value, 0, 1);
    pairs[1] = __builtin_shufflevector(value, value, 2, 3);
}

// Volatile accesses keep the order of the program, in the PTX and in the machine code that is made of it.
VEXIL_INLINE Word loadWordInOrder(const void* from) {
    return *static_cast<const volatile AliasedWord*>(from);
}
VEXIL_INLINE void storeWordInOrder(void* to, Word value) { *static_cast<volatile AliasedWord*>(to) = value; }

VEXIL_KERNELS_END
