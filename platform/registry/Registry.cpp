#include "platform/registry/Registry.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <string>

#include "platform/registry/RegistrySession.h"
#include "platform/registry/RegistryTransaction.h"

namespace {

using KeyId = RegistryStore::KeyId;

// Runs `body(session, store, key id)` for an open key; nothing is thrown across it.
template <class Body>
LONG WithKey(HKEY handle, REGSAM access, Body body) {
    try {
        RegistrySession& session = RegistrySession::Instance();
        const auto store = session.Store();
        if (!store) return ERROR_NOT_ENOUGH_MEMORY;
        KeyId key = 0;
        if (const LONG status = session.FindHandle(handle, access, key)) return status;
        return session.Note(body(session, *store, key));
    } catch (const std::bad_alloc&) {
        return ERROR_NOT_ENOUGH_MEMORY;
    } catch (...) {
        return ERROR_REGISTRY_IO_FAILED;
    }
}

const char* TextOf(const char* text) { return text ? text : ""; }

LONG HandOverName(const std::string& found, char* name, DWORD* nameSize) {
    if (*nameSize <= found.size()) return ERROR_MORE_DATA;
    std::memcpy(name, found.c_str(), found.size() + 1);
    *nameSize = static_cast<DWORD>(found.size());
    return ERROR_SUCCESS;
}

LONG HandOver(const RegistryStore::Value& value, DWORD* kind, BYTE* data, DWORD* size) {
    const DWORD room = size ? *size : 0;
    const auto needed = static_cast<DWORD>(value.data.size());
    if (kind) *kind = value.kind;
    if (size) *size = needed;
    if (!data) return ERROR_SUCCESS;
    if (room < needed) return ERROR_MORE_DATA;
    std::copy(value.data.begin(), value.data.end(), data);
    return ERROR_SUCCESS;
}

LONG DeleteKey(HKEY handle, const char* subKey, bool withSubKeys) {
    if (!subKey) return ERROR_INVALID_PARAMETER;
    return WithKey(handle, 0, [&](RegistrySession& session, RegistryStore& store, KeyId key) {
        return session.NoteWrite(store, store.DeleteKey(key, subKey, withSubKeys));
    });
}

}  // namespace

LONG RegCreateKeyExA(HKEY key, const char* subKey, DWORD, char*, DWORD, REGSAM access, void*, HKEY* result,
                     DWORD* disposition) {
    if (!result) return ERROR_INVALID_PARAMETER;
    return WithKey(key, 0, [&](RegistrySession& session, RegistryStore& store, KeyId base) {
        KeyId opened = 0;
        bool created = false;
        if (const LONG status =
                session.NoteWrite(store, store.CreateKey(base, TextOf(subKey), opened, created)))
            return status;
        *result = session.AddHandle(opened, access);
        if (disposition) *disposition = created ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
        return ERROR_SUCCESS;
    });
}

LONG RegOpenKeyExA(HKEY key, const char* subKey, DWORD, REGSAM access, HKEY* result) {
    if (!result) return ERROR_INVALID_PARAMETER;
    return WithKey(key, 0, [&](RegistrySession& session, RegistryStore& store, KeyId base) {
        KeyId opened = 0;
        if (const LONG status = store.FindKey(base, TextOf(subKey), opened)) return status;
        *result = session.AddHandle(opened, access);
        return ERROR_SUCCESS;
    });
}

LONG RegCloseKey(HKEY key) {
    if (key == HKEY_CURRENT_USER) return ERROR_SUCCESS;
    return RegistrySession::Instance().RemoveHandle(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

LONG RegQueryValueExA(HKEY key, const char* name, DWORD*, DWORD* kind, BYTE* data, DWORD* size) {
    if (data && !size) return ERROR_INVALID_PARAMETER;
    return WithKey(key, KEY_QUERY_VALUE, [&](RegistrySession&, RegistryStore& store, KeyId id) {
        RegistryStore::Value value;
        if (const LONG status = store.ReadValue(id, TextOf(name), value)) return status;
        return HandOver(value, kind, data, size);
    });
}

LONG RegSetValueExA(HKEY key, const char* name, DWORD, DWORD kind, const BYTE* data, DWORD size) {
    const bool known = kind >= REG_SZ && kind <= REG_DWORD;
    if (!known || (!data && size > 0)) return ERROR_INVALID_PARAMETER;
    return WithKey(key, KEY_SET_VALUE, [&](RegistrySession& session, RegistryStore& store, KeyId id) {
        const std::string_view bytes(reinterpret_cast<const char*>(data), size);
        return session.NoteWrite(store, store.WriteValue(id, TextOf(name), kind, bytes));
    });
}

LONG RegEnumValueA(HKEY key, DWORD index, char* name, DWORD* nameSize, DWORD*, DWORD* kind, BYTE* data,
                   DWORD* size) {
    if (!name || !nameSize || (data && !size)) return ERROR_INVALID_PARAMETER;
    return WithKey(key, KEY_QUERY_VALUE, [&](RegistrySession&, RegistryStore& store, KeyId id) {
        std::string found;
        RegistryStore::Value value;
        if (const LONG status = store.EnumValue(id, index, found, value)) return status;
        if (const LONG status = HandOverName(found, name, nameSize)) return status;
        return HandOver(value, kind, data, size);
    });
}

LONG RegEnumKeyExA(HKEY key, DWORD index, char* name, DWORD* nameSize, DWORD*, char*, DWORD*, void*) {
    if (!name || !nameSize) return ERROR_INVALID_PARAMETER;
    return WithKey(key, KEY_ENUMERATE_SUB_KEYS, [&](RegistrySession&, RegistryStore& store, KeyId id) {
        std::string found;
        if (const LONG status = store.EnumKey(id, index, found)) return status;
        return HandOverName(found, name, nameSize);
    });
}

LONG RegDeleteValueA(HKEY key, const char* name) {
    return WithKey(key, KEY_SET_VALUE, [&](RegistrySession& session, RegistryStore& store, KeyId id) {
        return session.NoteWrite(store, store.DeleteValue(id, TextOf(name)));
    });
}

LONG RegDeleteKeyA(HKEY key, const char* subKey) { return DeleteKey(key, subKey, false); }
LONG RegDeleteTreeA(HKEY key, const char* subKey) { return DeleteKey(key, subKey, true); }

void SetRegistryFile(const char* path) { RegistrySession::Instance().UseFile(path); }

RegistryTransaction::RegistryTransaction(TransactionFor purpose) {
    try {
        RegistrySession& session = RegistrySession::Instance();
        store_ = session.Store();
        if (store_) session.NoteWrite(*store_, store_->Begin(purpose));
    } catch (...) {
        // Without memory to begin, each read and write stands alone.
    }
}

RegistryTransaction::~RegistryTransaction() { Commit(); }

LONG RegistryTransaction::Commit() {
    if (!store_) return ERROR_SUCCESS;
    const std::shared_ptr<RegistryStore> store = std::move(store_);
    try {
        return RegistrySession::Instance().NoteWrite(*store, store->End());
    } catch (...) {
        return ERROR_REGISTRY_IO_FAILED;
    }
}
