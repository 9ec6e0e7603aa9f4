#pragma once

#include "core/test_reporter.h"

#include <array>
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

namespace vexil::host {

/// Keeps what a running test has to say. The test reports from its worker while the host looks on.
class RunReporter final : public core::TestReporter {
public:
    /// Called on the test's thread after each report, without a lock held.
    using Changed = std::function<void()>;
    /// Answers a question on the test's thread. Without one nobody is there to ask, and questions stay
    /// unanswered.
    using Interact = std::function<void(core::InputInteraction&)>;

    explicit RunReporter(Changed changed = {}, Interact interact = {});

    void setProgress(std::uint8_t percent) override;
    void report(const core::TestMessage& message) override;
    void interact(std::unique_ptr<core::InputInteraction>& interaction) override;

    /// The last value sent, 0 before the first.
    [[nodiscard]] std::uint8_t currentProgress() const;
    /// Every value once, in the order in which they were first sent.
    [[nodiscard]] std::vector<std::uint8_t> progress() const;
    [[nodiscard]] std::vector<core::TestMessage> messages() const;

private:
    void tell() const;

    Changed changed_;
    Interact interact_;
    mutable std::mutex mutex_;
    std::uint8_t current_ = 0;
    std::array<bool, 256> sent_{};
    std::vector<std::uint8_t> progress_;
    std::vector<core::TestMessage> messages_;
};

} // namespace vexil::host
