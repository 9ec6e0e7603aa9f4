#pragma once

namespace vexil::core {

/// A question to the user. The host decides inside `TestReporter::interact` when to call `ask`.
/// The destructor stands between the two operations: the order of the slots is the contract.
class InputInteraction {
public:
    /// Asks the user unless the interaction is suppressed, and returns when there is an answer.
    virtual void ask() = 0;
    virtual ~InputInteraction() = default;
    /// Shows the question, whatever `ask` would decide.
    virtual void present() = 0;
};

} // namespace vexil::core
