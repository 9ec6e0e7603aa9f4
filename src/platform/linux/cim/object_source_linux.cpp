#include "platform/linux/cim/object_source.h"

#include "platform/linux/cim/namespace_path.h"
#include "platform/wide_text.h"
#include "system/cim/wql.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>
#include <utility>

namespace vexil::platform {

namespace {

constexpr std::string_view outermost = "ROOT";
constexpr std::string_view machine = "CIMV2";

struct MachineClass {
    std::string_view name;
    std::vector<CimObject> (*objects)(const std::filesystem::path& root);
};
constexpr std::array<MachineClass, 3> machineClasses = {{
    {"Win32_PnPSignedDriver", displayDriverObjects},
    {"Win32_Processor", processorObjects},
    {"Win32_VideoController", videoControllerObjects},
}};

/// An object for each value, with one property.
std::vector<CimObject> objectsWith(const char* property, const std::vector<std::string>& values) {
    std::vector<CimObject> objects;
    for (const auto& value : values) {
        objects.push_back({{property, value}});
    }
    return objects;
}

} // namespace

std::string namespacePath(const wchar_t* nameSpace) {
    std::string path = nameSpace == nullptr ? std::string() : toUtf8(nameSpace);
    std::ranges::replace(path, '/', '\\');
    return path;
}

bool isMachineNamespace(const std::string& path) {
    return system::equalIgnoringCase(path, std::string(outermost) + '\\' + std::string(machine));
}

bool isBuiltInNamespace(const std::string& path) {
    return system::equalIgnoringCase(path, outermost) || isMachineNamespace(path);
}

ObjectSource::ObjectSource(std::filesystem::path root, std::optional<std::filesystem::path> records,
                           const wchar_t* nameSpace)
    : root_(std::move(root)), records_(std::move(records)), path_(namespacePath(nameSpace)) {
    connection_.located = true;
    connection_.connected = isBuiltInNamespace(path_);
    if (!connection_.connected) {
        try {
            openRecords();
            connection_.connected = store_ && store_->hasNamespace(path_);
        } catch (const DatabaseError&) {
            connection_.located = false;
        }
    }
    connection_.blanketSet = connection_.connected;
}

std::optional<std::vector<CimObject>> ObjectSource::objects(const std::string& className) {
    if (system::equalIgnoringCase(className, "__Namespace")) {
        return namespacesWithin();
    }
    if (system::equalIgnoringCase(className, system::definitionClass)) {
        return definitions();
    }
    if (isMachineNamespace(path_)) {
        const auto found = std::ranges::find_if(machineClasses, [&](const MachineClass& candidate) {
            return system::equalIgnoringCase(candidate.name, className);
        });
        return found == machineClasses.end() ? std::nullopt : std::optional(found->objects(root_));
    }
    if (!store_) {
        return std::nullopt;
    }
    const auto number = store_->findClass(path_, className);
    return number ? std::optional(store_->records(*number)) : std::nullopt;
}

void ObjectSource::openRecords() {
    std::error_code error;
    if (records_ && std::filesystem::exists(*records_, error)) {
        store_.emplace(*records_, Database::Access::Read);
    }
    if (error) {
        throw DatabaseError(error.message());
    }
}

std::vector<CimObject> ObjectSource::namespacesWithin() {
    if (!store_) {
        openRecords();
    }
    std::vector<std::string> names;
    if (store_) {
        names = store_->namespacesIn(path_);
    }
    if (system::equalIgnoringCase(path_, outermost)) {
        names.insert(names.begin(), std::string(machine));
    }
    return objectsWith("Name", names);
}

std::vector<CimObject> ObjectSource::definitions() {
    std::vector<std::string> names;
    if (isMachineNamespace(path_)) {
        for (const auto& known : machineClasses) {
            names.emplace_back(known.name);
        }
    } else if (store_) {
        names = store_->classesIn(path_);
    }
    return objectsWith("__CLASS", names);
}

} // namespace vexil::platform
