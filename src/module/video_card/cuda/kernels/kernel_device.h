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

// How far ahead of its loads a walk asks for memory, and in which steps; 0 asks for none. A request costs no
// register, unlike a load in flight.
#ifndef VEXIL_PREFETCH_DISTANCE
#define VEXIL_PREFETCH_DISTANCE 0
#endif
#ifndef VEXIL_PREFETCH_STEP
#define VEXIL_PREFETCH_STEP 32
#endif

/// Asks for as much memory as a batch takes, further on in the walk from `at`, unless that lies behind the
/// `left` bytes that the walk has to go.
template <bool ascending>
VEXIL_INLINE void prefetchAhead([[maybe_unused]] const Byte* at, [[maybe_unused]] Word batch,
                                [[maybe_unused]] Word left) {
#if VEXIL_PREFETCH_DISTANCE
    if (left < batch + VEXIL_PREFETCH_DISTANCE)
        return;
    VEXIL_UNROLL
    for (Word k = 0; k < batch; k += VEXIL_PREFETCH_STEP)
        asm volatile("prefetch.L2 [%0];"
                     :
                     : "l"(at + k + (ascending ? VEXIL_PREFETCH_DISTANCE : -VEXIL_PREFETCH_DISTANCE)));
#endif
}

/// Whether somebody can tell in which order a thread reaches different words: faulty memory can.
constexpr bool accessOrderShows = true;

VEXIL_INLINE Word blockIndex() { return static_cast<Word>(__nvvm_read_ptx_sreg_ctaid_x()); }
VEXIL_INLINE Word blockSize() { return static_cast<Word>(__nvvm_read_ptx_sreg_ntid_x()); }
VEXIL_INLINE Word threadIndex() { return static_cast<Word>(__nvvm_read_ptx_sreg_tid_x()); }

VEXIL_INLINE Word loadWord(const void* from) { return *static_cast<const AliasedWord*>(from); }
VEXIL_INLINE void storeWord(void* to, Word value) { *static_cast<AliasedWord*>(to) = value; }
VEXIL_INLINE void storePair(void* to, Pair value) { *static_cast<Pair*>(to) = value; }
VEXIL_INLINE Vector loadVector(const void* from) { return *static_cast<const Vector*>(from); }
VEXIL_INLINE void storeVector(void* to, Vector value) { *static_cast<Vector*>(to) = value; }

// Volatile accesses keep the order of the program, in the PTX and in the machine code that is made of it.
VEXIL_INLINE Word loadWordInOrder(const void* from) {
    return *static_cast<const volatile AliasedWord*>(from);
}
VEXIL_INLINE void storeWordInOrder(void* to, Word value) { *static_cast<volatile AliasedWord*>(to) = value; }

VEXIL_KERNELS_END
