#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vexil::host::platform {

/// Runs a program to its end. What it writes, errors included, goes to the file `output`, which is made anew.
/// The arguments are UTF-8 and reach the program as they stand. Returns its exit code; nothing, with the
/// system's reason in `reason`, for a program that cannot be started or that ended without a code (a crash).
[[nodiscard]] std::optional<int> runChild(const std::filesystem::path& program,
                                          const std::vector<std::string>& arguments,
                                          const std::filesystem::path& output, std::string& reason);

} // namespace vexil::host::platform
