#pragma once

#include "core/test.h"

#include <cstdint>
#include <memory>

namespace vexil::module::video_card {

/// A new test of the class that the id stands for, or null for an id that no class of this build answers to.
[[nodiscard]] std::unique_ptr<core::Test> makeTest(std::int32_t id);

} // namespace vexil::module::video_card
