#include "settings/StoredNames.h"

#include <array>

#include "platform/registry/CRegKey.h"
#include "platform/registry/RegistryTransaction.h"

namespace settings {

namespace {

// `enumerate(index, name, size)` until it has no more. A name that no buffer of this size takes is passed
// over.
template <class Enumerate>
std::vector<CString> NamesFrom(Enumerate enumerate) {
    std::vector<CString> names;
    std::array<char, 16384> name;
    for (DWORD i = 0;; ++i) {
        auto size = static_cast<DWORD>(name.size());
        const LONG status = enumerate(i, name.data(), &size);
        if (status == ERROR_SUCCESS)
            names.emplace_back(name.data(), static_cast<int>(size));
        else if (status != ERROR_MORE_DATA)
            return names;
    }
}

std::vector<CString> ValueNames(HKEY key) {
    return NamesFrom([key](DWORD i, char* name, DWORD* size) {
        return RegEnumValueA(key, i, name, size, nullptr, nullptr, nullptr, nullptr);
    });
}

}  // namespace

std::optional<std::vector<CString>> LoadNames(const CString& path) {
    const RegistryTransaction together(TransactionFor::Reading);
    CRegKey key;
    if (key.Open(HKEY_CURRENT_USER, path, KEY_READ) != ERROR_SUCCESS) return {};
    return ValueNames(key);
}

void SaveNames(const CString& path, const std::vector<CString>& names) {
    const RegistryTransaction together;
    CRegKey key;
    if (key.Create(HKEY_CURRENT_USER, path, KEY_ALL_ACCESS) != ERROR_SUCCESS) return;
    for (const CString& name : ValueNames(key)) RegDeleteValueA(key, name);
    for (const CString& name : names) RegSetValueExA(key, name, 0, REG_SZ, nullptr, 0);
}

std::vector<CString> SubKeyNames(HKEY key) {
    return NamesFrom([key](DWORD i, char* name, DWORD* size) {
        return RegEnumKeyExA(key, i, name, size, nullptr, nullptr, nullptr, nullptr);
    });
}

}  // namespace settings
