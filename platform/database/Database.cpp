#include "platform/database/Database.h"

#include <sqlite3.h>

#include <cstring>

namespace {

DatabaseResult ResultOf(int code) {
    switch (code & 0xFF) {
        case SQLITE_OK:
        case SQLITE_DONE:
            return DatabaseResult::Done;
        case SQLITE_ROW:
            return DatabaseResult::Row;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return DatabaseResult::Busy;
        case SQLITE_FULL:
            return DatabaseResult::Full;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return DatabaseResult::Damaged;
        case SQLITE_NOMEM:
            return DatabaseResult::NoMemory;
        case SQLITE_TOOBIG:
            return DatabaseResult::TooBig;
        case SQLITE_ERROR:
            return DatabaseResult::Refused;
        default:
            return DatabaseResult::Failed;
    }
}

}  // namespace

Database::~Database() {
    for (const auto& [sql, statement] : statements_) sqlite3_finalize(statement);
    sqlite3_close(connection_);
}

DatabaseResult Database::Open(const char* path) {
    constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int result = sqlite3_open_v2(path, &connection_, kFlags, nullptr);
    // Before the first pragma, which already needs a lock. Another process holds one for milliseconds.
    if (result == SQLITE_OK) sqlite3_busy_timeout(connection_, 5000);
    return ResultOf(result);
}

DatabaseResult Database::Execute(const char* sql) {
    return ResultOf(sqlite3_exec(connection_, sql, nullptr, nullptr, nullptr));
}

DatabaseResult Database::Query(const char* sql, std::string& answer) {
    answer.clear();
    sqlite3_stmt* statement = nullptr;
    int result = sqlite3_prepare_v2(connection_, sql, -1, &statement, nullptr);
    if (result != SQLITE_OK) return ResultOf(result);
    result = sqlite3_step(statement);
    if (result == SQLITE_ROW && sqlite3_column_text(statement, 0))
        answer = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    sqlite3_finalize(statement);
    return result == SQLITE_ROW ? DatabaseResult::Done : ResultOf(result);
}

sqlite3_stmt* Database::Prepared(const char* sql) {
    for (const auto& [known, statement] : statements_)
        if (known == sql) return statement;
    sqlite3_stmt* statement = nullptr;
    statements_.reserve(statements_.size() + 1);
    const int result =
        sqlite3_prepare_v3(connection_, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (result != SQLITE_OK) return nullptr;
    statements_.emplace_back(sql, statement);
    return statement;
}

DatabaseResult Database::CopyFrom(Database& source) {
    sqlite3_backup* copy = sqlite3_backup_init(connection_, "main", source.connection_, "main");
    if (!copy) return ResultOf(sqlite3_errcode(connection_));
    sqlite3_backup_step(copy, -1);
    return ResultOf(sqlite3_backup_finish(copy));
}

std::string Database::Reason() const {
    std::string reason = sqlite3_errmsg(connection_);
    const int systemError = connection_ ? sqlite3_system_errno(connection_) : 0;
    if (systemError != 0) reason += std::string(": ") + std::strerror(systemError);
    return reason;
}

bool Database::IsReadOnly() const { return sqlite3_db_readonly(connection_, "main") == 1; }
bool Database::IsAutocommit() const { return sqlite3_get_autocommit(connection_) != 0; }
int Database::Changes() const { return sqlite3_changes(connection_); }
std::int64_t Database::LastInsertId() const { return sqlite3_last_insert_rowid(connection_); }

bool Database::HasMoved() const {
    int moved = 0;
    const int result = sqlite3_file_control(connection_, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return result == SQLITE_OK && moved != 0;
}

StatementRun::~StatementRun() {
    if (!statement_) return;
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
}

StatementRun& StatementRun::Bind(std::int64_t value) {
    Note(sqlite3_bind_int64(statement_, ++bound_, value));
    return *this;
}

StatementRun& StatementRun::BindText(std::string_view text) {
    Note(sqlite3_bind_text64(statement_, ++bound_, text.data() ? text.data() : "", text.size(), SQLITE_STATIC,
                             SQLITE_UTF8));
    return *this;
}

StatementRun& StatementRun::BindBytes(std::string_view bytes) {
    Note(sqlite3_bind_blob64(statement_, ++bound_, bytes.data() ? bytes.data() : "", bytes.size(),
                             SQLITE_STATIC));
    return *this;
}

DatabaseResult StatementRun::Step() {
    if (!statement_) return DatabaseResult::Refused;
    return ResultOf(bindResult_ == SQLITE_OK ? sqlite3_step(statement_) : bindResult_);
}

std::int64_t StatementRun::Integer(int column) const { return sqlite3_column_int64(statement_, column); }

std::string_view StatementRun::Bytes(int column) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    const int size = sqlite3_column_bytes(statement_, column);
    return bytes && size > 0 ? std::string_view(bytes, static_cast<std::size_t>(size)) : std::string_view();
}
