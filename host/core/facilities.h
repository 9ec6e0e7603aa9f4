#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vexil::host {

/// What tests need beside a card, as far as the program and the machine have it.
struct Facilities {
    std::optional<std::string> missingDirect3d; ///< Direct3D's library that cannot be loaded
    bool display = true;                        ///< somebody sees what is drawn in a window
};

/// Whether the test of an id hands work to the GUI thread.
[[nodiscard]] bool needsGui(std::int32_t testId);
/// Whether that work is to be seen: the test draws in a window.
[[nodiscard]] bool needsDisplay(std::int32_t testId);

/// What the test of an id lacks, to be read behind "needs"; nothing if it can run.
[[nodiscard]] std::optional<std::string> lackOf(std::int32_t testId, const Facilities& facilities);

} // namespace vexil::host
