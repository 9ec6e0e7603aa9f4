// What the kernels need of CUDA C++, for the two compilers that read them: clang, which makes the PTX that
// runs on a card, and the host's compiler, which makes the same kernels for the simulated card. No CUDA
// toolkit takes part, so the few words of the language that its headers would define are defined here.
//
// The host compiles the kernels twice: "plain" over memory as it is, at full speed, and "watched" (with
// VEXIL_WATCHED_MEMORY defined), where each access to a 32-bit word goes through the simulated card's faults.
#pragma once

namespace vexil::module::video_card::kernels {

using Byte = unsigned char;
using Word = unsigned int;
using LongWord = unsigned long long;

/// Four words, the step of a batch: two 64-bit loads or stores on the card.
typedef Word Vector __attribute__((vector_size(16), may_alias));
typedef Word Pair __attribute__((vector_size(8), may_alias));
typedef Word AliasedWord __attribute__((may_alias));

constexpr Word wordBytes = 4;
constexpr Word longWordBytes = 8;
constexpr Word vectorBytes = 16;
constexpr Word wordsPerVector = vectorBytes / wordBytes;
static_assert(sizeof(Word) == wordBytes && sizeof(LongWord) == longWordBytes &&
              sizeof(Vector) == vectorBytes);

} // namespace vexil::module::video_card::kernels

#if defined(__CUDA__)
#include "kernel_device.h"
#else
#include "kernel_host.h"
#endif
