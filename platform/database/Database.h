// One SQLite connection with its prepared statements, and one run of such a statement. Results are SQLite's
// result codes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

class Database {
  public:
    Database() = default;
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // Opens or creates the file; ":memory:" is a database of this connection alone. Call once.
    int Open(const char* path);
    // Runs statements that yield no rows of interest.
    int Execute(const char* sql);
    // The first column of the only row of `sql`; empty when there is none.
    int Query(const char* sql, std::string& answer);
    // The statement of a literal `sql`, prepared once; null when it does not compile.
    sqlite3_stmt* Prepared(const char* sql);
    // Replaces everything in this database by what `source` holds.
    int CopyFrom(Database& source);

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
    // SQLITE_ROW, SQLITE_DONE or the failure; a statement that did not compile is a failure.
    int Step();
    std::int64_t Integer(int column) const;
    // Valid until the next step or the end of the run.
    std::string_view Bytes(int column) const;

  private:
    // Keeps the first failure to bind.
    void Note(int result) {
        if (bindResult_ == 0) bindResult_ = result;
    }

    sqlite3_stmt* statement_;
    int bound_ = 0;
    int bindResult_ = 0;
};
