#pragma once

#include <filesystem>
#include <string>

namespace vexil::host {

/// The machine whose cards are meant.
struct Machine {
    bool simulated = false;
    std::string scenario;        ///< name or path; empty on the real machine
    bool forLackOfCards = false; ///< simulated because the real machine has no display controller

    /// "real" or "simulated".
    [[nodiscard]] const char* name() const { return simulated ? "simulated" : "real"; }
};

/// What the user's choice means: "real", "simulated", "simulated:SCENARIO", or nothing. Nothing is the real
/// machine; a command that needs a card falls back on the built-in simulated one where the real one has no
/// display controller. Throws `UsageError` for any other text.
[[nodiscard]] Machine chooseMachine(const std::string& choice, bool needsCard, bool hasDisplayController);

} // namespace vexil::host
