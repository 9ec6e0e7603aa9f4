#include "platform/environment.h"

#include <cstdlib>

namespace vexil::platform {

std::optional<std::string> environmentVariable(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

} // namespace vexil::platform
