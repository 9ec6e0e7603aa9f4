#pragma once

#include "core/input_interaction.h"
#include "core/test_message.h"

#include <cstdint>
#include <memory>

namespace vexil::core {

/// The host's sink for what a running test has to say. Called on the thread that runs the test.
class TestReporter {
public:
    virtual ~TestReporter() = default;
    /// Progress of the test, 0 to 100.
    virtual void setProgress(std::uint8_t percent) = 0;
    /// Adds a message to the test's record. The caller keeps the ownership of `message`.
    virtual void report(const TestMessage& message) = 0;
    /// Hands a question to the host and returns when it has been answered. The host may keep the interaction.
    virtual void interact(std::unique_ptr<InputInteraction>& interaction) = 0;
};

} // namespace vexil::core
