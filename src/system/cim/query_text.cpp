#include "system/cim/query_text.h"

#include <algorithm>
#include <new>
#include <span>
#include <string_view>

namespace vexil::system {

namespace {

constexpr std::string_view select = "SELECT ";
constexpr std::string_view separator = ", ";
constexpr std::string_view from = " FROM ";
constexpr std::string_view where = " WHERE ";

static_assert(select.size() + from.size() + 1 == 14 && select.size() + from.size() + where.size() + 1 == 21);

/// As much of the text as is sent, without a look at what lies behind.
std::string_view cut(const char* text, std::size_t limit) {
    return {text, static_cast<std::size_t>(std::find(text, text + limit, '\0') - text)};
}

std::span<const char* const> propertiesOf(const QueryArguments& arguments) {
    return {arguments.properties, static_cast<std::size_t>(arguments.count)};
}

bool hasWhere(const QueryArguments& arguments) {
    return arguments.whereClause != WhereClause::None && arguments.where != nullptr;
}

/// The parts of the text in their order, each handed to `use`.
template <typename Use>
void forEachPart(const QueryArguments& arguments, const Use& use) {
    use(select);
    bool first = true;
    for (const char* property : propertiesOf(arguments)) {
        if (!first) {
            use(separator);
        }
        first = false;
        use(cut(property, queryNameLimit));
    }
    use(from);
    use(cut(arguments.className, queryNameLimit));
    if (hasWhere(arguments)) {
        use(where);
        use(cut(arguments.where, queryWhereLimit));
    }
}

} // namespace

CimStatus checkQuery(const CimConnection& connection, const QueryArguments& arguments) {
    if (!connection.located) {
        return CimStatus::NoLocator;
    }
    if (!connection.connected) {
        return CimStatus::NotConnected;
    }
    if (!connection.blanketSet) {
        return CimStatus::BlanketNotSet;
    }
    if (arguments.properties == nullptr) {
        return CimStatus::NullProperty;
    }
    if (arguments.count <= 0) {
        return CimStatus::NoProperties;
    }
    if (arguments.whereClause == WhereClause::Required && arguments.where == nullptr) {
        return CimStatus::NullWhere;
    }
    const auto properties = propertiesOf(arguments);
    if (std::find(properties.begin(), properties.end(), nullptr) != properties.end()) {
        return CimStatus::NullProperty;
    }
    return arguments.className == nullptr ? CimStatus::NullClass : CimStatus::Success;
}

QueryText buildQueryText(const CimConnection& connection, const QueryArguments& arguments) {
    QueryText result;
    result.status = checkQuery(connection, arguments);
    if (result.status != CimStatus::Success) {
        return result;
    }
    std::size_t size = 1;
    forEachPart(arguments, [&](std::string_view part) { size += part.size(); });
    result.text.reset(new (std::nothrow) char[size]);
    if (!result.text) {
        result.status = CimStatus::TextNotBuilt;
        return result;
    }
    char* end = result.text.get();
    forEachPart(arguments, [&](std::string_view part) { end = std::copy(part.begin(), part.end(), end); });
    *end = '\0';
    result.size = size;
    return result;
}

} // namespace vexil::system
