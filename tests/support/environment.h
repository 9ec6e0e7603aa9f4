#pragma once

#include <cstdlib>
#include <string>

namespace vexil::tests {

/// Seen by every library of the process, also by those that are loaded already.
inline void setEnvironment(const std::string& name, const std::string& value) {
#ifdef _WIN32
    _putenv_s(name.c_str(), value.c_str());
#else
    setenv(name.c_str(), value.c_str(), 1);
#endif
}

} // namespace vexil::tests
