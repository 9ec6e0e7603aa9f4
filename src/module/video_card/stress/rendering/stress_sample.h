#pragma once

#include <cstdint>

namespace vexil::module::video_card {

/// One measurement of a stress run. A value counts only where its flag is set.
struct StressSample {
    float fps = 0;
    bool fpsValid = false;
    std::int64_t temperature = 0; ///< whole degrees Celsius
    bool temperatureValid = false;
    std::uint64_t usage = 0; ///< percent
    bool usageValid = false;
};

} // namespace vexil::module::video_card
