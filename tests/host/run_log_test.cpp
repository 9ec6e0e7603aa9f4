#include "host/core/run_log.h"

#include "host/core/exit_code.h"
#include "host/core/logged_runs.h"
#include "host/platform/process.h"
#include "support/memory_cim.h"

#include <gtest/gtest.h>

namespace vexil::host {
namespace {

using system::CimStatus;
using system::ResultRecord;
using vexil::platform::RecordUse;
using ::vexil::tests::MemoryCim;

class RunLogTest : public ::testing::Test {
protected:
    RunLogTest() {
        log_ = std::make_unique<RunLog>(LogPlace{cim_, "the place", [this](RecordUse use) {
                                                     return use == RecordUse::Read ? readTrouble_
                                                                                   : writeTrouble_;
                                                 }});
    }

    /// The line that the call ends with.
    template <typename Call>
    std::string failureOf(const Call& call) {
        try {
            call();
        } catch (const UsageError& error) {
            return error.what();
        }
        return "(none)";
    }

    std::shared_ptr<MemoryCim> cim_ = std::make_shared<MemoryCim>();
    std::optional<std::string> readTrouble_;
    std::optional<std::string> writeTrouble_;
    std::unique_ptr<RunLog> log_;
};

TEST_F(RunLogTest, KeepsAndRemovesRecords) {
    log_->requireWritable();
    log_->append({0, "m", "u", "d", "t", "s", "start", "1"});
    log_->append({0, "m", "u", "d", "t", "s", "start", "2"});
    EXPECT_EQ(log_->loss(), std::nullopt);
    ASSERT_EQ(log_->read().size(), 2U);
    EXPECT_EQ(log_->read().back().id, 1);
    EXPECT_EQ(log_->clear(), 2U);
    EXPECT_TRUE(log_->read().empty());
    EXPECT_EQ(log_->clear(), 0U);
}

TEST_F(RunLogTest, NamesThePlaceAndWhatIsWrongWithIt) {
    readTrouble_ = "it burns";
    writeTrouble_ = "it is nailed shut";
    EXPECT_EQ(failureOf([&] { log_->requireWritable(); }),
              "the log 'the place' cannot be written: it is nailed shut");
    EXPECT_EQ(failureOf([&] { (void)log_->read(); }), "the log 'the place' cannot be read: it burns");
    EXPECT_EQ(failureOf([&] { (void)log_->clear(); }), "the log 'the place' cannot be read: it burns");
}

TEST_F(RunLogTest, NamesTheStatusWhereNothingElseTells) {
    log_->append({});
    cim_->removeStatus = CimStatus::NoLocator;
    EXPECT_EQ(failureOf([&] { (void)log_->clear(); }),
              "the log 'the place' cannot be cleared: the place of the records could not be opened, or they "
              "could not be removed (status 18)");
    EXPECT_EQ(log_->read().size(), 1U);
    cim_->queryStatus = CimStatus::SecurityNotInitialized;
    EXPECT_EQ(failureOf([&] { (void)log_->read(); }),
              "the log 'the place' cannot be read: COM could not be started (status 17)");
}

TEST_F(RunLogTest, CountsWhatWasNotTakenAndGoesOn) {
    cim_->writesUntilFailure = 1;
    for (int i = 0; i < 3; ++i) {
        log_->append({});
    }
    EXPECT_EQ(cim_->records.size(), 1U);
    EXPECT_EQ(log_->loss(),
              "the log 'the place' did not take 2 of the results: a step of it failed (status 19)");
    writeTrouble_ = "the disk is full";
    EXPECT_EQ(log_->loss(), "the log 'the place' did not take 2 of the results: the disk is full");
}

TEST_F(RunLogTest, SaysBeforeTheRunsThatItsNumbersHaveRunOut) {
    cim_->hasNamespace = true;
    for (int id = 5002; id < 10002; ++id) {
        cim_->records.push_back({{"Id", std::to_string(id)}});
    }
    EXPECT_TRUE(log_->exhausted());
    EXPECT_EQ(
        failureOf([&] { log_->requireWritable(); }),
        "the log 'the place' cannot be written: it takes no more records; 'vxe-host log clear' makes it new");
    EXPECT_EQ(log_->clear(), 5000U);
    log_->requireWritable();
}

TestRun sampleRun() {
    using namespace std::chrono_literals;
    TestRun run;
    run.testId = 1;
    run.name = "VIDEO_MEMORY_TEST";
    run.result = core::TestResult::Failed;
    run.startedAt = std::chrono::system_clock::time_point(std::chrono::sys_days(std::chrono::year_month_day(
                        std::chrono::year(2026), std::chrono::month(1), std::chrono::day(31)))) +
                    23h + 59min + 59s + 123ms;
    run.duration = 12.3456s;
    return run;
}

core::DeviceRecord sampleCard() {
    core::DeviceRecord card;
    card.id = "0a00";
    card.udi = "PCI/0a:00.0";
    card.name = "NVIDIA_GRAPHICS_CARD";
    return card;
}

TEST(ResultRecords, TellARunInKeysNamesAndExactTimes) {
    const auto language = loadLanguage(platform::programFolder() / "languages", "en", "");
    EXPECT_EQ(resultRecord(sampleRun(), sampleCard(), "VIDEO_CARD", language),
              (ResultRecord{0, "VIDEO_CARD", "PCI/0a:00.0", "NVIDIA graphics card", "VIDEO_MEMORY_TEST",
                            "Failed", "2026-01-31T23:59:59.123Z", "12.346"}));
}

class SilentObserver final : public RunObserver {
public:
    void runStarted(std::size_t, const core::TestDescriptor&) override { ++started; }
    void runProgress(std::uint8_t, std::chrono::duration<double>) override { ++progressed; }
    void runFinished(const TestRun&) override { ++finished; }
    int started = 0;
    int progressed = 0;
    int finished = 0;
};

TEST_F(RunLogTest, TakesEachRunAsItEnds) {
    SilentObserver next;
    const Language language;
    const std::vector<Card> cards = {{sampleCard(), {}}};
    LoggedRuns logged(next, log_.get(), cards, "VIDEO_CARD", language);
    logged.runStarted(0, {});
    logged.runProgress(50, {});
    EXPECT_TRUE(log_->read().empty());
    logged.runFinished(sampleRun());
    ASSERT_EQ(log_->read().size(), 1U);
    EXPECT_EQ(log_->read().front().testStatus, "Failed");
    LoggedRuns unlogged(next, nullptr, cards, "VIDEO_CARD", language);
    unlogged.runFinished(sampleRun());
    EXPECT_EQ(log_->read().size(), 1U);
    EXPECT_EQ(next.started, 1);
    EXPECT_EQ(next.progressed, 1);
    EXPECT_EQ(next.finished, 2);
}

} // namespace
} // namespace vexil::host
