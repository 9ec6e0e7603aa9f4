#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

// A database file and its statements. Every failure is a `DatabaseError`, whose text says what was wrong.
namespace vexil::platform {

class DatabaseError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The file itself is what is wrong: damaged, or not what it should be.
class UnfitDatabase final : public DatabaseError {
public:
    using DatabaseError::DatabaseError;
};

class Database {
public:
    enum class Access { Read, Write };

    /// `Write` makes the file where there is none. A writer that finds another at work waits up to half a
    /// minute for it.
    Database(const std::filesystem::path& file, Access access);

    /// Runs statements that give no rows.
    void execute(const std::string& sql);
    /// The only value of the only row.
    [[nodiscard]] std::int64_t number(const std::string& sql);
    [[nodiscard]] sqlite3* get() const { return database_.get(); }

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };
    std::unique_ptr<sqlite3, Close> database_;
};

/// A statement with its parameters, numbered from 1, and its columns, numbered from 0.
class Statement {
public:
    Statement(const Database& database, std::string_view sql);

    Statement& bind(int parameter, std::int64_t value);
    Statement& bind(int parameter, std::string_view text);

    /// Moves to the next row; false behind the last one.
    bool next();
    [[nodiscard]] std::int64_t number(int column) const;
    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] std::string text(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };
    const Database& database_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

/// Everything up to `commit`, or nothing. One writer at a time: it waits here for the others.
class Transaction {
public:
    explicit Transaction(Database& database);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    /// Takes everything back that was not committed.
    ~Transaction();

    void commit();

private:
    Database& database_;
    bool open_ = true;
};

} // namespace vexil::platform
