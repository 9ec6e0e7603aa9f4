#include "platform/linux/cim/cim_linux.h"

#include "platform/linux/cim/machine_objects.h"
#include "system/cim/cim_rows.h"
#include "system/cim/cim_value.h"
#include "system/cim/wmi_query.h"
#include "system/cim/wql.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace vexil::platform {

using system::CimStatus;
using system::CimValue;
using system::QueryArguments;
using system::WhereClause;

namespace {

struct MachineClass {
    std::string_view name;
    std::vector<CimObject> (*objects)(const std::filesystem::path& root);
};
constexpr std::array<MachineClass, 3> machineClasses = {{
    {"Win32_PnPSignedDriver", displayDriverObjects},
    {"Win32_Processor", processorObjects},
    {"Win32_VideoController", videoControllerObjects},
}};

/// Either slash separates the names, as the service takes them, and letters of both cases are equal.
bool isMachineNamespace(const wchar_t* nameSpace) {
    if (nameSpace == nullptr) {
        return false;
    }
    std::string plain;
    for (const wchar_t* c = nameSpace; *c != L'\0'; ++c) {
        plain += *c == L'/' ? '\\' : *c < 0x80 ? static_cast<char>(*c) : '?';
    }
    return system::equalIgnoringCase(plain, "ROOT\\CIMV2");
}

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
CimStatus findObjects(const std::filesystem::path& root, const QueryArguments& arguments,
                      const wchar_t* nameSpace, std::vector<CimObject>& found) {
    const bool connected = isMachineNamespace(nameSpace);
    const auto text = system::buildQueryText({true, connected, connected}, arguments);
    if (text.status != CimStatus::Success) {
        return text.status;
    }
    const auto query = system::parseWql(text.text.get());
    if (!query) {
        return CimStatus::QueryFailed;
    }
    const auto machineClass =
        std::find_if(machineClasses.begin(), machineClasses.end(), [&](const MachineClass& candidate) {
            return system::equalIgnoringCase(candidate.name, query->className);
        });
    if (machineClass == machineClasses.end()) {
        return CimStatus::QueryFailed;
    }
    for (auto& object : machineClass->objects(root)) {
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

CimStatus findRows(const std::filesystem::path& root, const QueryArguments& arguments, system::CimRows& rows,
                   const wchar_t* nameSpace) {
    rows = nullptr;
    std::vector<CimObject> objects;
    auto status = findObjects(root, arguments, nameSpace, objects);
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

LinuxCim::LinuxCim(std::filesystem::path root) : root_(std::move(root)) {}

CimStatus LinuxCim::queryWhere(const char* const* properties, const char* where, const char* className,
                               std::int32_t count, system::CimRows& rows, const wchar_t* nameSpace) {
    return findRows(root_, {properties, count, className, WhereClause::Required, where}, rows, nameSpace);
}

CimStatus LinuxCim::query(const char* const* properties, const char* className, std::int32_t count,
                          system::CimRows& rows, const wchar_t* nameSpace) {
    return findRows(root_, {properties, count, className}, rows, nameSpace);
}

CimStatus LinuxCim::writeRecord(const std::vector<std::string>&, const std::vector<std::string>&, const char*,
                                const wchar_t*) {
    return CimStatus::NotConnected;
}

CimStatus LinuxCim::removeNamespace(const wchar_t*, const wchar_t*, const wchar_t*) {
    return CimStatus::NoLocator;
}

CimStatus answerWmiQuery(const std::filesystem::path& root, const QueryArguments& arguments,
                         std::map<std::string, std::string>& values, const wchar_t* nameSpace) {
    std::vector<CimObject> objects;
    auto status = findObjects(root, arguments, nameSpace, objects);
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
