#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vexil::host {

/// The scenario that a simulated machine has when none is named.
inline constexpr const char* builtInScenario = "healthy";

/// Puts a machine that a scenario file describes in the place of the real one. To be made before the module
/// is loaded, and for the whole process: nothing can be undone.
///
/// The stand-in libraries are opened in the order of their file names. They carry the vendors' own names, so
/// the module's ordinary loading finds them instead of those of the system.
class SimulatedMachine {
public:
    /// `scenario` is the name of a scenario in the folder `scenarios` beside the program, or the path of a
    /// file. Throws `UsageError` naming file, field and reason for a scenario that cannot be used, and
    /// `InternalError` for a stand-in library that cannot be opened.
    SimulatedMachine(const std::filesystem::path& programFolder, const std::string& scenario);

    [[nodiscard]] const std::filesystem::path& scenarioFile() const { return scenarioFile_; }
    [[nodiscard]] const std::vector<std::filesystem::path>& standIns() const { return standIns_; }

private:
    std::filesystem::path scenarioFile_;
    std::vector<std::filesystem::path> standIns_;
};

} // namespace vexil::host
