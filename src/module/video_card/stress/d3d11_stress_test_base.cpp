#include "module/video_card/stress/d3d11_stress_test_base.h"

#include <utility>

namespace vexil::module::video_card {

D3D11StressTestBase::D3D11StressTestBase(core::TestDescriptor descriptor) : Test(std::move(descriptor)) {
    addParameter(&duration_);
}

std::uint32_t D3D11StressTestBase::expectedDurationMinutes() const {
    return static_cast<std::uint32_t>(durationSeconds() / 60);
}

std::uint64_t D3D11StressTestBase::durationSeconds() const {
    return static_cast<std::uint64_t>(duration_.minutes() * 60.0F);
}

} // namespace vexil::module::video_card
