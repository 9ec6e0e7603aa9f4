#pragma once

#include "core/device_record.h"
#include "core/module.h"
#include "host/core/live_values.h"
#include "host/core/machine.h"
#include "host/core/plan_execution.h"
#include "host/core/test_run.h"

#include <chrono>
#include <string>
#include <vector>

namespace vexil::host {

/// What identifies the module in a report.
struct ModuleIdentity {
    std::int32_t id = 0;
    std::string shortName;
    std::string nameKey;
    std::string version; ///< "5.2.0"
};

[[nodiscard]] ModuleIdentity identify(const core::Module& module);

/// Everything that a report tells, whatever its form.
struct Report {
    std::string hostVersion;
    std::string operatingSystem;
    ModuleIdentity module;
    Machine machine;
    std::chrono::system_clock::time_point startedAt;
    std::vector<core::DeviceRecord> cards;
    std::vector<LiveValues> live; ///< by card
    PlanOutcome outcome;
    ExitCode exitCode = ExitCode::AllPassed;
};

/// "2026-01-31T23:59:59.123Z": RFC 3339 in universal time.
[[nodiscard]] std::string toRfc3339(std::chrono::system_clock::time_point time);
/// "2026-01-31 23:59:59 UTC", for people.
[[nodiscard]] std::string describeTime(std::chrono::system_clock::time_point time);

} // namespace vexil::host
