#pragma once

#include "module/cpu/pinned_reading.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vexil::tests {

/// What threads were told, in order, and the step that they refuse.
struct ThreadRecord {
    using Steps = std::vector<std::string>;

    Steps steps;
    std::string refused;
};

/// Runs its routine on the calling thread when it is resumed.
class RecordedThread final : public platform::SuspendedThread {
public:
    RecordedThread(ThreadRecord& record, Routine routine) : record_(record), routine_(std::move(routine)) {}

    bool setPriority(std::int32_t priority) override { return step("priority", std::to_string(priority)); }
    bool setGroupAffinity(std::uint16_t group, std::uint64_t mask) override {
        return step("group", std::to_string(group) + " " + std::to_string(mask));
    }
    bool setAffinityMask(std::uint64_t mask) override { return step("mask", std::to_string(mask)); }
    bool resume() override {
        code_ = routine_();
        return step("resume", "");
    }
    bool wait() override { return step("wait", ""); }
    std::optional<std::uint32_t> exitCode() override {
        return step("exit", "") ? std::optional(code_) : std::nullopt;
    }

private:
    bool step(const std::string& name, const std::string& value) {
        record_.steps.push_back(value.empty() ? name : name + " " + value);
        return record_.refused != name;
    }

    ThreadRecord& record_;
    Routine routine_;
    std::uint32_t code_ = 0;
};

/// `record` must outlive the maker and its threads.
inline module::cpu::ThreadMaker recordedThreads(ThreadRecord& record) {
    return [&record](platform::SuspendedThread::Routine routine) {
        return std::make_unique<RecordedThread>(record, std::move(routine));
    };
}

} // namespace vexil::tests
