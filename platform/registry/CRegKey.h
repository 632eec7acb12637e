#pragma once

#include "platform/registry/Registry.h"

// Holds an open key and closes it at the end of its life.
class CRegKey {
  public:
    CRegKey() = default;
    ~CRegKey() { Close(); }
    CRegKey(const CRegKey&) = delete;
    CRegKey& operator=(const CRegKey&) = delete;

    operator HKEY() const { return m_hKey; }

    LONG Create(HKEY parent, const char* subKey, REGSAM access = KEY_READ | KEY_WRITE,
                DWORD* disposition = nullptr) {
        Close();
        return RegCreateKeyExA(parent, subKey, 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr, &m_hKey,
                               disposition);
    }
    LONG Open(HKEY parent, const char* subKey, REGSAM access = KEY_READ | KEY_WRITE) {
        Close();
        return RegOpenKeyExA(parent, subKey, 0, access, &m_hKey);
    }
    LONG Close() {
        const LONG status = m_hKey ? RegCloseKey(m_hKey) : ERROR_SUCCESS;
        m_hKey = nullptr;
        return status;
    }

    HKEY m_hKey = nullptr;
};
