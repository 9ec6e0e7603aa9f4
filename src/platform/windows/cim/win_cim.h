#pragma once

#include "platform/windows/cim/com_calls.h"
#include "system/cim/cim.h"
#include "system/cim/query_text.h"

#include <map>
#include <string>

namespace vexil::platform {

/// The CIM client over COM. Each operation starts COM and takes it down by itself, so any thread may call; it
/// throws `_com_error` of E_OUTOFMEMORY where COM has no memory for a text, and nothing else of its own.
class WinCim final : public system::Cim {
public:
    explicit WinCim(ComCalls& com = systemComCalls()) : com_(&com) {}

    system::CimStatus queryWhere(const char* const* properties, const char* where, const char* className,
                                 std::int32_t count, system::CimRows& rows,
                                 const wchar_t* nameSpace) override;
    system::CimStatus query(const char* const* properties, const char* className, std::int32_t count,
                            system::CimRows& rows, const wchar_t* nameSpace) override;
    /// Makes the namespaces and the class where they are missing. There is no lock: of two writers that take
    /// the same id the later one's record is lost, and both get the same answer.
    system::CimStatus writeRecord(const std::vector<std::string>& names,
                                  const std::vector<std::string>& values, const char* className,
                                  const wchar_t* nameSpace) override;
    system::CimStatus removeNamespace(const wchar_t* root, const wchar_t* parent,
                                      const wchar_t* child) override;

private:
    ComCalls* com_;
};

/// `WmiQuery::query` over the given COM; `comOwned` is the object's own field.
[[nodiscard]] system::CimStatus runWmiQuery(ComCalls& com, bool& comOwned,
                                            const system::QueryArguments& arguments,
                                            std::map<std::string, std::string>& values,
                                            const wchar_t* nameSpace);

/// The end of a `WmiQuery`.
void endWmiQuery(ComCalls& com, bool comOwned);

} // namespace vexil::platform
