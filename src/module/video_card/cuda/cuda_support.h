#pragma once

#include "core/test_run_arguments.h"

#include <string>

namespace vexil::core {
class Device;
}

// What all CUDA tests ask and say.
namespace vexil::module::video_card {

/// Whether the host has seen an event that can spoil the outcome. A run without event state has none.
[[nodiscard]] bool hasCompromisingEvent(const core::TestRunArguments& arguments);

/// Whether it is a video card that CUDA lists.
[[nodiscard]] bool hasCudaRecord(const core::Device* device);

/// The end of a run with that message; the progress comes first.
void reportAndFinish(core::TestReporter& reporter, const std::string& key);

} // namespace vexil::module::video_card
