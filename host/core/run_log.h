#pragma once

#include "core/device_record.h"
#include "host/core/language.h"
#include "host/core/test_run.h"
#include "platform/cim_records.h"
#include "system/result_log.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vexil::host {

/// Where results are logged.
struct LogPlace {
    std::shared_ptr<system::Cim> cim;
    std::string name; ///< a file or a namespace, for people
    /// What keeps it from being used, in a line.
    std::function<std::optional<std::string>(vexil::platform::RecordUse)> trouble;
};

/// That of this platform.
[[nodiscard]] LogPlace systemLogPlace();

/// The log of results, with every failure as a line that names the place and the reason.
class RunLog {
public:
    explicit RunLog(LogPlace place);

    [[nodiscard]] const std::string& place() const { return place_.name; }

    /// Throws `UsageError` if no result can be logged, so that it is known before the runs.
    void requireWritable();
    /// The records, the oldest first. Throws `UsageError`.
    [[nodiscard]] std::vector<system::ResultRecord> read();
    /// Whether nothing can be logged before the log is cleared: its ids have got too far.
    [[nodiscard]] bool exhausted();
    /// Removes all records, and answers how many there were. Throws `UsageError`.
    std::size_t clear();

    /// Logs a result. One that is not taken is counted, since the next run starts all the same.
    void append(const system::ResultRecord& record);
    /// What became of results that were not taken; nothing if all were.
    [[nodiscard]] std::optional<std::string> loss() const;

private:
    [[nodiscard]] std::string failure(const char* what, const std::string& reason) const;
    void require(const char* what, vexil::platform::RecordUse use);
    void require(const char* what, system::CimStatus status);

    LogPlace place_;
    system::ResultLog log_;
    std::size_t lost_ = 0;
    system::CimStatus firstLoss_ = system::CimStatus::Success;
};

/// What the log keeps of a run: keys and names of results as they are in reports, the card by the name that
/// is shown of it, the time in RFC 3339, and the duration in seconds with three decimals.
[[nodiscard]] system::ResultRecord resultRecord(const TestRun& run, const core::DeviceRecord& card,
                                                const std::string& moduleKey, const Language& language);

} // namespace vexil::host
