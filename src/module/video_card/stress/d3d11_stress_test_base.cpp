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
    const float seconds = duration_.minutes() * 60.0F;
    // What the processor gives for a number that does not fit.
    constexpr auto noInteger = std::uint64_t{1} << 63;
    return seconds > -1.0F && seconds < 18446744073709551616.0F ? static_cast<std::uint64_t>(seconds)
                                                                : noInteger;
}

} // namespace vexil::module::video_card
