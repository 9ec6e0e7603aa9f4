#pragma once

#include "support/recording_reporter.h"

#include <memory>
#include <string>
#include <vector>

namespace vexil::tests {

/// A host that writes down what a test says and asks what the test wants to be asked. Worker and GUI thread
/// come here in strict turn.
class AskingReporter final : public RecordingReporter {
public:
    bool asks = true;
    int questions = 0;

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
