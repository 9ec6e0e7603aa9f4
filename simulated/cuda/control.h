#pragma once

#include "simulated/scenario/cuda_section.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace vexil::simulated::cuda {

/// What a test can see of a simulated card.
struct CardState {
    std::vector<std::uint64_t> allocations; ///< sizes, in the order of their places; those below 1 MiB last
    std::vector<std::uint64_t> requests; ///< sizes asked for since the configuration, with or without success
    std::uint64_t launches = 0;          ///< likewise
    int retained = 0;                    ///< holds on the primary context
};

/// A launch as it reached the driver.
struct CardLaunch {
    const char* kernel; ///< null for a function that is not loaded
    unsigned grid[3], block[3];
    unsigned sharedBytes;
    bool onDefaultStream;
    void** arguments; ///< each points to one argument
};

/// The way for a test to describe the machine itself instead of through a scenario, and to watch the driver
/// being called. The library hands it out under the name of `controlSymbol`.
class Control {
public:
    virtual ~Control() = default;
    /// Replaces all cards by those of the section. No other thread may be in a call.
    virtual void configure(const CudaSection& section) = 0;
    /// Called at the start of every entry point with its name, before anything happens; empty ends that.
    virtual void observe(std::function<void(const char* call)> observer) = 0;
    /// Called with every launch before it does anything; empty ends that.
    virtual void observeLaunches(std::function<void(const CardLaunch& launch)> observer) = 0;
    [[nodiscard]] virtual CardState state(int ordinal) const = 0;
};

inline constexpr const char* controlSymbol = "vexil_simulated_cuda_control";
using ControlFunction = Control* (*)();

} // namespace vexil::simulated::cuda
