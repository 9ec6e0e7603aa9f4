#pragma once

#include "module/video_card/stress/load_controller.h"
#include "module/video_card/stress/stress_run.h"

#include <cstdint>
#include <functional>

namespace vexil::module::video_card {

/// What happens in the window at each tick of its two timers, apart from any window.
class WindowRun {
public:
    /// The window, as the run sees it.
    struct Window {
        std::function<std::int64_t()> elapsedMilliseconds; ///< since the clock was started
        std::function<void()> restartClock;
        std::function<void(int)> done; ///< ends the window with a `StressCode`; the tick goes on
    };

    /// `scene` is ready to render. All but `loadController` outlives the run.
    WindowRun(const StressRun& run, const LoadController& loadController, WindowScene& scene, Window window);

    /// Lowers the load at each whole second, tells the progress and renders one frame.
    void onRenderTick();
    /// Looks for an event of the system, samples, and ends a period whose time is up.
    void onSampleTick();

private:
    [[nodiscard]] float elapsedSeconds() const;
    void sendTemperature();
    [[nodiscard]] bool picturesDiffer();

    StressRun run_;
    LoadController loadController_;
    WindowScene& scene_;
    Window window_;
    std::uint64_t lastWholeSecond_ = 0;
    std::int32_t lastPercent_ = 0;
};

} // namespace vexil::module::video_card
