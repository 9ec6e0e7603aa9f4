#include "module/video_card/stress/stress_creation.h"

// For a build without windows.
namespace vexil::module::video_card {

bool hasStressTests() { return false; }

template <>
std::unique_ptr<core::Test> makeStressTest<false>() {
    return nullptr;
}

template <>
std::unique_ptr<core::Test> makeStressTest<true>() {
    return nullptr;
}

} // namespace vexil::module::video_card
