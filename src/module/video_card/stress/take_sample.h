#pragma once

#include "module/video_card/stress/rendering/stress_sample.h"

namespace vexil::module::video_card {

class D3D11Renderer;
class Device;

/// What renderer and card say now; either may be null. A temperature of 0 or below is that of a sensor which
/// does not work, and a frame rate counts only if it is a number and not negative.
[[nodiscard]] StressSample takeSample(D3D11Renderer* renderer, Device* device);

} // namespace vexil::module::video_card
