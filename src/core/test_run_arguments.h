#pragma once

#include "core/system_event_state.h"
#include "core/test_reporter.h"

#include <cstdint>
#include <memory>

namespace vexil::core {

class Device;

/// What the host passes to `Test::execute`.
struct TestRunArguments {
    std::weak_ptr<Device> device; ///< locked once, at the start of the run
    const volatile std::uint8_t* cancelRequested =
        nullptr; ///< non-zero asks the test to stop; read without a lock
    TestReporter* reporter = nullptr;
    std::shared_ptr<SystemEventState> systemEvents; ///< may be empty
};

} // namespace vexil::core
