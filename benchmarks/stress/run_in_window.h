#pragma once

#include "module/video_card/direct3d/dx11_context.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace vexil::benchmarks {

struct WindowFrames {
    std::uint64_t frames =
        0;              ///< behind the first second, in which the card's queue fills and no load is lowered
    double seconds = 0; ///< that they took

    [[nodiscard]] double rate() const { return static_cast<double>(frames) / seconds; }
};

struct WindowSetup {
    std::uint64_t seconds = 10;
    std::string size = "400x400"; ///< a value of WINDOW_SIZE
    double load = 1;              ///< as LOAD sets it in a burn-in
    /// Of the pictures in the window, in pixels each way; nothing for the window's own size.
    std::optional<std::uint32_t> extent = std::nullopt;
    std::function<void(double)> eachTenSeconds = {}; ///< gets the seconds since the start
};

/// Runs the stress test's window as a test does: its dialog with both timers, overlay, samples and the
/// comparison at the end. On the GUI thread. Throws `std::exception` if the window cannot be built or the
/// pictures differed.
[[nodiscard]] WindowFrames runInWindow(const module::video_card::Dx11Context& dx11, const WindowSetup& setup);

} // namespace vexil::benchmarks
