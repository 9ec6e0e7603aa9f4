#pragma once

#include "platform/linux/cim/machine_objects.h"
#include "platform/linux/cim/sqlite_database.h"
#include "system/cim/record_schema.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

// The repository of namespaces, classes and records, in one SQLite file. Every class has the properties of
// `record_schema.h`. Namespaces are paths like "ROOT\Norvane"; names compare without regard to ASCII case.
namespace vexil::platform {

class RecordStore {
public:
    /// Opens the file for one transaction: a reader sees one state throughout, and what a writer does stands
    /// only after its `commit`. A writer makes folder and file. Throws `DatabaseError` for a file that is
    /// something else, which is left as it is.
    RecordStore(const std::filesystem::path& file, Database::Access access);

    [[nodiscard]] bool hasNamespace(const std::string& path);
    /// The names of the namespaces right below.
    [[nodiscard]] std::vector<std::string> namespacesIn(const std::string& path);
    void addNamespace(const std::string& path);
    /// With everything in it.
    void removeNamespace(const std::string& path);

    [[nodiscard]] std::vector<std::string> classesIn(const std::string& nameSpace);
    /// The number by which the operations below know a class; nothing if there is none.
    using ClassNumber = std::int64_t;
    [[nodiscard]] std::optional<ClassNumber> findClass(const std::string& nameSpace, const std::string& name);
    ClassNumber addClass(const std::string& nameSpace, const std::string& name);

    [[nodiscard]] system::RecordIds ids(ClassNumber owner);
    /// By id. A property that was not written is empty.
    [[nodiscard]] std::vector<CimObject> records(ClassNumber owner);
    /// Names that are no property of a record are passed over, and of a name that stands twice the last value
    /// counts.
    void addRecord(ClassNumber owner, std::int32_t id, const std::vector<std::string>& names,
                   const std::vector<std::string>& values);
    /// False if there is none with this id.
    bool removeRecord(ClassNumber owner, std::int32_t id);

    /// Looks through the whole file for damage; throws `DatabaseError`.
    void verify();
    /// Writes without a change, so that the commit fails where nothing can be written.
    void proveWritable();
    void commit();

private:
    Database database_;
    std::optional<Transaction> transaction_;
    bool hasTables_ = true; ///< false in an empty file that was opened to be read
};

} // namespace vexil::platform
