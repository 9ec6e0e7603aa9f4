#pragma once

#include "system/cim/cim.h"

#include <map>
#include <string>

namespace vexil::system {

/// The older and simpler query: it answers one map instead of rows. On a platform with COM it keeps a
/// reference to COM from its first success to its end, so it is used and destroyed on one thread.
class WmiQuery {
public:
    WmiQuery() = default;
    WmiQuery(const WmiQuery&) = delete;
    WmiQuery& operator=(const WmiQuery&) = delete;
    ~WmiQuery();

    /// Puts the values of the found objects into `values` by property name; where there are several objects,
    /// those of the last remain. `where` may be null.
    CimStatus query(const char* const* properties, const char* where, const char* className,
                    std::int32_t count, std::map<std::string, std::string>& values, const wchar_t* nameSpace);

private:
    [[maybe_unused]] bool comOwned_ = false;
};

} // namespace vexil::system
