#pragma once

#include "system/cim/cim.h"

#include <cstddef>
#include <memory>

namespace vexil::system {

/// How far the connection got on which a query is to run.
struct CimConnection {
    bool located = false;
    bool connected = false;
    bool blanketSet = false;
};

enum class WhereClause { None, Optional, Required };

/// What a caller asked for, unchecked.
struct QueryArguments {
    const char* const* properties = nullptr;
    std::int32_t count = 0;
    const char* className = nullptr;
    WhereClause whereClause = WhereClause::None;
    const char* where = nullptr; ///< null leaves the clause out, unless it is required
};

/// Characters of a property name, of the class name and of the where clause that are sent; the rest is cut
/// off silently.
inline constexpr std::size_t queryNameLimit = 50;
inline constexpr std::size_t queryWhereLimit = 500;

/// The first thing that keeps the query from running, in the order: locator, connection, blanket, array of
/// properties, count, where clause, each property, class name.
[[nodiscard]] CimStatus checkQuery(const CimConnection& connection, const QueryArguments& arguments);

struct QueryText {
    CimStatus status = CimStatus::Success;
    std::unique_ptr<char[]> text; ///< ends with NUL; null unless the status is `Success`
    std::size_t size = 0;         ///< of the buffer in bytes, which the text fills with its NUL
};

/// Checks, and builds "SELECT a, b FROM c" or "SELECT a, b FROM c WHERE d".
[[nodiscard]] QueryText buildQueryText(const CimConnection& connection, const QueryArguments& arguments);

} // namespace vexil::system
