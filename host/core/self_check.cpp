#include "host/core/self_check.h"

#include "host/core/exit_code.h"
#include "host/core/utf8_path.h"
#include "host/platform/child_process.h"
#include "simulated/scenario/scenario.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <set>

namespace vexil::host {

namespace {

using simulated::RequiredOutcome;

/// A folder among the temporary files that goes with everything in it.
class WorkFolder {
public:
    WorkFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() / fmt::format("vxe-host-{:08x}", random());
        } while (!std::filesystem::create_directory(path_));
    }
    ~WorkFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    [[nodiscard]] std::filesystem::path file(const char* name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

std::vector<std::string> runArguments(const SelfCheckMachine& machine, const std::string& module,
                                      const std::filesystem::path& report) {
    std::vector<std::string> arguments = {"--machine", "simulated:" + machine.scenario, "--language", "en"};
    if (!module.empty()) {
        arguments.insert(arguments.end(), {"--module", module});
    }
    std::string tests;
    std::set<std::string> settings;
    for (const auto& outcome : machine.required) {
        tests += (tests.empty() ? "" : ",") + std::to_string(outcome.test);
        settings.insert(outcome.settings.begin(), outcome.settings.end());
    }
    arguments.insert(arguments.end(), {"run", "--tests", tests, "--report", toUtf8(report)});
    for (const auto& setting : settings) {
        arguments.insert(arguments.end(), {"--set", setting});
    }
    return arguments;
}

std::string lastLine(const std::filesystem::path& file) {
    std::ifstream stream(file);
    std::string last;
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty()) {
            last = line;
        }
    }
    return last;
}

/// A required message that ends with '*' stands for every message that begins so.
bool matches(const std::string& message, const std::string& required) {
    return required.ends_with('*') ? message.starts_with(required.substr(0, required.size() - 1))
                                   : message == required;
}

std::vector<CheckedOutcome> compare(const RequiredOutcome& required, const nlohmann::json& runs) {
    std::vector<CheckedOutcome> outcomes;
    for (const auto& run : runs) {
        if (run.at("test") != required.test) {
            continue;
        }
        CheckedOutcome outcome{run.at("card"), required.test, run.at("name"), required, run.at("result"), {}};
        for (const auto& message : run.at("messages")) {
            outcome.messages.push_back(message.at("key"));
        }
        outcomes.push_back(std::move(outcome));
    }
    if (outcomes.empty()) {
        outcomes.push_back({{}, required.test, {}, required, std::nullopt, {}});
    }
    return outcomes;
}

} // namespace

std::vector<SelfCheckMachine> selfCheckMachines(const std::filesystem::path& programFolder) {
    std::vector<SelfCheckMachine> machines;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(programFolder / "scenarios", error)) {
        if (entry.path().extension() != ".json") {
            continue;
        }
        try {
            auto scenario = simulated::loadScenario(toUtf8(entry.path()));
            if (!scenario.required.empty()) {
                machines.push_back({toUtf8(entry.path().stem()), std::move(scenario.description),
                                    std::move(scenario.required)});
            }
        } catch (const simulated::ScenarioError& broken) {
            throw UsageError(broken.what());
        }
    }
    if (error) {
        throw UsageError("the scenarios beside the program cannot be listed: " + error.message());
    }
    std::ranges::sort(machines, {}, &SelfCheckMachine::scenario);
    return machines;
}

std::size_t leaveOutLacking(SelfCheckMachine& machine, const Facilities& facilities) {
    return std::erase_if(machine.required, [&](const RequiredOutcome& outcome) {
        return lackOf(outcome.test, facilities).has_value();
    });
}

bool CheckedOutcome::asRequired() const {
    return result == required.result && std::ranges::equal(messages, required.messages, matches);
}

std::vector<CheckedOutcome> checkMachine(const std::filesystem::path& program, const std::string& module,
                                         const SelfCheckMachine& machine) {
    const WorkFolder folder;
    const auto report = folder.file("report.json");
    const auto output = folder.file("output.txt");
    std::string reason;
    const auto code = platform::runChild(program, runArguments(machine, module, report), output, reason);
    if (!code) {
        throw InternalError(
            fmt::format("the check of the scenario '{}' came to no end: {}", machine.scenario, reason));
    }
    const auto document = nlohmann::json::parse(std::ifstream(report), nullptr, false);
    if (document.is_discarded() || !document.contains("runs")) {
        throw InternalError(fmt::format("the check of the scenario '{}' ended with {} and left no report: {}",
                                        machine.scenario, *code, lastLine(output)));
    }
    std::vector<CheckedOutcome> outcomes;
    for (const auto& required : machine.required) {
        std::ranges::move(compare(required, document["runs"]), std::back_inserter(outcomes));
    }
    return outcomes;
}

} // namespace vexil::host
