#pragma once

namespace vexil::module::video_card {

/// How the stress test's window ends. Hosts and the suite know these numbers as the codes of a dialog.
struct StressCode {
    static constexpr int NotShown = 0; ///< nobody ran the window
    static constexpr int TimeIsUp = 1; ///< or an event of the system
    static constexpr int Resized = 2;  ///< the swap chain cannot follow
    static constexpr int Running = 3;  ///< a stop from the host leaves it so
    static constexpr int Differed = 4; ///< a rendered frame was not the same twice
    static constexpr int Left = 5;     ///< by the user, or the window could not be built

    StressCode() = delete;
};

} // namespace vexil::module::video_card
