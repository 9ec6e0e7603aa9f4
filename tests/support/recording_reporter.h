#pragma once

#include "core/test_reporter.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vexil::tests {

/// Writes down what a test says, in its order: "progress 100", "report 0 SOME_KEY".
class RecordingReporter : public core::TestReporter {
public:
    std::vector<std::string> events;
    /// Called after each progress, with its value: where a host would find time to ask for a stop.
    std::function<void(std::uint8_t)> onProgress;

    void setProgress(std::uint8_t percent) override {
        events.push_back("progress " + std::to_string(percent));
        if (onProgress) {
            onProgress(percent);
        }
    }
    void report(const core::TestMessage& message) override {
        events.push_back("report " + std::to_string(message.kind) + " " + message.key);
    }
    void interact(std::unique_ptr<core::InputInteraction>&) override { events.emplace_back("interact"); }
};

} // namespace vexil::tests
