#include "settings/KDrawPropertyManager.h"

#include "platform/registry/CRegKey.h"
#include "platform/registry/RegistryTransaction.h"
#include "settings/ApplicationKey.h"

namespace {

constexpr const char* kDefault = "Default";

const char* Name(const char* key) { return key ? key : kDefault; }

bool HasRecord(const CString& path) {
    return CRegKey().Open(HKEY_CURRENT_USER, path, KEY_READ) == ERROR_SUCCESS;
}

}  // namespace

KDrawPropertyManager& KDrawPropertyManager::Instance() {
    static auto& manager = *new KDrawPropertyManager;
    return manager;
}

KDrawProperty& KDrawPropertyManager::GetProperty(const char* key) {
    const auto [entry, isNew] = cache.try_emplace(Name(key));
    if (isNew) {
        const RegistryTransaction together(TransactionFor::Reading);
        entry->second.exchange(HKEY_CURRENT_USER, GetRegSection(key, true), false);
    }
    return entry->second;
}

void KDrawPropertyManager::SetProperty(const char* key, KDrawProperty& property) {
    cache.insert_or_assign(Name(key), property);
}

void KDrawPropertyManager::SetDefault(KDrawProperty& property) {
    property.exchange(HKEY_CURRENT_USER, GetRegSection(kDefault, false), true);
}

void KDrawPropertyManager::Save(const char* key) {
    const auto entry = cache.find(std::string_view(Name(key)));
    if (entry != cache.end()) entry->second.exchange(HKEY_CURRENT_USER, GetRegSection(key, false), true);
}

void KDrawPropertyManager::Save() {
    const RegistryTransaction together;
    for (auto& [key, property] : cache)
        property.exchange(HKEY_CURRENT_USER, GetRegSection(key.c_str(), false), true);
    cache.clear();
}

void KDrawPropertyManager::Reset(const char* key) {
    const auto entry = cache.find(std::string_view(Name(key)));
    if (entry != cache.end()) cache.erase(entry);
}

void KDrawPropertyManager::Reset() { cache.clear(); }

CString KDrawPropertyManager::GetRegSection(const char* name, bool probe) {
    const CString path = DrawPropertyKey(Name(name));
    return probe && !HasRecord(path) ? DrawPropertyKey(kDefault) : path;
}
