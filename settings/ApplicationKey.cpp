#include "settings/ApplicationKey.h"

#include "platform/registry/CWinApp.h"

CString ApplicationKey() {
    const CWinApp* const application = AfxGetApp();
    return application ? application->GetProfileKey() : CString("Software\\") + AfxGetAppName();
}

CString SectionKey(const CString& section) { return ApplicationKey() + "\\" + section; }
CString ShownKey(const CString& section) { return SectionKey(section) + "\\Shown"; }
CString DataAcqKey() { return SectionKey("DataAcqSource"); }
CString DrawPropertyKey(const CString& name) { return SectionKey("DrawProperty\\" + name); }
