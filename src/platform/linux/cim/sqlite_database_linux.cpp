#include "platform/linux/cim/sqlite_database.h"

#include <sqlite3.h>

#include <cstring>

namespace vexil::platform {

namespace {

constexpr int waitMilliseconds = 30000;

/// What the system itself said, where the failure came from there.
std::string systemReason(sqlite3* database) {
    const int error = sqlite3_system_errno(database);
    return error == 0 ? std::string() : std::string(": ") + std::strerror(error);
}

[[noreturn]] void fail(sqlite3* database, int code) {
    if (database == nullptr) {
        throw DatabaseError(sqlite3_errstr(code));
    }
    std::string reason = sqlite3_errmsg(database);
    switch (code & 0xFF) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        throw UnfitDatabase(reason);
    case SQLITE_CANTOPEN:
    case SQLITE_IOERR:
    case SQLITE_FULL:
        reason += systemReason(database);
        break;
    default:
        break;
    }
    throw DatabaseError(reason);
}

void check(sqlite3* database, int code) {
    if (code != SQLITE_OK) {
        fail(database, code);
    }
}

} // namespace

void Database::Close::operator()(sqlite3* database) const { sqlite3_close_v2(database); }

Database::Database(const std::filesystem::path& file, Access access) {
    sqlite3* opened = nullptr;
    // A reader may have to take back what a killed writer left half done, so it opens for writing as well; a
    // file that it may not write to is opened for reading all the same.
    const int flags = SQLITE_OPEN_READWRITE | (access == Access::Write ? SQLITE_OPEN_CREATE : 0);
    const int code = sqlite3_open_v2(file.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    database_.reset(opened);
    check(opened, code);
    check(opened, sqlite3_extended_result_codes(opened, 1));
    check(opened, sqlite3_busy_timeout(opened, waitMilliseconds));
    // A record that was acknowledged survives a failure of power as well. Anything less leaves the end of the
    // journal, which is the commit, to whenever its folder is written.
    execute("PRAGMA synchronous = EXTRA");
}

void Database::execute(const std::string& sql) {
    check(get(), sqlite3_exec(get(), sql.c_str(), nullptr, nullptr, nullptr));
}

std::int64_t Database::number(const std::string& sql) {
    Statement statement(*this, sql);
    statement.next();
    return statement.number(0);
}

void Statement::Finalize::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

Statement::Statement(const Database& database, std::string_view sql) : database_(database) {
    sqlite3_stmt* statement = nullptr;
    check(database.get(),
          sqlite3_prepare_v2(database.get(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr));
    statement_.reset(statement);
}

Statement& Statement::bind(int parameter, std::int64_t value) {
    check(database_.get(), sqlite3_bind_int64(statement_.get(), parameter, value));
    return *this;
}

Statement& Statement::bind(int parameter, std::string_view text) {
    check(database_.get(), sqlite3_bind_text(statement_.get(), parameter, text.data(),
                                             static_cast<int>(text.size()), SQLITE_TRANSIENT));
    return *this;
}

bool Statement::next() {
    const int code = sqlite3_step(statement_.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        fail(database_.get(), code);
    }
    return code == SQLITE_ROW;
}

std::int64_t Statement::number(int column) const { return sqlite3_column_int64(statement_.get(), column); }

bool Statement::isNull(int column) const {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

std::string Statement::text(int column) const {
    const auto* text = sqlite3_column_text(statement_.get(), column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement_.get(), column));
    return text == nullptr ? std::string() : std::string(reinterpret_cast<const char*>(text), size);
}

Transaction::Transaction(Database& database) : database_(database) { database_.execute("BEGIN IMMEDIATE"); }

Transaction::~Transaction() {
    if (open_) {
        try {
            database_.execute("ROLLBACK");
        } catch (const DatabaseError&) {
            // Some failures have rolled back already; closing the database does it for all others.
        }
    }
}

void Transaction::commit() {
    database_.execute("COMMIT");
    open_ = false;
}

} // namespace vexil::platform
