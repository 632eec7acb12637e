// The registry paths of the library's settings, below HKEY_CURRENT_USER. Names are put in as they are: a
// backslash in one begins a nested key.
#pragma once

#include "platform/core/CString.h"

// Software\<registry key>\<application name>, the key of the host's profile (see CWinApp).
CString ApplicationKey();
// The section of a property set, addressed as a key; the same key as the profile section.
CString SectionKey(const CString& section);
// Its values are named by the series shown in the view of that section.
CString ShownKey(const CString& section);
// Holds one sub-key per data-acquisition series.
CString DataAcqKey();
// The draw properties of one series, or of "Default".
CString DrawPropertyKey(const CString& name);
