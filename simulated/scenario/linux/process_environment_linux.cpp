#include "simulated/scenario/process_environment.h"

#include <cstdlib>

namespace vexil::simulated {

std::optional<std::string> environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

} // namespace vexil::simulated
