#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vexil::host::tests {

struct ProgramEnd {
    int code = -1; ///< as the shell sees it
    std::string out;
    std::string err;
};

/// Runs vxe-host in a process of its own, with its output in files: no terminal.
[[nodiscard]] ProgramEnd runProgram(const std::vector<std::string>& arguments);

} // namespace vexil::host::tests
