#include "host/core/simulated_machine.h"

#include "host/core/exit_code.h"
#include "host/core/utf8_path.h"
#include "host/platform/libraries.h"
#include "host/platform/process.h"
#include "simulated/scenario/scenario.h"

#include <algorithm>
#include <system_error>

namespace vexil::host {

namespace {

/// How the stand-ins learn of their machine.
constexpr const char* scenarioVariable = "VEXIL_SCENARIO";
constexpr const char* scenarioFolder = "scenarios";
constexpr const char* standInFolder = "simulated";
constexpr const char* scenarioExtension = ".json";

std::vector<std::filesystem::path> sortedFiles(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

std::string knownScenarios(const std::filesystem::path& folder) {
    std::string names;
    for (const auto& file : sortedFiles(folder)) {
        if (file.extension() == scenarioExtension) {
            names += (names.empty() ? "" : ", ") + toUtf8(file.stem());
        }
    }
    return names.empty() ? "none" : names;
}

std::filesystem::path findScenario(const std::filesystem::path& folder, const std::string& scenario) {
    const auto builtIn = folder / pathFromUtf8(scenario + scenarioExtension);
    if (scenario.find_first_of("/\\.") == std::string::npos && fileExists(builtIn)) {
        return builtIn;
    }
    const auto file = std::filesystem::absolute(pathFromUtf8(scenario));
    if (!fileExists(file)) {
        throw UsageError("unknown scenario '" + scenario + "': built in is " + knownScenarios(folder) +
                         ", or name the path of a scenario file");
    }
    return file;
}

} // namespace

SimulatedMachine::SimulatedMachine(const std::filesystem::path& programFolder, const std::string& scenario)
    : scenarioFile_(findScenario(programFolder / scenarioFolder, scenario)) {
    try {
        static_cast<void>(simulated::loadScenario(toUtf8(scenarioFile_)));
    } catch (const simulated::ScenarioError& error) {
        throw UsageError(error.what());
    }
    platform::setEnvironmentVariable(scenarioVariable, toUtf8(scenarioFile_));
    for (const auto& file : sortedFiles(programFolder / standInFolder)) {
        if (!platform::isLibraryFileName(toUtf8(file.filename()))) {
            continue;
        }
        std::string reason;
        if (platform::openForProcess(file, reason) == nullptr) {
            throw InternalError("the simulated library '" + toUtf8(file) + "' cannot be opened: " + reason);
        }
        standIns_.push_back(file);
    }
}

} // namespace vexil::host
