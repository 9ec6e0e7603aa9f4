#include "simulated/scenario/process_environment.h"

#include <cstdlib>
#include <filesystem>

namespace vexil::simulated {

std::optional<std::string> environmentVariable(const char* name) {
    // The narrow value has lost what the system's code page cannot express.
    const wchar_t* value = _wgetenv(std::filesystem::path(name).c_str());
    if (value == nullptr) {
        return std::nullopt;
    }
    const auto text = std::filesystem::path(value).u8string();
    return std::string(text.begin(), text.end());
}

} // namespace vexil::simulated
