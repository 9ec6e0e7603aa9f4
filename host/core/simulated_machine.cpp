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
constexpr const char* standInsWithoutFolder = "simulated_without"; // a folder in it for each function
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

/// Where one is missing the machine would have the function all the same, and nobody would know.
void requireStandInsWithout(const std::filesystem::path& folder, const std::vector<std::string>& functions) {
    for (const auto& function : functions) {
        if (sortedFiles(folder / pathFromUtf8(function)).empty()) {
            throw InternalError("the simulated library without " + function + " is missing in '" +
                                toUtf8(folder / pathFromUtf8(function)) + "'");
        }
    }
}

/// The library in the place of `standIn` that lacks one of the functions, or `standIn`.
std::filesystem::path withoutMissing(const std::filesystem::path& standIn,
                                     const std::filesystem::path& folder,
                                     const std::vector<std::string>& missingFunctions) {
    for (const auto& function : missingFunctions) {
        const auto lacking = folder / pathFromUtf8(function) / standIn.filename();
        if (fileExists(lacking)) {
            return lacking;
        }
    }
    return standIn;
}

} // namespace

SimulatedMachine::SimulatedMachine(const std::filesystem::path& programFolder, const std::string& scenario)
    : scenarioFile_(findScenario(programFolder / scenarioFolder, scenario)) {
    std::vector<std::string> missingFunctions;
    try {
        missingFunctions = missingExports(simulated::loadScenario(toUtf8(scenarioFile_)));
    } catch (const simulated::ScenarioError& error) {
        throw UsageError(error.what());
    }
    const auto lackingFolder = programFolder / standInsWithoutFolder;
    requireStandInsWithout(lackingFolder, missingFunctions);
    platform::setEnvironmentVariable(scenarioVariable, toUtf8(scenarioFile_));
    for (const auto& file : sortedFiles(programFolder / standInFolder)) {
        if (!platform::isLibraryFileName(toUtf8(file.filename()))) {
            continue;
        }
        const auto standIn = withoutMissing(file, lackingFolder, missingFunctions);
        std::string reason;
        if (platform::openForProcess(standIn, reason) == nullptr) {
            throw InternalError("the simulated library '" + toUtf8(standIn) +
                                "' cannot be opened: " + reason);
        }
        standIns_.push_back(standIn);
    }
}

} // namespace vexil::host
