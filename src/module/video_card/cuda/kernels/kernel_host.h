// The host's half of kernel_support.h: the kernels as ordinary functions, run by the simulated card block
// after block. Both builds of them, plain and watched, go into one program, so each has a namespace of its
// own.
#pragma once

#ifdef VEXIL_WATCHED_MEMORY
#define VEXIL_KERNELS_BEGIN                                                                                  \
    namespace vexil::module::video_card::kernels {                                                           \
    inline namespace watched {
#else
#define VEXIL_KERNELS_BEGIN                                                                                  \
    namespace vexil::module::video_card::kernels {                                                           \
    inline namespace plain {
#endif
#define VEXIL_KERNELS_END                                                                                    \
    }                                                                                                        \
    }
#define VEXIL_KERNEL void
#define VEXIL_MEMORY_KERNEL void
#define VEXIL_INLINE static inline
#define VEXIL_PRAGMA(text) _Pragma(#text)
#define VEXIL_UNROLL _Pragma("GCC unroll 64")
#define VEXIL_UNROLL_BY(count) VEXIL_PRAGMA(GCC unroll count)

namespace vexil::module::video_card::kernels {

/// Where the running thread stands in its launch; set by the simulated card before each call of a kernel.
struct LaunchPosition {
    Word blockIndex, blockSize, threadIndex;
};
extern thread_local LaunchPosition launchPosition;

/// One access to an aligned 32-bit word through the faults of the simulated card.
Word watchedLoad(const AliasedWord* word);
void watchedStore(AliasedWord* word, Word value);

} // namespace vexil::module::video_card::kernels

VEXIL_KERNELS_BEGIN

/// Whether somebody can tell in which order a thread reaches different words: faulty memory can.
#ifdef VEXIL_WATCHED_MEMORY
constexpr bool accessOrderShows = true;
#else
constexpr bool accessOrderShows = false;
#endif

// A processor hides latency by itself: a batch is as long as the compiler needs to use its vector registers.
constexpr Word vectorsInFlight = 8;
constexpr Word wordsInFlight = 16;

VEXIL_INLINE Word blockIndex() { return launchPosition.blockIndex; }
VEXIL_INLINE Word blockSize() { return launchPosition.blockSize; }
VEXIL_INLINE Word threadIndex() { return launchPosition.threadIndex; }

#ifdef VEXIL_WATCHED_MEMORY
VEXIL_INLINE Word loadWord(const void* from) { return watchedLoad(static_cast<const AliasedWord*>(from)); }
VEXIL_INLINE void storeWord(void* to, Word value) { watchedStore(static_cast<AliasedWord*>(to), value); }
VEXIL_INLINE void storePair(void* to, Pair value) {
    AliasedWord* words = static_cast<AliasedWord*>(to);
    watchedStore(words, value[0]);
    watchedStore(words + 1, value[1]);
}
VEXIL_INLINE Vector loadVector(const void* from) {
    const AliasedWord* words = static_cast<const AliasedWord*>(from);
    Vector vector{};
    for (Word lane = 0; lane < wordsPerVector; ++lane)
        vector[lane] = watchedLoad(words + lane);
    return vector;
}
VEXIL_INLINE void storeVector(void* to, Vector value) {
    AliasedWord* words = static_cast<AliasedWord*>(to);
    for (Word lane = 0; lane < wordsPerVector; ++lane)
        watchedStore(words + lane, value[lane]);
}
#else
VEXIL_INLINE Word loadWord(const void* from) { return *static_cast<const AliasedWord*>(from); }
VEXIL_INLINE void storeWord(void* to, Word value) { *static_cast<AliasedWord*>(to) = value; }
VEXIL_INLINE void storePair(void* to, Pair value) { *static_cast<Pair*>(to) = value; }
VEXIL_INLINE Vector loadVector(const void* from) { return *static_cast<const Vector*>(from); }
VEXIL_INLINE void storeVector(void* to, Vector value) { *static_cast<Vector*>(to) = value; }
#endif

// Calls of the watched build keep their order; over plain memory nobody can see it, so the compiler may
// vectorise.
VEXIL_INLINE Word loadWordInOrder(const void* from) { return loadWord(from); }
VEXIL_INLINE void storeWordInOrder(void* to, Word value) { storeWord(to, value); }

VEXIL_KERNELS_END
