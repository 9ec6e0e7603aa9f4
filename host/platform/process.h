#pragma once

#include "platform/environment.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

// The process and the machine around it. Texts are UTF-8.
namespace vexil::host::platform {

/// What stands behind the program's name on the command line.
[[nodiscard]] std::vector<std::string> commandLineArguments(int count, const char* const* values);

/// The running program, and its folder.
[[nodiscard]] std::filesystem::path programFile();
[[nodiscard]] std::filesystem::path programFolder();

using vexil::platform::environmentVariable;
/// Seen by every library of the process that is loaded afterwards.
void setEnvironmentVariable(const std::string& name, const std::string& value);

/// The user's language as "de_DE" or "de"; empty if nothing tells.
[[nodiscard]] std::string userLanguage();

/// Name and version for a report, as "Debian GNU/Linux 12 (bookworm)".
[[nodiscard]] std::string operatingSystem();

/// Sets the byte on the user's first interrupt (Ctrl-C, or a request to terminate). The second ends the
/// process with 130 at once. The byte must live as long as the process.
void cancelOnInterrupt(volatile std::uint8_t& cancel);

} // namespace vexil::host::platform
