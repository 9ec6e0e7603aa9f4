#include "platform/windows/cim/win_cim.h"

#include "platform/windows/cim/wbem_session.h"
#include "system/cim/cim_rows.h"

namespace vexil::platform {

using system::CimStatus;
using system::QueryArguments;
using system::WhereClause;

namespace {

CimStatus findRows(ComCalls& com, const QueryArguments& arguments, system::CimRows& rows,
                   const wchar_t* nameSpace) {
    rows = nullptr;
    const ComScope scope(com);
    if (scope.status() != CimStatus::Success) {
        return scope.status();
    }
    WbemSession session(com, nameSpace);
    auto status = session.execute(arguments);
    if (status != CimStatus::Success) {
        return status;
    }
    system::CimRowCollector collector;
    while (session.next()) {
        collector.addRow();
        const auto read = session.readProperties(arguments, [&](std::int32_t, const VARIANT& value) {
            collector.addText(system::cimRowText(toCimValue(value)));
        });
        if (read != CimStatus::Success) {
            status = read;
        }
    }
    if (status == CimStatus::Success) {
        rows = collector.take();
    }
    return status;
}

} // namespace

CimStatus WinCim::queryWhere(const char* const* properties, const char* where, const char* className,
                             std::int32_t count, system::CimRows& rows, const wchar_t* nameSpace) {
    return findRows(*com_, {properties, count, className, WhereClause::Required, where}, rows, nameSpace);
}

CimStatus WinCim::query(const char* const* properties, const char* className, std::int32_t count,
                        system::CimRows& rows, const wchar_t* nameSpace) {
    return findRows(*com_, {properties, count, className}, rows, nameSpace);
}

} // namespace vexil::platform

namespace vexil::system {

std::unique_ptr<Cim> makeCim() { return std::make_unique<platform::WinCim>(); }

} // namespace vexil::system
