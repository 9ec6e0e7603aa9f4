#pragma once

#include "core/test_run_arguments.h"
#include "module/video_card/device.h"
#include "module/video_card/stress/stress_services.h"
#include "module/video_card/stress/stress_statistics.h"

#include <cstdint>

namespace vexil::module::video_card {

/// What one run of a stress test works with. All of it outlives the run.
struct StressRun {
    const StressServices& services;
    const core::TestRunArguments& arguments;
    Device& device;
    const Device::Direct3DLock& lock;
    StressStatistics& statistics;
    std::uint64_t durationSeconds;
};

} // namespace vexil::module::video_card
