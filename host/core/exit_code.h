#pragma once

#include <stdexcept>
#include <string>

namespace vexil::host {

/// What the program ends with. Scripts rely on the numbers.
enum class ExitCode : int {
    AllPassed = 0,
    CardFailed = 1,    ///< some run read a wrong value back from a card
    Usage = 2,         ///< the request cannot be met as it was made
    NoVerdict = 3,     ///< no card failed, but some run ended without a verdict
    CleanupFailed = 4, ///< memory of a card could not be released
    InternalError = 70,
};

/// Ends the program with one line for the user, which names the thing that is wrong.
class HostError : public std::runtime_error {
public:
    HostError(ExitCode code, const std::string& line) : std::runtime_error(line), code_(code) {}

    [[nodiscard]] ExitCode code() const { return code_; }

private:
    ExitCode code_;
};

class UsageError final : public HostError {
public:
    explicit UsageError(const std::string& line) : HostError(ExitCode::Usage, line) {}
};

class InternalError final : public HostError {
public:
    explicit InternalError(const std::string& line) : HostError(ExitCode::InternalError, line) {}
};

} // namespace vexil::host
