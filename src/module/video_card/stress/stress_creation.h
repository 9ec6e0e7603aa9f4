#pragma once

#include "core/test.h"

#include <memory>

namespace vexil::module::video_card {

/// Whether this build has the stress tests: they need a library for windows.
[[nodiscard]] bool hasStressTests();

/// A new stress test, or null where the build has none. Defined for both values.
template <bool wireframe>
[[nodiscard]] std::unique_ptr<core::Test> makeStressTest();

template <>
std::unique_ptr<core::Test> makeStressTest<false>();
template <>
std::unique_ptr<core::Test> makeStressTest<true>();

} // namespace vexil::module::video_card
