#pragma once

#include "core/test_reporter.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vexil::tests {

/// A host that writes down what a test says and asks what the test wants to be asked. Worker and GUI thread
/// come here in strict turn.
class AskingReporter final : public core::TestReporter {
public:
    std::vector<std::string> events; ///< "progress 50", "report 0 SOME_KEY"
    bool asks = true;
    int questions = 0;
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
    void interact(std::unique_ptr<core::InputInteraction>& interaction) override {
        ++questions;
        if (asks) {
            interaction->ask();
        }
    }

    /// What was reported, without the progress.
    [[nodiscard]] std::vector<std::string> reports() const {
        std::vector<std::string> found;
        for (const auto& event : events) {
            if (event.starts_with("report")) {
                found.push_back(event);
            }
        }
        return found;
    }
};

} // namespace vexil::tests
