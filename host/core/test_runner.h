#pragma once

#include "core/diagnostic_dispatcher.h"
#include "core/system_event_state.h"
#include "host/core/card.h"
#include "host/core/run_reporter.h"
#include "host/core/test_run.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace vexil::core {
class Test;
}

namespace vexil::host {

/// Takes tests through the dispatcher, one at a time: asks whether the run may start, announces it, hands it
/// over, waits, and reports its end. All on the calling thread, as the dispatcher wants it.
class TestRunner {
public:
    struct Settings {
        const volatile std::uint8_t* cancelRequested = nullptr; ///< must outlive every run
        std::shared_ptr<core::SystemEventState> systemEvents;
        RunReporter::Interact interact;
    };
    /// Called on the calling thread on every change, and a few times a second without one.
    using Watch = std::function<void(const RunReporter& reporter, std::chrono::duration<double> elapsed)>;

    TestRunner(std::shared_ptr<core::DiagnosticDispatcher> dispatcher, Settings settings);

    /// Returns when the test has ended. `test` has its parameters set.
    [[nodiscard]] TestRun run(const Card& card, core::Test& test, const Watch& watch = {});

private:
    std::shared_ptr<core::DiagnosticDispatcher> dispatcher_;
    Settings settings_;
};

/// Whether the dispatcher of a module has a worker on a machine with so many hardware threads (0: unknown).
/// On one processor its pool is empty, and a run would be waited for in vain.
[[nodiscard]] constexpr bool dispatcherHasWorker(unsigned hardwareThreads) { return hardwareThreads != 1; }

} // namespace vexil::host
