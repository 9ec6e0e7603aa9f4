#include "module/video_card/stress/load_controller.h"

#include "core/sal.h"

#include <algorithm>

namespace vexil::module::video_card {

bool LoadController::tick(SystemTimer& timer) {
    nowTick = timer.now();
    ++frames;
    if (timer.secondsBetween(startTick, nowTick) < loadFraction) {
        return false;
    }
    timer.sleepMilliseconds(static_cast<std::uint32_t>((period - loadFraction) * 1000.0));
    startTick = nowTick = timer.now();
    loadFraction = std::clamp(loadFraction, 0.0, 1.0);
    return true;
}

} // namespace vexil::module::video_card
