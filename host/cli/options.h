#pragma once

#include "host/core/run_plan.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vexil::host {

enum class Command { Cards, Tests, Run, Monitor, Log, SelfCheck };

/// What the command line asks for.
struct Options {
    Command command = Command::Cards;
    std::string machine;  ///< empty: chosen by the host
    std::string language; ///< empty: the user's
    std::string module;   ///< empty: the one beside the program
    bool json = false;
    bool failFast = false;
    bool log = false;      ///< log what `run` finds
    bool clearLog = false; ///< what `log` is to do; else it lists
    RunRequest request;
    std::vector<std::string> reports;
    double intervalSeconds = 1; ///< of `monitor`
    std::uint64_t count = 0;    ///< samples of `monitor`; 0: until it is interrupted
    std::string csv;            ///< file for the samples; empty: none
};

/// The options, or a text that the user asked for (help or version). Throws `UsageError` for what cannot be
/// understood. `arguments` come without the name of the program.
struct ParsedArguments {
    std::optional<Options> options;
    std::string text;
};
[[nodiscard]] ParsedArguments parseArguments(const std::vector<std::string>& arguments);

} // namespace vexil::host
