#include "platform/linux/cim/record_store.h"

#include "system/cim/wql.h"

#include <array>
#include <system_error>

namespace vexil::platform {

namespace {

namespace fs = std::filesystem;

/// "VXCM", and the version of the tables.
constexpr std::int64_t applicationId = 0x5658434D;
constexpr std::int64_t formatVersion = 1;

/// The columns behind the key, for a list that has begun.
std::string textColumns(const std::string& type = {}) {
    std::string columns;
    for (const char* name : system::recordTexts) {
        columns += std::string(", ") + name + type;
    }
    return columns;
}

std::string tables() {
    return "CREATE TABLE namespace (path TEXT PRIMARY KEY COLLATE NOCASE) WITHOUT ROWID;"
           "CREATE TABLE class (number INTEGER PRIMARY KEY,"
           " namespace TEXT NOT NULL COLLATE NOCASE REFERENCES namespace ON DELETE CASCADE,"
           " name TEXT NOT NULL COLLATE NOCASE, UNIQUE (namespace, name));"
           "CREATE TABLE record (class INTEGER NOT NULL REFERENCES class ON DELETE CASCADE, " +
           std::string(system::recordKey) + " INTEGER NOT NULL" + textColumns(" TEXT") +
           ", PRIMARY KEY (class, " + system::recordKey +
           ")) WITHOUT ROWID;"
           "PRAGMA application_id = " +
           std::to_string(applicationId) + ";PRAGMA user_version = " + std::to_string(formatVersion);
}

/// Whether the database holds the tables; false for a new one. Throws for everything else.
bool holdsTables(Database& database) {
    const auto application = database.number("PRAGMA application_id");
    const auto version = database.number("PRAGMA user_version");
    if (application == applicationId && version == formatVersion) {
        return true;
    }
    if (application == applicationId && version > formatVersion) {
        throw UnfitDatabase("it was written by a newer version of this program");
    }
    if (application != 0 || version != 0 || database.number("SELECT count(*) FROM sqlite_master") != 0) {
        throw UnfitDatabase("it is a database of another program");
    }
    return false;
}

const fs::path& prepared(const fs::path& file, Database::Access access) {
    const auto folder = file.parent_path();
    std::error_code error;
    if (access == Database::Access::Write && fs::create_directories(folder, error)) {
        fs::permissions(folder, fs::perms::owner_all, error);
    }
    if (error) {
        throw DatabaseError("the folder cannot be made: " + error.message());
    }
    return file;
}

/// In the class that parameter 1 names.
constexpr std::string_view ofClass = " WHERE class = ?1";

} // namespace

RecordStore::RecordStore(const fs::path& file, Database::Access access)
    : database_(prepared(file, access), access) {
    database_.execute("PRAGMA foreign_keys = ON");
    if (access == Database::Access::Read) {
        database_.execute("BEGIN");
        hasTables_ = holdsTables(database_);
        return;
    }
    transaction_.emplace(database_);
    if (!holdsTables(database_)) {
        database_.execute(tables());
    }
}

bool RecordStore::hasNamespace(const std::string& path) {
    return hasTables_ && Statement(database_, "SELECT 1 FROM namespace WHERE path = ?1").bind(1, path).next();
}

std::vector<std::string> RecordStore::namespacesIn(const std::string& path) {
    std::vector<std::string> names;
    if (!hasTables_) {
        return names;
    }
    const auto start = path + '\\';
    Statement found(database_, "SELECT substr(path, length(?1) + 1) FROM namespace"
                               " WHERE substr(path, 1, length(?1)) = ?1 COLLATE NOCASE ORDER BY path");
    found.bind(1, start);
    while (found.next()) {
        if (auto name = found.text(0); name.find('\\') == std::string::npos) {
            names.push_back(std::move(name));
        }
    }
    return names;
}

void RecordStore::addNamespace(const std::string& path) {
    Statement(database_, "INSERT OR IGNORE INTO namespace VALUES (?1)").bind(1, path).next();
}

void RecordStore::removeNamespace(const std::string& path) {
    Statement(database_, "DELETE FROM namespace"
                         " WHERE path = ?1 OR substr(path, 1, length(?2)) = ?2 COLLATE NOCASE")
        .bind(1, path)
        .bind(2, path + '\\')
        .next();
}

std::vector<std::string> RecordStore::classesIn(const std::string& nameSpace) {
    std::vector<std::string> names;
    if (!hasTables_) {
        return names;
    }
    Statement found(database_, "SELECT name FROM class WHERE namespace = ?1 ORDER BY name");
    found.bind(1, nameSpace);
    while (found.next()) {
        names.push_back(found.text(0));
    }
    return names;
}

std::optional<RecordStore::ClassNumber> RecordStore::findClass(const std::string& nameSpace,
                                                               const std::string& name) {
    if (!hasTables_) {
        return std::nullopt;
    }
    Statement found(database_, "SELECT number FROM class WHERE namespace = ?1 AND name = ?2");
    found.bind(1, nameSpace).bind(2, name);
    return found.next() ? std::optional(found.number(0)) : std::nullopt;
}

RecordStore::ClassNumber RecordStore::addClass(const std::string& nameSpace, const std::string& name) {
    Statement(database_, "INSERT INTO class (namespace, name) VALUES (?1, ?2)")
        .bind(1, nameSpace)
        .bind(2, name)
        .next();
    return database_.number("SELECT last_insert_rowid()");
}

system::RecordIds RecordStore::ids(ClassNumber owner) {
    system::RecordIds ids;
    Statement found(database_, "SELECT Id FROM record" + std::string(ofClass));
    found.bind(1, owner);
    while (found.next()) {
        ids.add(static_cast<std::int32_t>(found.number(0)));
    }
    return ids;
}

std::vector<CimObject> RecordStore::records(ClassNumber owner) {
    std::vector<CimObject> objects;
    Statement found(database_,
                    "SELECT Id" + textColumns() + " FROM record" + std::string(ofClass) + " ORDER BY Id");
    found.bind(1, owner);
    while (found.next()) {
        CimObject object;
        object.emplace_back(system::recordKey, static_cast<std::int32_t>(found.number(0)));
        int column = 0;
        for (const char* name : system::recordTexts) {
            ++column;
            object.emplace_back(name, found.isNull(column) ? system::CimValue()
                                                           : system::CimValue(found.text(column)));
        }
        objects.push_back(std::move(object));
    }
    return objects;
}

void RecordStore::addRecord(ClassNumber owner, std::int32_t id, const std::vector<std::string>& names,
                            const std::vector<std::string>& values) {
    Statement added(database_, "INSERT INTO record VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9)");
    constexpr int firstText = 3;
    static_assert(firstText + system::recordTexts.size() == 10);
    added.bind(1, owner).bind(2, std::int64_t{id});
    for (std::size_t i = 0; i < names.size(); ++i) {
        for (std::size_t text = 0; text < system::recordTexts.size(); ++text) {
            if (system::equalIgnoringCase(names[i], system::recordTexts[text])) {
                added.bind(firstText + static_cast<int>(text), values[i]);
            }
        }
    }
    added.next();
}

bool RecordStore::removeRecord(ClassNumber owner, std::int32_t id) {
    Statement(database_, "DELETE FROM record WHERE class = ?1 AND Id = ?2")
        .bind(1, owner)
        .bind(2, std::int64_t{id})
        .next();
    return database_.number("SELECT changes()") != 0;
}

void RecordStore::verify() {
    Statement checked(database_, "PRAGMA quick_check(1)");
    checked.next();
    if (const auto found = checked.text(0); found != "ok") {
        throw UnfitDatabase("it is damaged: " + found);
    }
}

void RecordStore::proveWritable() {
    // Writes the page that holds it, though the value stays.
    database_.execute("PRAGMA user_version = " + std::to_string(formatVersion));
}

void RecordStore::commit() {
    if (transaction_) {
        transaction_->commit();
    }
}

} // namespace vexil::platform
