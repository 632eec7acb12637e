// One SQLite connection with its prepared statements, and one run of such a statement.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

enum class DatabaseResult {
    Done,
    Row,      // a step gave a row
    Busy,     // another process holds the file for more than five seconds
    Full,     // the disk is
    Damaged,  // the file is, or it is no database at all
    NoMemory,
    TooBig,   // a text or block that no database takes
    Refused,  // a statement that does not fit the tables
    Failed,   // for any other reason
};

class Database {
  public:
    Database() = default;
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // Opens or creates the file; ":memory:" is a database of this connection alone. Call once.
    DatabaseResult Open(const char* path);
    // Runs statements that yield no rows of interest.
    DatabaseResult Execute(const char* sql);
    // The first column of the only row of `sql`; empty when there is none.
    DatabaseResult Query(const char* sql, std::string& answer);
    // The statement of a literal `sql`, prepared once; null when it does not compile.
    sqlite3_stmt* Prepared(const char* sql);
    // Replaces everything in this database by what `source` holds.
    DatabaseResult CopyFrom(Database& source);

    // The reason of the last failure in words, with the system's own where there is one.
    std::string Reason() const;
    bool IsReadOnly() const;
    // True outside of a transaction.
    bool IsAutocommit() const;
    // True when the file was renamed or removed while open.
    bool HasMoved() const;
    // Rows that the last statement inserted, changed or deleted.
    int Changes() const;
    std::int64_t LastInsertId() const;

  private:
    sqlite3* connection_ = nullptr;
    std::vector<std::pair<const char*, sqlite3_stmt*>> statements_;
};

// One run of a prepared statement: bind in order, step, read columns. Resets the statement on every way out.
class StatementRun {
  public:
    explicit StatementRun(sqlite3_stmt* statement) : statement_(statement) {}
    ~StatementRun();
    StatementRun(const StatementRun&) = delete;
    StatementRun& operator=(const StatementRun&) = delete;

    // What is bound must outlive the run.
    StatementRun& Bind(std::int64_t value);
    StatementRun& BindText(std::string_view text);
    StatementRun& BindBytes(std::string_view bytes);
    // Row, Done or the failure; a statement that did not compile is a failure.
    DatabaseResult Step();
    std::int64_t Integer(int column) const;
    // Valid until the next step or the end of the run.
    std::string_view Bytes(int column) const;

  private:
    // Keeps the first failure to bind, SQLite's code.
    void Note(int result) {
        if (bindResult_ == 0) bindResult_ = result;
    }

    sqlite3_stmt* statement_;
    int bound_ = 0;
    int bindResult_ = 0;
};
