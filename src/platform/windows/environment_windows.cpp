#include "platform/environment.h"

#include "platform/wide_text.h"

#include <cstdlib>

namespace vexil::platform {

std::optional<std::string> environmentVariable(const std::string& name) {
    // The narrow value has lost what the system's code page cannot express.
    const wchar_t* value = _wgetenv(toWide(name).c_str());
    return value == nullptr ? std::nullopt : std::optional<std::string>(toUtf8(value));
}

} // namespace vexil::platform
