#include "platform/registry/CWinApp.h"

#include <errno.h>

#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "platform/registry/CRegKey.h"

IMPLEMENT_DYNAMIC(CWinApp, CObject)

namespace {

CWinApp* application = nullptr;

bool ReadValue(const CString& keyPath, const char* entry, DWORD& kind, std::vector<BYTE>& data) try {
    CRegKey key;
    if (key.Open(HKEY_CURRENT_USER, keyPath, KEY_READ) != ERROR_SUCCESS) return false;
    data.resize(256);
    auto size = static_cast<DWORD>(data.size());
    LONG status = RegQueryValueExA(key, entry, nullptr, &kind, data.data(), &size);
    // Another process may lengthen the text again in between.
    while (status == ERROR_MORE_DATA) {
        data.resize(size);
        status = RegQueryValueExA(key, entry, nullptr, &kind, data.data(), &size);
    }
    data.resize(status == ERROR_SUCCESS ? size : 0);
    return status == ERROR_SUCCESS;
} catch (const std::bad_alloc&) {
    return false;
}

BOOL WriteValue(const CString& keyPath, const char* entry, DWORD kind, const void* data, std::size_t size) {
    CRegKey key;
    return key.Create(HKEY_CURRENT_USER, keyPath, KEY_WRITE) == ERROR_SUCCESS &&
           RegSetValueExA(key, entry, 0, kind, static_cast<const BYTE*>(data), static_cast<DWORD>(size)) ==
               ERROR_SUCCESS;
}

}  // namespace

CWinApp* AfxGetApp() { return application; }

const char* AfxGetAppName() {
    return application && application->m_pszAppName ? application->m_pszAppName
                                                    : program_invocation_short_name;
}

CWinApp::CWinApp(const char* appName)
    : appName_(appName && *appName ? appName : program_invocation_short_name) {
    m_pszAppName = appName_;
    m_pszProfileName = m_pszAppName;
    application = this;
}

CWinApp::~CWinApp() {
    if (application == this) application = nullptr;
}

void CWinApp::SetRegistryKey(const char* registryKey) {
    registryKey_ = registryKey;
    m_pszRegistryKey = registryKey_.IsEmpty() ? nullptr : registryKey_.GetString();
    m_pszProfileName = m_pszAppName;
}

CString CWinApp::GetProfileKey() const {
    CString key = "Software\\";
    if (m_pszRegistryKey) key = key + m_pszRegistryKey + "\\";
    return key + m_pszProfileName;
}

CString CWinApp::SectionKey(const char* section) const { return GetProfileKey() + "\\" + section; }

UINT CWinApp::GetProfileInt(const char* section, const char* entry, int defaultValue) {
    DWORD kind = 0;
    std::vector<BYTE> data;
    const auto missing = static_cast<UINT>(defaultValue);
    if (!section || !entry || !ReadValue(SectionKey(section), entry, kind, data)) return missing;
    UINT value = 0;
    if (kind != REG_DWORD || data.size() != sizeof value) return missing;
    std::memcpy(&value, data.data(), sizeof value);
    return value;
}

CString CWinApp::GetProfileString(const char* section, const char* entry, const char* defaultValue) {
    DWORD kind = 0;
    std::vector<BYTE> data;
    if (!section || !entry || !ReadValue(SectionKey(section), entry, kind, data)) return defaultValue;
    if (kind != REG_SZ && kind != REG_EXPAND_SZ) return defaultValue;
    if (data.empty()) return "";
    return data.back() == 0 ? reinterpret_cast<const char*>(data.data()) : defaultValue;
}

BOOL CWinApp::WriteProfileInt(const char* section, const char* entry, int value) {
    return section && entry && WriteValue(SectionKey(section), entry, REG_DWORD, &value, sizeof value);
}

BOOL CWinApp::WriteProfileString(const char* section, const char* entry, const char* value) {
    if (!section) return FALSE;
    if (!entry) return *section && RegDeleteTreeA(HKEY_CURRENT_USER, SectionKey(section)) == ERROR_SUCCESS;
    if (value) return WriteValue(SectionKey(section), entry, REG_SZ, value, std::strlen(value) + 1);
    CRegKey key;
    return key.Open(HKEY_CURRENT_USER, SectionKey(section), KEY_WRITE) == ERROR_SUCCESS &&
           RegDeleteValueA(key, entry) == ERROR_SUCCESS;
}
