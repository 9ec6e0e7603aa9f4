#include "module/video_card/stress/take_sample.h"

#include "module/video_card/device.h"
#include "module/video_card/stress/rendering/d3d11_renderer.h"

#include <cmath>

namespace vexil::module::video_card {

StressSample takeSample(D3D11Renderer* renderer, Device* device) {
    StressSample sample{};
    if (renderer != nullptr) {
        sample.fps = renderer->framesPerSecond();
        sample.fpsValid = std::isfinite(sample.fps) && sample.fps >= 0;
    }
    if (device != nullptr) {
        sample.temperatureValid = device->getTemperature(sample.temperature) && sample.temperature > 0;
        sample.usageValid = device->getUsage(sample.usage);
    }
    return sample;
}

} // namespace vexil::module::video_card
