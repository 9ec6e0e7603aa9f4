#include "system/cim/wmi_query.h"

#include "platform/windows/cim/wbem_session.h"
#include "platform/windows/cim/win_cim.h"

namespace vexil::platform {

using system::CimStatus;

namespace {

/// In another mode the reference is counted as owned, though it is not: the object gives it back at its end
/// all the same, as it always has.
bool startCom(ComCalls& com) {
    const HRESULT mode = com.initialize(nullptr, COINIT_MULTITHREADED);
    const bool started = SUCCEEDED(mode) || mode == RPC_E_CHANGED_MODE;
    return initializeComSecurity(com) && started;
}

} // namespace

CimStatus runWmiQuery(ComCalls& com, bool& comOwned, const system::QueryArguments& arguments,
                      std::map<std::string, std::string>& values, const wchar_t* nameSpace) {
    // Where COM cannot be started the query goes on: the thread may have it from elsewhere.
    if (!comOwned) {
        comOwned = startCom(com);
    }
    WbemSession session(com, nameSpace);
    auto status = session.execute(arguments);
    if (status != CimStatus::Success) {
        return status;
    }
    while (session.next()) {
        const auto read = session.readProperties(arguments, [&](std::int32_t index, const VARIANT& value) {
            values[arguments.properties[index]] = system::wmiQueryText(toCimValue(value));
        });
        if (read != CimStatus::Success) {
            status = read;
        }
    }
    return status;
}

void endWmiQuery(ComCalls& com, bool comOwned) {
    if (comOwned) {
        com.uninitialize();
    }
}

} // namespace vexil::platform

namespace vexil::system {

WmiQuery::~WmiQuery() { platform::endWmiQuery(platform::systemComCalls(), comOwned_); }

CimStatus WmiQuery::query(const char* const* properties, const char* where, const char* className,
                          std::int32_t count, std::map<std::string, std::string>& values,
                          const wchar_t* nameSpace) {
    return platform::runWmiQuery(platform::systemComCalls(), comOwned_,
                                 {properties, count, className, WhereClause::Optional, where}, values,
                                 nameSpace);
}

} // namespace vexil::system
