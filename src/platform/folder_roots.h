#pragma once

#include <optional>
#include <string>

// Where the map of the suite's folders begins. Nothing where the system does not tell; paths have no
// separator at their end.
namespace vexil::platform {

/// The folder for the data of programs: the machine's on Windows, the user's own (XDG_DATA_HOME) on Linux,
/// where the machine's is not for users to write to.
[[nodiscard]] std::optional<std::wstring> programDataFolder();

/// The name of the account that the process runs as.
[[nodiscard]] std::optional<std::wstring> accountName();

[[nodiscard]] std::optional<std::wstring> workingDirectory();

} // namespace vexil::platform
