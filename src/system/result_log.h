#pragma once

#include "system/cim/cim.h"

#include <string>
#include <vector>

namespace vexil::system {

/// One run of one test, as the log keeps it. Texts are UTF-8; what they hold is the host's choice.
struct ResultRecord {
    std::int32_t id = 0; ///< given by the log
    std::string moduleName;
    std::string deviceUdi;
    std::string deviceDisplayName;
    std::string testName;
    std::string testStatus;
    std::string testStartTimestamp;
    std::string testDuration;

    bool operator==(const ResultRecord&) const = default;
};

/// The class of the suite's records in `recordNamespace`.
inline constexpr const char* resultClass = "TestResult";

/// The durable log of test results in the CIM repository, through the client of either home. It keeps the
/// last 5000 records.
class ResultLog {
public:
    explicit ResultLog(Cim& cim) : cim_(cim) {}

    /// Appends a record; its `id` is not read.
    [[nodiscard]] CimStatus append(const ResultRecord& record);

    /// The records by id, the oldest first. A log that was never written to is empty, also where the
    /// namespace is there without the class. A text longer than 500 characters comes back cut.
    [[nodiscard]] CimStatus read(std::vector<ResultRecord>& records);

    /// Whether the log can take no more records until it is cleared.
    [[nodiscard]] CimStatus readExhausted(bool& exhausted);

    /// Removes the records with their namespace; `Success` also where there are none. Ids begin at 0 again.
    [[nodiscard]] CimStatus clear();

private:
    [[nodiscard]] bool lacksClass();
    [[nodiscard]] CimStatus emptyIfNeverWritten(CimStatus status);

    Cim& cim_;
};

} // namespace vexil::system
