#include "host/core/run_log.h"

#include "host/core/exit_code.h"
#include "host/core/report.h"

#include <fmt/format.h>

#include <utility>

namespace vexil::host {

using system::CimStatus;
using vexil::platform::RecordUse;

namespace {

constexpr const char* write = "written";
constexpr const char* readBack = "read";
constexpr const char* empty = "cleared";

/// What a status means to somebody who looks for the reason.
std::string describe(CimStatus status) {
    const char* meaning = "the service refused it";
    switch (status) {
    case CimStatus::ComNotInitialized:
    case CimStatus::SecurityNotInitialized:
        meaning = "COM could not be started";
        break;
    case CimStatus::NoLocator:
        meaning = "the place of the records could not be opened, or they could not be removed";
        break;
    case CimStatus::NotConnected:
        meaning = "a step of it failed";
        break;
    case CimStatus::BlanketNotSet:
        meaning = "the service refused this user";
        break;
    case CimStatus::QueryFailed:
        meaning = "the records could not be read";
        break;
    default:
        break;
    }
    return fmt::format("{} (status {})", meaning, static_cast<int>(status));
}

} // namespace

LogPlace systemLogPlace() {
    return {system::makeCim(), vexil::platform::recordPlace(),
            [](RecordUse use) { return vexil::platform::recordTrouble(use); }};
}

RunLog::RunLog(LogPlace place) : place_(std::move(place)), log_(*place_.cim) {}

std::string RunLog::failure(const char* what, const std::string& reason) const {
    return fmt::format("the log '{}' cannot be {}: {}", place_.name, what, reason);
}

void RunLog::require(const char* what, RecordUse use) {
    if (const auto trouble = place_.trouble(use)) {
        throw UsageError(failure(what, *trouble));
    }
}

void RunLog::require(const char* what, CimStatus status) {
    if (status != CimStatus::Success) {
        throw UsageError(failure(what, describe(status)));
    }
}

void RunLog::requireWritable() {
    require(write, RecordUse::Write);
    if (exhausted()) {
        throw UsageError(failure(write, "it takes no more records; 'vxe-host log clear' makes it new"));
    }
}

std::vector<system::ResultRecord> RunLog::read() {
    require(readBack, RecordUse::Read);
    std::vector<system::ResultRecord> records;
    require(readBack, log_.read(records));
    return records;
}

bool RunLog::exhausted() {
    bool exhausted = false;
    require(readBack, log_.readExhausted(exhausted));
    return exhausted;
}

std::size_t RunLog::clear() {
    const auto count = read().size();
    require(empty, log_.clear());
    return count;
}

void RunLog::append(const system::ResultRecord& record) {
    const auto status = log_.append(record);
    if (status == CimStatus::Success) {
        return;
    }
    if (lost_ == 0) {
        firstLoss_ = status;
    }
    ++lost_;
}

std::optional<std::string> RunLog::loss() const {
    if (lost_ == 0) {
        return std::nullopt;
    }
    // The place may be able to say more now than the status could.
    const auto trouble = place_.trouble(RecordUse::Write);
    return fmt::format("the log '{}' did not take {} of the results: {}", place_.name, lost_,
                       trouble.value_or(describe(firstLoss_)));
}

system::ResultRecord resultRecord(const TestRun& run, const core::DeviceRecord& card,
                                  const std::string& moduleKey, const Language& language) {
    system::ResultRecord record;
    record.moduleName = moduleKey;
    record.deviceUdi = card.udi;
    record.deviceDisplayName = language.text(card.name);
    record.testName = run.name;
    record.testStatus = resultName(run.result);
    record.testStartTimestamp = toRfc3339(run.startedAt);
    record.testDuration = fmt::format("{:.3f}", run.duration.count());
    return record;
}

} // namespace vexil::host
