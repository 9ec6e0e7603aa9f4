#pragma once

#include "plain_walk.h"

#include <span>
#include <vector>

namespace vexil::tests::plain_walk {

/// A kernel with fixed arguments behind the first three, and its plain walk.
struct Case {
    const char* kernel;
    /// Fills in the arguments from the fourth on; `flag` and `reference` are where they are.
    std::vector<void*> (*arguments)(std::uint8_t** flag, std::uint8_t** reference);
    void (*walk)(const Chunk& chunk, const Access& access, const Word* reference);
    /// What the memory should hold for the walk to find nothing wrong.
    void (*prepare)(const Chunk& chunk, const Access& access, const Word* reference);
};

/// Every kernel that works on memory, with the arguments of the tests and some more.
[[nodiscard]] const std::vector<Case>& allCases();

/// The addresses of the arguments, as a launch takes them.
template <typename... Arguments>
std::vector<void*> list(Arguments*... arguments) {
    return {static_cast<void*>(arguments)...};
}

} // namespace vexil::tests::plain_walk
