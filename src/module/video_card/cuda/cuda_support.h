#pragma once

#include "core/test_run_arguments.h"

namespace vexil::core {
class Device;
}

// Questions that all CUDA tests ask.
namespace vexil::module::video_card {

/// Whether the host has seen an event that can spoil the outcome. A run without event state has none.
[[nodiscard]] bool hasCompromisingEvent(const core::TestRunArguments& arguments);

/// Whether it is a video card that CUDA lists.
[[nodiscard]] bool hasCudaRecord(const core::Device* device);

} // namespace vexil::module::video_card
