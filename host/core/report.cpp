#include "host/core/report.h"

#include <fmt/chrono.h>

namespace vexil::host {

ModuleIdentity identify(const core::Module& module) {
    const auto version = module.moduleVersion();
    auto text = fmt::format("{}.{}.{}", version.major, version.minor, version.patch);
    if (!version.label.empty()) {
        text += '-' + version.label;
    }
    return {module.moduleId(), module.shortName(), module.nameKey(), text};
}

std::string toRfc3339(std::chrono::system_clock::time_point time) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(time - seconds).count();
    return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:03}Z",
                       fmt::gmtime(std::chrono::system_clock::to_time_t(seconds)), milliseconds);
}

std::string describeTime(std::chrono::system_clock::time_point time) {
    return fmt::format("{:%Y-%m-%d %H:%M:%S} UTC", fmt::gmtime(std::chrono::system_clock::to_time_t(
                                                       std::chrono::floor<std::chrono::seconds>(time))));
}

} // namespace vexil::host
