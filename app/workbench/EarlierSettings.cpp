#include "app/workbench/EarlierSettings.h"

#include <vector>

namespace app {

namespace {

constexpr DWORD kLongestName = 1024;

void CopyValues(HKEY from, HKEY to) {
    std::vector<BYTE> data;
    for (DWORD i = 0;; ++i) {
        char name[kLongestName];
        DWORD length = kLongestName;
        DWORD kind = 0;
        DWORD size = 0;
        if (RegEnumValueA(from, i, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS ||
            RegQueryValueExA(from, name, nullptr, &kind, nullptr, &size) != ERROR_SUCCESS)
            return;
        data.resize(size);
        if (RegQueryValueExA(from, name, nullptr, &kind, data.data(), &size) == ERROR_SUCCESS)
            RegSetValueExA(to, name, 0, kind, data.data(), size);
    }
}

void CopyKey(HKEY from, HKEY to) {
    CopyValues(from, to);
    char name[kLongestName];
    DWORD length = kLongestName;
    for (DWORD i = 0;
         RegEnumKeyExA(from, i, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         ++i, length = kLongestName) {
        CRegKey below;
        CRegKey copy;
        if (below.Open(from, name, KEY_READ) == ERROR_SUCCESS && copy.Create(to, name) == ERROR_SUCCESS)
            CopyKey(below, copy);
    }
}

}  // namespace

void TakeOverSettings(const CString& from, const CString& to) {
    const CWinApp* const profile = AfxGetApp();
    if (!profile) return;
    const CString root = profile->GetProfileKey() + "\\";
    CRegKey before;
    CRegKey now;
    if (before.Open(HKEY_CURRENT_USER, root + from, KEY_READ) != ERROR_SUCCESS ||
        now.Open(HKEY_CURRENT_USER, root + to, KEY_READ) == ERROR_SUCCESS)
        return;
    const RegistryTransaction together;
    if (now.Create(HKEY_CURRENT_USER, root + to) != ERROR_SUCCESS) return;
    CopyKey(before, now);
}

}  // namespace app
