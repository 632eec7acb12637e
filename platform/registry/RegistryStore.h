// Keys and values over one database: names ignore case and keep the spelling of their first write, values
// enumerate in the order in which they were first written. Results are the registry's error codes.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/registry/RegistryTypes.h"

class Database;
class StatementRun;
enum class DatabaseResult;

class RegistryStore {
  public:
    using KeyId = std::int64_t;
    static constexpr KeyId kRoot = 1;

    struct Value {
        DWORD kind = 0;
        std::string data;
    };

    // Takes a database whose tables exist.
    explicit RegistryStore(std::unique_ptr<Database> database);
    ~RegistryStore();

    // Paths are names joined by backslashes; empty names count for nothing.
    LONG FindKey(KeyId base, std::string_view path, KeyId& found);
    LONG CreateKey(KeyId base, std::string_view path, KeyId& found, bool& created);
    // ERROR_ACCESS_DENIED for the root, and for a key with sub-keys unless they go with it.
    LONG DeleteKey(KeyId base, std::string_view path, bool withSubKeys);
    // In the order in which they were made; ERROR_NO_MORE_ITEMS from the first index without a key on.
    LONG EnumKey(KeyId key, DWORD index, std::string& name);

    LONG ReadValue(KeyId key, std::string_view name, Value& value);
    LONG WriteValue(KeyId key, std::string_view name, DWORD kind, std::string_view data);
    // ERROR_NO_MORE_ITEMS from the first index without a value on.
    LONG EnumValue(KeyId key, DWORD index, std::string& name, Value& value);
    LONG DeleteValue(KeyId key, std::string_view name);

    // Transactions nest; the outermost End() stores all or nothing. After one failed write of a transaction
    // everything in it is undone at once and its other writes fail alike.
    LONG Begin(TransactionFor purpose = TransactionFor::Writing);
    LONG End();
    bool InTransaction() const { return depth_ > 0; }

    // How many transactions were undone: ids of keys created in them may come again.
    unsigned UndoneCount() const { return undoneCount_; }

    // True when the file was renamed or removed: what is written now would be lost.
    bool HasMoved() const;
    // The last failure of the database in words.
    const std::string& Reason() const { return reason_; }

  private:
    class Scope;

    LONG FindChild(KeyId parent, std::string_view name, KeyId& found);
    LONG InsertChild(KeyId parent, std::string_view name, KeyId& inserted);
    LONG DeleteTree(KeyId key);
    LONG HasSubKeys(KeyId key, bool& answer);
    // Makes the transaction in force one that may write.
    LONG ForWriting();
    // Steps a statement that changes the store.
    LONG Change(StatementRun& run);
    // ERROR_SUCCESS for a row or the end, else the registry's code; remembers the reason.
    LONG Check(DatabaseResult result);
    void Abandon(LONG status);

    std::unique_ptr<Database> database_;
    std::string reason_;
    int depth_ = 0;
    bool onlyReads_ = false;
    unsigned undoneCount_ = 0;
    LONG transactionStatus_ = ERROR_SUCCESS;
};
