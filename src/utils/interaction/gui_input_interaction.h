#pragma once

#include "core/input_interaction.h"

#include <cstdint>

namespace vexil::utils {

/// A question that is answered on the GUI thread while the asking thread sleeps. `present` must not be called
/// on the GUI thread itself, which would wait for itself, and that thread must run an event loop.
class GuiInputInteraction : public core::InputInteraction {
public:
    GuiInputInteraction(bool suppressed, bool modal) : suppressed_(suppressed), modal_(modal) {}

    /// Does nothing if the question is suppressed.
    void ask() override;

    /// The answer; 0 until there is one.
    [[nodiscard]] std::uint32_t result() const { return result_; }

protected:
    bool suppressed_;
    bool modal_;
    std::uint32_t result_ = 0;
};

} // namespace vexil::utils
