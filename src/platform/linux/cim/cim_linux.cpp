#include "platform/linux/cim/cim_linux.h"

#include "platform/linux/cim/object_source.h"
#include "platform/linux/user_folders.h"
#include "system/cim/cim_rows.h"
#include "system/cim/cim_value.h"
#include "system/cim/wmi_query.h"
#include "system/cim/wql.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace vexil::platform {

using system::CimStatus;
using system::CimValue;
using system::QueryArguments;
using system::WhereClause;

namespace {

/// Null if the object has no such property.
const CimValue* valueOf(const CimObject& object, std::string_view name) {
    const auto found = std::find_if(object.begin(), object.end(), [&](const auto& property) {
        return system::equalIgnoringCase(property.first, name);
    });
    return found == object.end() ? nullptr : &found->second;
}

/// Whether the object meets the condition. Nothing if it has no such property.
std::optional<bool> meets(const CimObject& object, const system::WqlCondition& condition) {
    const CimValue* value = valueOf(object, condition.property);
    if (value == nullptr) {
        return std::nullopt;
    }
    // An empty value equals nothing, not even an empty text.
    return !std::holds_alternative<std::monostate>(*value) &&
           system::equalIgnoringCase(system::wmiQueryText(*value), condition.value);
}

/// Everything up to the objects, in the order of the client over COM: the namespace before the arguments, and
/// the arguments before the query.
CimStatus findObjects(ObjectSource& source, const QueryArguments& arguments, std::vector<CimObject>& found) {
    const auto text = system::buildQueryText(source.connection(), arguments);
    if (text.status != CimStatus::Success) {
        return text.status;
    }
    const auto query = system::parseWql(text.text.get());
    if (!query) {
        return CimStatus::QueryFailed;
    }
    std::optional<std::vector<CimObject>> objects;
    try {
        objects = source.objects(query->className);
    } catch (const DatabaseError&) {
        return CimStatus::QueryFailed;
    }
    if (!objects) {
        return CimStatus::QueryFailed;
    }
    for (auto& object : *objects) {
        const auto wanted = query->condition ? meets(object, *query->condition) : std::optional(true);
        if (!wanted) {
            return CimStatus::QueryFailed;
        }
        if (*wanted) {
            found.push_back(std::move(object));
        }
    }
    return CimStatus::Success;
}

CimStatus findRows(ObjectSource& source, const QueryArguments& arguments, system::CimRows& rows) {
    rows = nullptr;
    std::vector<CimObject> objects;
    auto status = findObjects(source, arguments, objects);
    system::CimRowCollector collector;
    for (const auto& object : objects) {
        collector.addRow();
        for (std::int32_t i = 0; i < arguments.count; ++i) {
            if (const auto* value = valueOf(object, arguments.properties[i])) {
                collector.addText(system::cimRowText(*value));
            } else {
                status = CimStatus::PropertyNotRead;
            }
        }
    }
    if (status == CimStatus::Success) {
        rows = collector.take();
    }
    return status;
}

} // namespace

std::optional<std::filesystem::path> recordFile() {
    const auto folder = userFolder("XDG_STATE_HOME", ".local/state");
    return folder ? std::optional(*folder / "vexil" / "cim.sqlite3") : std::nullopt;
}

LinuxCim::LinuxCim(std::filesystem::path root, std::optional<std::filesystem::path> records)
    : root_(std::move(root)), records_(std::move(records)) {}

CimStatus LinuxCim::queryWhere(const char* const* properties, const char* where, const char* className,
                               std::int32_t count, system::CimRows& rows, const wchar_t* nameSpace) {
    ObjectSource source(root_, records_, nameSpace);
    return findRows(source, {properties, count, className, WhereClause::Required, where}, rows);
}

CimStatus LinuxCim::query(const char* const* properties, const char* className, std::int32_t count,
                          system::CimRows& rows, const wchar_t* nameSpace) {
    ObjectSource source(root_, records_, nameSpace);
    return findRows(source, {properties, count, className}, rows);
}

CimStatus answerWmiQuery(const std::filesystem::path& root, const QueryArguments& arguments,
                         std::map<std::string, std::string>& values, const wchar_t* nameSpace) {
    ObjectSource source(root, std::nullopt, nameSpace);
    std::vector<CimObject> objects;
    auto status = findObjects(source, arguments, objects);
    for (const auto& object : objects) {
        for (std::int32_t i = 0; i < arguments.count; ++i) {
            if (const auto* value = valueOf(object, arguments.properties[i])) {
                values[arguments.properties[i]] = system::wmiQueryText(*value);
            } else {
                status = CimStatus::PropertyNotRead;
            }
        }
    }
    return status;
}

} // namespace vexil::platform

namespace vexil::system {

std::unique_ptr<Cim> makeCim() { return std::make_unique<platform::LinuxCim>(); }

WmiQuery::~WmiQuery() = default;

CimStatus WmiQuery::query(const char* const* properties, const char* where, const char* className,
                          std::int32_t count, std::map<std::string, std::string>& values,
                          const wchar_t* nameSpace) {
    return platform::answerWmiQuery("/", {properties, count, className, WhereClause::Optional, where}, values,
                                    nameSpace);
}

} // namespace vexil::system
