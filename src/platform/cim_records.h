#pragma once

#include <optional>
#include <string>

// Where the CIM client of this platform keeps records, for what a status cannot tell a user.
namespace vexil::platform {

enum class RecordUse { Read, Write };

/// The place by its name: a file on Linux, the service's namespace on Windows.
[[nodiscard]] std::string recordPlace();

/// What keeps the records from being read, or new ones from being written: a reason for the user in one line,
/// or nothing. On Linux asking for `Write` makes the file, and both look through it for damage.
[[nodiscard]] std::optional<std::string> recordTrouble(RecordUse use);

} // namespace vexil::platform
