#include "platform/registry/RegistryStore.h"

#include <algorithm>
#include <utility>

#include "platform/database/Database.h"
#include "platform/registry/FoldCase.h"

namespace {

LONG ErrorOf(DatabaseResult result) {
    switch (result) {
        case DatabaseResult::Done:
        case DatabaseResult::Row:
            return ERROR_SUCCESS;
        case DatabaseResult::Busy:
            return ERROR_BUSY;
        case DatabaseResult::Full:
            return ERROR_DISK_FULL;
        case DatabaseResult::Damaged:
            return ERROR_BADDB;
        case DatabaseResult::NoMemory:
            return ERROR_NOT_ENOUGH_MEMORY;
        case DatabaseResult::TooBig:
            return ERROR_INVALID_PARAMETER;
        default:
            return ERROR_REGISTRY_IO_FAILED;
    }
}

// Cuts the next name that is not empty off `path`; empty at the end.
std::string_view NextName(std::string_view& path) {
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('\\'), path.size());
        const std::string_view name = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (!name.empty()) return name;
    }
    return {};
}

}  // namespace

// A transaction that ends on every way out, without memory too.
class RegistryStore::Scope {
  public:
    explicit Scope(RegistryStore& store) : store_(&store), status_(store.Begin()) {}
    ~Scope() {
        if (store_) store_->End();
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

    // Whether it began.
    LONG Status() const { return status_; }
    LONG End() { return std::exchange(store_, nullptr)->End(); }

  private:
    RegistryStore* store_;  // null once ended
    LONG status_;
};

RegistryStore::RegistryStore(std::unique_ptr<Database> database) : database_(std::move(database)) {}
RegistryStore::~RegistryStore() = default;

bool RegistryStore::HasMoved() const { return database_->HasMoved(); }

LONG RegistryStore::Check(DatabaseResult result) {
    const LONG status = ErrorOf(result);
    if (status != ERROR_SUCCESS) reason_ = database_->Reason();
    return status;
}

LONG RegistryStore::Begin(TransactionFor purpose) {
    const bool reads = purpose == TransactionFor::Reading;
    if (depth_++ > 0) return reads ? transactionStatus_ : ForWriting();
    onlyReads_ = reads;
    // Immediately a writer: a reader that turns writer later fails when another process wrote in between.
    transactionStatus_ = Check(database_->Execute(reads ? "BEGIN" : "BEGIN IMMEDIATE"));
    return transactionStatus_;
}

LONG RegistryStore::ForWriting() {
    if (depth_ > 0 && std::exchange(onlyReads_, false)) {
        database_->Execute("COMMIT");
        transactionStatus_ = Check(database_->Execute("BEGIN IMMEDIATE"));
    }
    return depth_ > 0 ? transactionStatus_ : ERROR_SUCCESS;
}

LONG RegistryStore::End() {
    if (--depth_ > 0 || transactionStatus_ != ERROR_SUCCESS) return transactionStatus_;
    const LONG status = Check(database_->Execute("COMMIT"));
    if (status != ERROR_SUCCESS) Abandon(status);
    return status;
}

void RegistryStore::Abandon(LONG status) {
    if (!database_->IsAutocommit()) database_->Execute("ROLLBACK");
    transactionStatus_ = status;
    ++undoneCount_;
}

LONG RegistryStore::Change(StatementRun& run) {
    if (const LONG status = ForWriting()) return status;
    const LONG status = Check(run.Step());
    // A value that no store would take harms nothing else of the transaction.
    if (depth_ > 0 && status != ERROR_SUCCESS && status != ERROR_INVALID_PARAMETER) Abandon(status);
    return status;
}

LONG RegistryStore::FindChild(KeyId parent, std::string_view name, KeyId& found) {
    const std::string fold = FoldCase(name);
    StatementRun run(database_->Prepared("SELECT id FROM rkey WHERE parent=? AND fold=?"));
    const DatabaseResult result = run.Bind(parent).BindText(fold).Step();
    if (result == DatabaseResult::Done) return ERROR_FILE_NOT_FOUND;
    if (result == DatabaseResult::Row) found = run.Integer(0);
    return Check(result);
}

LONG RegistryStore::InsertChild(KeyId parent, std::string_view name, KeyId& inserted) {
    const std::string fold = FoldCase(name);
    StatementRun run(database_->Prepared("INSERT INTO rkey(parent, name, fold) VALUES(?, ?, ?)"));
    run.Bind(parent).BindText(name).BindText(fold);
    const LONG status = Change(run);
    if (status == ERROR_SUCCESS) inserted = database_->LastInsertId();
    return status;
}

LONG RegistryStore::FindKey(KeyId base, std::string_view path, KeyId& found) {
    {
        StatementRun run(database_->Prepared("SELECT id FROM rkey WHERE id=?"));
        const DatabaseResult result = run.Bind(base).Step();
        if (result == DatabaseResult::Done) return ERROR_KEY_DELETED;
        if (const LONG status = Check(result)) return status;
    }
    KeyId key = base;
    for (std::string_view name = NextName(path); !name.empty(); name = NextName(path))
        if (const LONG status = FindChild(key, name, key)) return status;
    found = key;
    return ERROR_SUCCESS;
}

LONG RegistryStore::CreateKey(KeyId base, std::string_view path, KeyId& found, bool& created) {
    created = false;
    const LONG present = FindKey(base, path, found);
    if (present != ERROR_FILE_NOT_FOUND) return present;
    Scope scope(*this);
    LONG status = scope.Status();
    KeyId key = base;
    // Another process may have been faster, with the base or with any of the names.
    if (status == ERROR_SUCCESS) status = FindKey(base, {}, key);
    while (status == ERROR_SUCCESS) {
        const std::string_view name = NextName(path);
        if (name.empty()) break;
        status = FindChild(key, name, key);
        if (status != ERROR_FILE_NOT_FOUND) continue;
        status = InsertChild(key, name, key);
        created = status == ERROR_SUCCESS;
    }
    const LONG ended = scope.End();
    if (status == ERROR_SUCCESS) status = ended;
    if (status == ERROR_SUCCESS) found = key;
    return status;
}

LONG RegistryStore::HasSubKeys(KeyId key, bool& answer) {
    StatementRun run(database_->Prepared("SELECT EXISTS(SELECT 1 FROM rkey WHERE parent=?)"));
    const DatabaseResult result = run.Bind(key).Step();
    answer = result == DatabaseResult::Row && run.Integer(0) != 0;
    return Check(result);
}

LONG RegistryStore::DeleteTree(KeyId key) {
    // UNION, not UNION ALL: a damaged store may hold a cycle.
    StatementRun values(
        database_->Prepared("WITH RECURSIVE tree(id) AS (SELECT ? UNION SELECT rkey.id FROM rkey "
                            "JOIN tree ON rkey.parent=tree.id) DELETE FROM rvalue WHERE key IN tree"));
    if (const LONG status = Change(values.Bind(key))) return status;
    StatementRun keys(
        database_->Prepared("WITH RECURSIVE tree(id) AS (SELECT ? UNION SELECT rkey.id FROM rkey "
                            "JOIN tree ON rkey.parent=tree.id) DELETE FROM rkey WHERE id IN tree"));
    return Change(keys.Bind(key));
}

LONG RegistryStore::DeleteKey(KeyId base, std::string_view path, bool withSubKeys) {
    Scope scope(*this);
    LONG status = scope.Status();
    KeyId key = 0;
    bool refused = false;
    if (status == ERROR_SUCCESS) status = FindKey(base, path, key);
    if (status == ERROR_SUCCESS && !withSubKeys) status = HasSubKeys(key, refused);
    if (status == ERROR_SUCCESS && (refused || key == kRoot)) status = ERROR_ACCESS_DENIED;
    if (status == ERROR_SUCCESS) status = DeleteTree(key);
    const LONG ended = scope.End();
    return status == ERROR_SUCCESS ? ended : status;
}

LONG RegistryStore::EnumKey(KeyId key, DWORD index, std::string& name) {
    StatementRun run(
        database_->Prepared("SELECT name FROM rkey WHERE parent=? ORDER BY id LIMIT 1 OFFSET ?"));
    const DatabaseResult result = run.Bind(key).Bind(index).Step();
    if (result == DatabaseResult::Done) return ERROR_NO_MORE_ITEMS;
    if (result == DatabaseResult::Row) name = run.Bytes(0);
    return Check(result);
}

LONG RegistryStore::ReadValue(KeyId key, std::string_view name, Value& value) {
    const std::string fold = FoldCase(name);
    StatementRun run(database_->Prepared("SELECT kind, data FROM rvalue WHERE key=? AND fold=?"));
    const DatabaseResult result = run.Bind(key).BindText(fold).Step();
    if (result == DatabaseResult::Done) return ERROR_FILE_NOT_FOUND;
    if (result == DatabaseResult::Row)
        value = {static_cast<DWORD>(run.Integer(0)), std::string(run.Bytes(1))};
    return Check(result);
}

LONG RegistryStore::WriteValue(KeyId key, std::string_view name, DWORD kind, std::string_view data) {
    const std::string fold = FoldCase(name);
    // The first write of a name gives it its place and spelling; a key that is gone takes no value.
    StatementRun run(
        database_->Prepared("INSERT INTO rvalue(key, name, fold, kind, data) SELECT ?1, ?2, ?3, ?4, ?5 "
                            "WHERE EXISTS(SELECT 1 FROM rkey WHERE id=?1) "
                            "ON CONFLICT(key, fold) DO UPDATE SET kind=?4, data=?5"));
    run.Bind(key).BindText(name).BindText(fold).Bind(kind).BindBytes(data);
    if (const LONG status = Change(run)) return status;
    return database_->Changes() > 0 ? ERROR_SUCCESS : ERROR_KEY_DELETED;
}

LONG RegistryStore::EnumValue(KeyId key, DWORD index, std::string& name, Value& value) {
    StatementRun run(
        database_->Prepared("SELECT name, kind, data FROM rvalue WHERE key=? ORDER BY seq LIMIT 1 OFFSET ?"));
    const DatabaseResult result = run.Bind(key).Bind(index).Step();
    if (result == DatabaseResult::Done) return ERROR_NO_MORE_ITEMS;
    if (result == DatabaseResult::Row) {
        name = run.Bytes(0);
        value = {static_cast<DWORD>(run.Integer(1)), std::string(run.Bytes(2))};
    }
    return Check(result);
}

LONG RegistryStore::DeleteValue(KeyId key, std::string_view name) {
    const std::string fold = FoldCase(name);
    StatementRun run(database_->Prepared("DELETE FROM rvalue WHERE key=? AND fold=?"));
    if (const LONG status = Change(run.Bind(key).BindText(fold))) return status;
    return database_->Changes() > 0 ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}
