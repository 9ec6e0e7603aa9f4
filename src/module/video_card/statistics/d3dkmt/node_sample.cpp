#include "module/video_card/statistics/d3dkmt/node_sample.h"

#include <algorithm>

namespace vexil::module::video_card {

namespace {

constexpr float hundredNanosecondsOfSecond = 10'000'000.0F;

/// A driver that counts nonsense must not overflow a signed number.
std::int64_t difference(std::int64_t later, std::int64_t earlier) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(later) - static_cast<std::uint64_t>(earlier));
}

/// As unsigned: a counter that runs backwards counts as a very long time.
float toFloat(std::int64_t delta) { return static_cast<float>(static_cast<std::uint64_t>(delta)); }

} // namespace

void D3DKMTNodeSample::takeCounter(std::int64_t reading) {
    counterDelta = difference(reading, counter);
    counter = reading;
}

void D3DKMTNodeSample::takeRunningTime(std::int64_t reading) {
    runningTimeDelta = difference(reading, runningTime);
    runningTime = reading;
}

float nodeLoad(const D3DKMTNodeSample& node, std::int64_t frequency) {
    if (frequency == 0) {
        return 0.0F;
    }
    const float window =
        hundredNanosecondsOfSecond / static_cast<float>(frequency) * toFloat(node.counterDelta);
    const float ratio = window == 0.0F ? 0.0F : toFloat(node.runningTimeDelta) / window;
    return std::min(1.0F, ratio) * 100.0F;
}

} // namespace vexil::module::video_card
