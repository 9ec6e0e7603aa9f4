#pragma once

#include <span>

// The kernels as the simulated card starts them: by name, with the arguments as a launch passes them.
namespace vexil::module::video_card::kernels {

struct HostKernel {
    const char* name;
    /// Runs the thread that `launchPosition` names. Each of `arguments` points to one argument.
    void (*run)(void** arguments);
    /// Whether the first three arguments are the chunk size, the base and the end of a walk over device
    /// memory.
    bool walksChunks;
    /// Which argument points to a chunk that every block reads as well, or -1.
    int referenceArgument;
};

inline namespace plain {
[[nodiscard]] std::span<const HostKernel> kernelTable();
}
inline namespace watched {
[[nodiscard]] std::span<const HostKernel> kernelTable();
}

} // namespace vexil::module::video_card::kernels
