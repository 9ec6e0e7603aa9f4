#include "module/video_card/adapter_record.h"
#include "module/video_card/statistics/composite_statistics.h"
#include "module/video_card/statistics/statistics_sources.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace vexil::module::video_card {
namespace {

using Status = VideoCardStatisticsStatus;

struct Answers {
    Status status = Status::Ok;
    std::int64_t value = 0;
    bool matches = true;
    int asked = 0;
};

/// Gives the same answer to all four queries, and writes its value whatever the status.
class Source final : public VideoCardStatistics {
public:
    explicit Source(std::shared_ptr<Answers> answers) : answers_(std::move(answers)) {}

    [[nodiscard]] bool matches(const AdapterRecord&) const override { return answers_->matches; }
    Status getTemperature(std::int64_t& value) override { return answer(value); }
    Status getUsage(std::uint64_t& value) override { return answer(value); }
    Status getTotalMemory(std::uint64_t& value) override { return answer(value); }
    Status getFreeMemory(std::uint64_t& value) override { return answer(value); }

private:
    template <typename Value>
    Status answer(Value& value) {
        ++answers_->asked;
        value = static_cast<Value>(answers_->value);
        return answers_->status;
    }

    std::shared_ptr<Answers> answers_;
};

std::shared_ptr<Answers> answers(Status status, std::int64_t value) {
    return std::make_shared<Answers>(Answers{status, value});
}

CompositeVideCardStatistics compose(const std::vector<std::shared_ptr<Answers>>& all) {
    std::vector<std::unique_ptr<VideoCardStatistics>> sources;
    for (const auto& each : all) {
        sources.push_back(each ? std::make_unique<Source>(each) : nullptr);
    }
    return CompositeVideCardStatistics(std::move(sources));
}

TEST(Composite, OfEmptyEntriesAnswersNothing) {
    auto composite = compose({nullptr, nullptr, nullptr, nullptr});
    std::int64_t temperature = 5;
    std::uint64_t value = 5;
    EXPECT_EQ(composite.getTemperature(temperature), Status::Unavailable);
    EXPECT_EQ(composite.getUsage(value), Status::Unavailable);
    EXPECT_EQ(composite.getTotalMemory(value), Status::Unavailable);
    EXPECT_EQ(composite.getFreeMemory(value), Status::Unavailable);
}

TEST(Composite, AsksItsSourcesInOrderUntilOneAnswers) {
    const auto first = answers(Status::Unavailable, 1);
    const auto second = answers(Status::Ok, 2);
    const auto third = answers(Status::Ok, 3);
    auto composite = compose({first, nullptr, second, third});
    std::uint64_t value = 0;
    EXPECT_EQ(composite.getUsage(value), Status::Ok);
    EXPECT_EQ(value, 2U);
    EXPECT_EQ(first->asked, 1);
    EXPECT_EQ(third->asked, 0);
}

TEST(Composite, LeavesAValueThatWasWrittenByASourceThatCouldNotTell) {
    auto composite = compose({answers(Status::Unavailable, 99), nullptr, nullptr, nullptr});
    std::int64_t temperature = 0;
    EXPECT_EQ(composite.getTemperature(temperature), Status::Unavailable);
    EXPECT_EQ(temperature, 99);
}

TEST(Composite, AsksEverySourceAfreshInEachQuery) {
    const auto first = answers(Status::Unavailable, 1);
    auto composite = compose({first, answers(Status::Ok, 2)});
    std::uint64_t value = 0;
    composite.getUsage(value);
    first->status = Status::Ok;
    composite.getUsage(value);
    EXPECT_EQ(value, 1U);
}

TEST(Composite, TakesAnyStatusButOneForAnAnswer) {
    auto composite = compose({answers(static_cast<Status>(7), 4), answers(Status::Ok, 2)});
    std::uint64_t value = 0;
    EXPECT_EQ(composite.getFreeMemory(value), Status::Ok);
    EXPECT_EQ(value, 4U);
}

TEST(Composite, MatchesWhenEveryEntryDoesAndSoWhenItHasNone) {
    EXPECT_TRUE(compose({}).matches({}));
    const auto no = answers(Status::Ok, 0);
    EXPECT_TRUE(compose({no, no}).matches({}));
    const auto other = answers(Status::Ok, 0);
    other->matches = false;
    EXPECT_FALSE(compose({no, other}).matches({}));
}

TEST(StatisticsScan, RunsTheKindsInTheirFixedOrder) {
    std::string order;
    StatisticsScans scans;
    scans.adl = [&](StatisticsSources&) { order += "ADL "; };
    scans.nvapi = [&](StatisticsSources&) { order += "NVAPI"; };
    scans.intel = [&](StatisticsSources&) { order += "Intel "; };
    scans.d3dkmt = [&](StatisticsSources&) { order += "D3DKMT "; };
    static_cast<void>(scanStatistics(scans));
    EXPECT_EQ(order, "ADL Intel D3DKMT NVAPI");
}

TEST(StatisticsScan, GoesOnWithoutNvapiWhenItThrowsItsStatus) {
    StatisticsScans scans;
    scans.adl = [](StatisticsSources& list) {
        list.push_back(std::make_unique<Source>(answers(Status::Ok, 1)));
    };
    scans.nvapi = [](StatisticsSources& list) {
        list.push_back(nullptr);
        throw -2;
    };
    const auto lists = scanStatistics(scans);
    EXPECT_EQ(lists.adl.size(), 1U);
    EXPECT_TRUE(lists.nvapi.empty());
}

TEST(StatisticsScan, LetsAnyOtherExceptionThrough) {
    StatisticsScans scans;
    scans.nvapi = [](StatisticsSources&) { throw std::runtime_error("no integer"); };
    EXPECT_THROW(static_cast<void>(scanStatistics(scans)), std::runtime_error);
    scans.nvapi = nullptr;
    scans.adl = [](StatisticsSources&) { throw 5; };
    EXPECT_THROW(static_cast<void>(scanStatistics(scans)), int);
}

TEST(TakeSources, AsksAdlThenNvapiThenIntelThenD3dkmt) {
    const auto make = [](std::int64_t value, Status status) {
        StatisticsSources list;
        list.push_back(std::make_unique<Source>(answers(status, value)));
        return list;
    };
    std::string order;
    for (const auto unavailable : {0, 1, 2, 3, 4}) {
        StatisticsSourceLists lists;
        const auto status = [&](int place) { return place < unavailable ? Status::Unavailable : Status::Ok; };
        lists.adl = make(1, status(0));
        lists.nvapi = make(2, status(1));
        lists.intel = make(3, status(2));
        lists.d3dkmt = make(4, status(3));
        std::uint64_t value = 0;
        const auto composite = takeSources(lists, {});
        order += composite->getUsage(value) == Status::Ok ? std::to_string(value) : "-";
    }
    EXPECT_EQ(order, "1234-");
}

TEST(TakeSources, LeavesAnEmptyEntryWhereItTookASource) {
    StatisticsSourceLists lists;
    const auto no = answers(Status::Ok, 1);
    no->matches = false;
    lists.intel.push_back(std::make_unique<Source>(no));
    lists.intel.push_back(nullptr);
    lists.intel.push_back(std::make_unique<Source>(answers(Status::Ok, 2)));
    std::uint64_t value = 0;
    EXPECT_EQ(takeSources(lists, {})->getUsage(value), Status::Ok);
    EXPECT_EQ(value, 2U);
    EXPECT_EQ(lists.intel.size(), 3U);
    EXPECT_NE(lists.intel[0], nullptr);
    EXPECT_EQ(lists.intel[2], nullptr);
    EXPECT_EQ(takeSources(lists, {})->getUsage(value), Status::Unavailable) << "the second card has none";
}

} // namespace
} // namespace vexil::module::video_card
