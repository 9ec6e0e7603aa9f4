#include "platform/cim_records.h"

#include "platform/wide_text.h"
#include "system/cim/cim.h"
#include "system/cim/cim_rows.h"
#include "system/cim/record_schema.h"

namespace vexil::platform {

std::string recordPlace() { return toUtf8(system::recordNamespace); }

// The service has no way to ask whether it will take a record; it tells with the first one.
std::optional<std::string> recordTrouble(RecordUse) {
    const auto cim = system::makeCim();
    system::OwnedRows rows(*cim);
    const char* property = "Name";
    const auto status = cim->query(&property, "__Namespace", 1, rows.out(), system::rootNamespace);
    if (status == system::CimStatus::Success) {
        return std::nullopt;
    }
    return "the WMI service does not answer (status " + std::to_string(static_cast<int>(status)) + ')';
}

} // namespace vexil::platform
