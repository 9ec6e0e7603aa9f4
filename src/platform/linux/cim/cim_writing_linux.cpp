#include "platform/linux/cim/cim_linux.h"
#include "platform/linux/cim/namespace_path.h"
#include "platform/linux/cim/record_store.h"
#include "platform/wide_text.h"
#include "system/cim/query_text.h"
#include "system/cim/wql.h"

#include <string_view>
#include <system_error>

namespace vexil::platform {

using system::CimStatus;

namespace {

/// Whether the class is one, and none of the repository's own, which take no records.
bool canHaveRecords(const char* className) {
    return className != nullptr && *className != '\0' && !std::string_view(className).starts_with("__") &&
           !system::equalIgnoringCase(className, system::definitionClass);
}

/// The ids that a query for them finds: it asks for the first characters of a long name, and cannot ask for
/// every name. What it does not find nobody could read back.
CimStatus queryIds(RecordStore& store, const std::string& path, const char* className,
                   system::RecordIds& ids) {
    const char* key = system::recordKey;
    const auto text = system::buildQueryText({true, true, true}, {&key, 1, className});
    if (text.status != CimStatus::Success) {
        return text.status;
    }
    const auto query = system::parseWql(text.text.get());
    const auto owner = query && !query->condition ? store.findClass(path, query->className) : std::nullopt;
    if (!owner) {
        return CimStatus::QueryFailed;
    }
    ids = store.ids(*owner);
    return CimStatus::Success;
}

/// Writes in the steps of the client over COM, with the statuses that they have there.
CimStatus writeInto(RecordStore& store, const std::string& path, const char* className,
                    const std::vector<std::string>& names, const std::vector<std::string>& values) {
    if (!store.hasNamespace(path)) {
        store.addNamespace(toUtf8(system::suiteNamespace));
        store.addNamespace(toUtf8(system::recordNamespace));
        if (!store.hasNamespace(path)) {
            return CimStatus::NotConnected;
        }
    }
    if (!canHaveRecords(className)) {
        return CimStatus::NotConnected;
    }
    auto owner = store.findClass(path, className);
    if (!owner) {
        owner = store.addClass(path, className);
    }
    system::RecordIds ids;
    const auto queried = queryIds(store, path, className, ids);
    if (queried != CimStatus::Success) {
        return queried;
    }
    if (ids.full() && !store.removeRecord(*owner, ids.oldest())) {
        return CimStatus::NotConnected;
    }
    // Only now, after the oldest record has gone.
    if (names.size() == values.size()) {
        store.addRecord(*owner, ids.next(), names, values);
    }
    return CimStatus::Success;
}

CimStatus removeFrom(RecordStore& store, const std::string& path, const std::string& child) {
    if (!isBuiltInNamespace(path) && !store.hasNamespace(path)) {
        return CimStatus::NotConnected;
    }
    const auto removed = path + '\\' + child;
    if (!store.hasNamespace(removed)) {
        return CimStatus::NoLocator;
    }
    store.removeNamespace(removed);
    if (store.namespacesIn(path).empty()) {
        if (isBuiltInNamespace(path)) {
            return CimStatus::NoLocator;
        }
        store.removeNamespace(path);
    }
    return CimStatus::Success;
}

/// The status of `use`, which gets the store; `unusable` where it cannot be opened, and `failed` where a step
/// in it fails.
template <typename Use>
CimStatus inTransaction(const std::filesystem::path& file, CimStatus unusable, CimStatus failed,
                        const Use& use) {
    std::optional<RecordStore> store;
    try {
        store.emplace(file, Database::Access::Write);
    } catch (const DatabaseError&) {
        return unusable;
    }
    try {
        // What was made before a step that ends the operation stays, as it does over COM.
        const auto status = use(*store);
        store->commit();
        return status;
    } catch (const DatabaseError&) {
        return failed;
    }
}

} // namespace

CimStatus LinuxCim::writeRecord(const std::vector<std::string>& names, const std::vector<std::string>& values,
                                const char* className, const wchar_t* nameSpace) {
    if (!records_) {
        return CimStatus::NoLocator;
    }
    const auto path = namespacePath(nameSpace);
    if (isBuiltInNamespace(path)) {
        // What the machine tells of itself is not written to.
        return CimStatus::NotConnected;
    }
    return inTransaction(*records_, CimStatus::NoLocator, CimStatus::NotConnected, [&](RecordStore& store) {
        return writeInto(store, path, className, names, values);
    });
}

CimStatus LinuxCim::removeNamespace(const wchar_t* root, const wchar_t* parent, const wchar_t* child) {
    const auto path = namespacePath(root) + '\\' + namespacePath(parent);
    std::error_code error;
    if (!records_) {
        return CimStatus::NoLocator;
    }
    if (!std::filesystem::exists(*records_, error)) {
        return error || isBuiltInNamespace(path) ? CimStatus::NoLocator : CimStatus::NotConnected;
    }
    return inTransaction(*records_, CimStatus::NoLocator, CimStatus::NoLocator,
                         [&](RecordStore& store) { return removeFrom(store, path, namespacePath(child)); });
}

} // namespace vexil::platform
