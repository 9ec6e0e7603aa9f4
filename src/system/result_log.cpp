#include "system/result_log.h"

#include "platform/wide_text.h"
#include "system/cim/cim_rows.h"
#include "system/cim/record_schema.h"

#include <algorithm>
#include <array>

namespace vexil::system {

namespace {

/// By `recordTexts`.
constexpr std::array recordFields = {
    &ResultRecord::moduleName,   &ResultRecord::deviceUdi,  &ResultRecord::deviceDisplayName,
    &ResultRecord::testName,     &ResultRecord::testStatus, &ResultRecord::testStartTimestamp,
    &ResultRecord::testDuration,
};
static_assert(recordFields.size() == recordTexts.size());

} // namespace

bool ResultLog::lacksClass() {
    static const auto byName = std::string("__CLASS = '") + resultClass + '\'';
    const char* whole = "*";
    OwnedRows definitions(cim_);
    const auto status =
        cim_.queryWhere(&whole, byName.c_str(), definitionClass, 1, definitions.out(), recordNamespace);
    // A definition that is there fails to be read.
    return status == CimStatus::Success && definitions.size() == 0;
}

/// The answer to a question about records that may never have been written: then there is no namespace, or no
/// class in it, as after a writer that was stopped in between. A query that failed tells nothing of the
/// reason.
CimStatus ResultLog::emptyIfNeverWritten(CimStatus status) {
    const bool neverWritten =
        status == CimStatus::NotConnected || (status == CimStatus::QueryFailed && lacksClass());
    return neverWritten ? CimStatus::Success : status;
}

CimStatus ResultLog::append(const ResultRecord& record) {
    std::vector<std::string> names(recordTexts.begin(), recordTexts.end());
    std::vector<std::string> values;
    for (const auto field : recordFields) {
        values.push_back(platform::toProcessText(record.*field));
    }
    return cim_.writeRecord(names, values, resultClass, recordNamespace);
}

CimStatus ResultLog::read(std::vector<ResultRecord>& records) {
    records.clear();
    std::vector<const char*> properties = {recordKey};
    properties.insert(properties.end(), recordTexts.begin(), recordTexts.end());
    OwnedRows rows(cim_);
    const auto status = cim_.query(properties.data(), resultClass,
                                   static_cast<std::int32_t>(properties.size()), rows.out(), recordNamespace);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        ResultRecord record;
        record.id = recordId(rows[i]);
        for (std::size_t field = 0; field < recordFields.size(); ++field) {
            record.*recordFields[field] = platform::fromProcessText(rows[i].at(field + 1));
        }
        records.push_back(std::move(record));
    }
    std::ranges::sort(records, {}, &ResultRecord::id);
    return emptyIfNeverWritten(status);
}

CimStatus ResultLog::readExhausted(bool& exhausted) {
    OwnedRows rows(cim_);
    const char* property = recordKey;
    const auto status = cim_.query(&property, resultClass, 1, rows.out(), recordNamespace);
    RecordIds ids;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        ids.add(recordId(rows[i]));
    }
    exhausted = ids.exhausted();
    return emptyIfNeverWritten(status);
}

CimStatus ResultLog::clear() {
    // The name of every namespace within: a namespace that is not there cannot be asked.
    OwnedRows within(cim_);
    const char* property = "Name";
    const auto found = cim_.query(&property, "__Namespace", 1, within.out(), recordNamespace);
    if (found == CimStatus::NotConnected) {
        return CimStatus::Success;
    }
    if (found != CimStatus::Success) {
        return found;
    }
    return cim_.removeNamespace(rootNamespace, suiteNamespaceName, recordNamespaceName);
}

} // namespace vexil::system
