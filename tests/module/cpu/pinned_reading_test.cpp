#include "module/cpu/pinned_reading.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vexil::tests {
namespace {

using namespace module::cpu;
using Steps = std::vector<std::string>;

/// What a thread was told, and which step it refuses.
struct Record {
    Steps steps;
    std::string refused;
};

class RecordedThread final : public platform::SuspendedThread {
public:
    RecordedThread(Record& record, Routine routine) : record_(record), routine_(std::move(routine)) {}

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

    Record& record_;
    Routine routine_;
    std::uint32_t code_ = 0;
};

ThreadMaker recorded(Record& record) {
    return [&record](platform::SuspendedThread::Routine routine) {
        return std::make_unique<RecordedThread>(record, std::move(routine));
    };
}

TEST(RunPinned, PlacesTheThreadBeforeItRuns) {
    Record record;
    EXPECT_EQ(runPinned(
                  {0, 2, 170}, [] { return 0; }, recorded(record)),
              0);
    EXPECT_EQ(record.steps, (Steps{"priority -15", "group 2 4398046511104", "mask 4398046511104", "resume",
                                   "wait", "exit"}))
        << "bit 42, which is 170 modulo 64";
}

TEST(RunPinned, AnswersTheStatusOfItsRoutine) {
    Record record;
    EXPECT_EQ(runPinned(
                  {}, [] { return -5; }, recorded(record)),
              -5);
}

TEST(RunPinned, AnswersOneWithoutARoutine) {
    Record record;
    EXPECT_EQ(runPinned({}, nullptr, recorded(record)), 1);
    EXPECT_TRUE(record.steps.empty());
}

TEST(RunPinned, AnswersFifteenWithoutAThread) {
    EXPECT_EQ(runPinned(
                  {}, [] { return 0; }, [](auto) { return nullptr; }),
              15);
}

TEST(RunPinned, AnswersANumberOfItsOwnForEachStepThatFails) {
    struct Row {
        const char* step;
        std::int32_t status;
    };
    for (const auto& row : {Row{"priority", 16}, Row{"group", 13}, Row{"mask", 4}, Row{"resume", 17},
                            Row{"wait", 18}, Row{"exit", 19}}) {
        Record record;
        record.refused = row.step;
        EXPECT_EQ(runPinned(
                      {}, [] { return 0; }, recorded(record)),
                  row.status)
            << row.step;
        EXPECT_TRUE(record.steps.back().starts_with(row.step)) << "nothing follows a failed step";
    }
}

} // namespace
} // namespace vexil::tests
