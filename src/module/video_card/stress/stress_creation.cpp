#include "module/video_card/stress/stress_creation.h"

#include "module/video_card/stress/d3d11_stress_test.h"

namespace vexil::module::video_card {

bool hasStressTests() { return true; }

template <>
std::unique_ptr<core::Test> makeStressTest<false>() {
    return std::make_unique<D3D11StressTest>(false);
}

template <>
std::unique_ptr<core::Test> makeStressTest<true>() {
    return std::make_unique<D3D11StressTest>(true);
}

} // namespace vexil::module::video_card
