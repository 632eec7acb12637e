// The host's application object: its names and its profile, the settings kept in named sections.
//
// A section S and the registry key <application key>\S are the same key, where the application key is
// Software\<registry key>\<profile name>. Without SetRegistryKey it is Software\<profile name>, so that
// settings are kept all the same, in the same store.
#pragma once

#include "platform/core/CObject.h"
#include "platform/core/CString.h"
#include "platform/core/Types.h"

class CWinApp : public CObject {
    DECLARE_DYNAMIC(CWinApp)

  public:
    // Becomes the process's application object. Without a name it has the name of the running program.
    explicit CWinApp(const char* appName = nullptr);
    ~CWinApp() override;
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;

    // Names the key that holds the settings of all programs of one maker; the profile then has the name of
    // the application. Null or empty: no such key.
    void SetRegistryKey(const char* registryKey);
    // The application key, below HKEY_CURRENT_USER.
    CString GetProfileKey() const;

    // Values of another kind, unterminated texts and missing ones read as the default. Reading creates
    // nothing.
    UINT GetProfileInt(const char* section, const char* entry, int defaultValue);
    CString GetProfileString(const char* section, const char* entry, const char* defaultValue = nullptr);
    // Writing creates the section. False when nothing was written.
    BOOL WriteProfileInt(const char* section, const char* entry, int value);
    // A null entry deletes the section with all below it, a null value deletes the entry.
    BOOL WriteProfileString(const char* section, const char* entry, const char* value);

    // Point into this object until the host sets texts of its own, which must outlive it.
    const char* m_pszAppName;
    const char* m_pszProfileName;
    const char* m_pszRegistryKey = nullptr;

  private:
    CString SectionKey(const char* section) const;

    CString appName_;
    CString registryKey_;
};

// The application object made last, null without one.
CWinApp* AfxGetApp();
// Its name; without one, the name of the running program.
const char* AfxGetAppName();
