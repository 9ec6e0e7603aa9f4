#include "host/core/run_reporter.h"

#include <utility>

namespace vexil::host {

RunReporter::RunReporter(Changed changed, Interact interact)
    : changed_(std::move(changed)), interact_(std::move(interact)) {}

void RunReporter::setProgress(std::uint8_t percent) {
    {
        const std::lock_guard lock(mutex_);
        current_ = percent;
        if (!std::exchange(sent_[percent], true)) {
            progress_.push_back(percent);
        }
    }
    tell();
}

void RunReporter::report(const core::TestMessage& message) {
    {
        const std::lock_guard lock(mutex_);
        messages_.push_back(message);
    }
    tell();
}

void RunReporter::interact(std::unique_ptr<core::InputInteraction>& interaction) {
    if (interact_ && interaction) {
        interact_(*interaction);
    }
}

std::uint8_t RunReporter::currentProgress() const {
    const std::lock_guard lock(mutex_);
    return current_;
}

std::vector<std::uint8_t> RunReporter::progress() const {
    const std::lock_guard lock(mutex_);
    return progress_;
}

std::vector<core::TestMessage> RunReporter::messages() const {
    const std::lock_guard lock(mutex_);
    return messages_;
}

void RunReporter::tell() const {
    if (changed_) {
        changed_();
    }
}

} // namespace vexil::host
