#include "module/cpu/pinned_reading.h"

#include "support/recorded_thread.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using namespace module::cpu;
using Steps = ThreadRecord::Steps;

TEST(RunPinned, PlacesTheThreadBeforeItRuns) {
    ThreadRecord record;
    EXPECT_EQ(runPinned(
                  {0, 2, 170}, [] { return 0; }, recordedThreads(record)),
              0);
    EXPECT_EQ(record.steps, (Steps{"priority -15", "group 2 4398046511104", "mask 4398046511104", "resume",
                                   "wait", "exit"}))
        << "bit 42, which is 170 modulo 64";
}

TEST(RunPinned, AnswersTheStatusOfItsRoutine) {
    ThreadRecord record;
    EXPECT_EQ(runPinned(
                  {}, [] { return -5; }, recordedThreads(record)),
              -5);
}

TEST(RunPinned, AnswersOneWithoutARoutine) {
    ThreadRecord record;
    EXPECT_EQ(runPinned({}, nullptr, recordedThreads(record)), 1);
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
        ThreadRecord record;
        record.refused = row.step;
        EXPECT_EQ(runPinned(
                      {}, [] { return 0; }, recordedThreads(record)),
                  row.status)
            << row.step;
        EXPECT_TRUE(record.steps.back().starts_with(row.step)) << "nothing follows a failed step";
    }
}

} // namespace
} // namespace vexil::tests
