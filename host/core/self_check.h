#pragma once

#include "host/core/facilities.h"
#include "simulated/scenario/required_outcome.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vexil::host {

/// A machine that is broken in a known way, or healthy, and what each test must say of it.
struct SelfCheckMachine {
    std::string scenario; ///< the name of a built-in scenario
    std::string description;
    std::vector<simulated::RequiredOutcome> required;
};

/// The built-in scenarios that require outcomes, in the order of their names. Throws `UsageError` for a
/// scenario that cannot be read.
[[nodiscard]] std::vector<SelfCheckMachine> selfCheckMachines(const std::filesystem::path& programFolder);

/// Takes out of the required outcomes those of tests that lack something here, and returns how many.
std::size_t leaveOutLacking(SelfCheckMachine& machine, const Facilities& facilities);

/// What one test said of one card, beside what it had to say.
struct CheckedOutcome {
    std::string card; ///< its id, empty where the test ran on no card
    std::int32_t test = 0;
    std::string name; ///< message key, empty where the test ran on no card
    simulated::RequiredOutcome required;
    std::optional<std::uint8_t> result; ///< nothing where the test ran on no card
    std::vector<std::string> messages;

    [[nodiscard]] bool asRequired() const;
};

/// Runs the required tests of the machine in a program of its own, since a process can play one machine only.
/// Throws `InternalError` where that program cannot be started, crashes, or leaves no report.
[[nodiscard]] std::vector<CheckedOutcome> checkMachine(const std::filesystem::path& program,
                                                       const std::string& module,
                                                       const SelfCheckMachine& machine);

} // namespace vexil::host
