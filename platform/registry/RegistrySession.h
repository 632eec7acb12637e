// The process's one connection to the registry: opens the store on first use and again when its file changes,
// keeps the open handles, and tells the user once what goes wrong.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "platform/registry/RegistryStore.h"

class RegistrySession {
  public:
    // Closed at the end of the process; used after that, it opens again.
    static RegistrySession& Instance();

    // The store of the file in force; null only without memory. Invalidates handles when the file changed.
    std::shared_ptr<RegistryStore> Store();
    void UseFile(const char* path);
    void Close();

    HKEY AddHandle(RegistryStore::KeyId key, REGSAM access);
    // ERROR_INVALID_HANDLE, or ERROR_ACCESS_DENIED when the handle lacks one of the rights in `access`.
    LONG FindHandle(HKEY handle, REGSAM access, RegistryStore::KeyId& key) const;
    bool RemoveHandle(HKEY handle) { return handles_.erase(handle) > 0; }

    // Takes note of the outcome of a use of the store and returns it. A damaged store is looked at again with
    // the next use.
    LONG Note(LONG status);
    // The same for a write, of whose failure the user is told the first time.
    LONG NoteWrite(const RegistryStore& store, LONG status);

  private:
    struct OpenKey {
        RegistryStore::KeyId key;
        REGSAM access;
        unsigned generation;
    };

    std::string wantedFile_;  // empty: the environment's
    std::string openedFile_;
    std::shared_ptr<RegistryStore> store_;
    std::unordered_map<HKEY, OpenKey> handles_;
    std::uintptr_t nextHandle_ = 0x100000000;
    // Counts the stores that were left and the transactions that were undone: handles from before such an
    // event may name keys that are not there.
    unsigned Generation() const { return generation_ + (store_ ? store_->UndoneCount() : 0); }

    unsigned generation_ = 0;
    bool failureReported_ = false;
    bool damaged_ = false;
};
