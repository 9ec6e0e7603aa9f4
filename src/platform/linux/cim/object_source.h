#pragma once

#include "platform/linux/cim/machine_objects.h"
#include "platform/linux/cim/record_store.h"
#include "system/cim/query_text.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vexil::platform {

/// One namespace, as queries see it.
class ObjectSource {
public:
    /// `root` is that of the machine's files; without `records` there are the built-in namespaces only.
    ObjectSource(std::filesystem::path root, std::optional<std::filesystem::path> records,
                 const wchar_t* nameSpace);

    /// Not located: the file of the records cannot be used. Not connected: there is no such namespace.
    [[nodiscard]] system::CimConnection connection() const { return connection_; }

    /// The objects of a class; nothing if there is no such class. Throws `DatabaseError`.
    [[nodiscard]] std::optional<std::vector<CimObject>> objects(const std::string& className);

private:
    void openRecords();
    [[nodiscard]] std::vector<CimObject> namespacesWithin();
    [[nodiscard]] std::vector<CimObject> definitions();

    std::filesystem::path root_;
    std::optional<std::filesystem::path> records_;
    std::string path_;
    system::CimConnection connection_;
    std::optional<RecordStore> store_;
};

} // namespace vexil::platform
