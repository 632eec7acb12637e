// How the graph view starts, and what it keeps in its settings section.
#include "pages/KPointSourceProperties.h"
#include "platform/registry/CWinApp.h"
#include "platform/registry/RegistryTransaction.h"
#include "platform/window/CClientDC.h"
#include "settings/KDrawPropertyManager.h"
#include "views/CXYGraphView.h"
#include "views/KConnectionLineManager.h"

namespace {

constexpr const char* kShowLegend = "ShowLegend";
constexpr const char* kTitleBarOff = "TitlebarOff";

}  // namespace

BOOL CXYGraphView::PreCreateWindow(CREATESTRUCT& cs) {
    AllocDataHandler(PrimarySource());
    axes.LoadFromRegistry(GetKeyName());
    tiledLayout.LoadFromRegistry(GetKeyName());
    cs.style |= WS_HSCROLL | WS_VSCROLL;
    return KViewEx::PreCreateWindow(cs);
}

int CXYGraphView::OnCreate(CREATESTRUCT* create) {
    if (KViewEx::OnCreate(create) == -1) return -1;
    SetScrollSizes();
    UpdateColors();
    return 0;
}

void CXYGraphView::OnInitialUpdate() {
    CWinApp* const profile = AfxGetApp();
    if (profile) showLegend = profile->GetProfileInt(GetKeyName(), kShowLegend, showLegend) != 0;
    KViewEx::OnInitialUpdate();
    mouseMode = ShowPosition;
    if (!GetKeyName().IsEmpty()) {
        GetDSProperties()->LoadFromRegistry(GetKeyName());
        // Loading adds.
        connectionLines->lines.clear();
        connectionLines->LoadFromRegistry(GetKeyName());
        pyramids.Clear();
    }
    SetPrimaryData(PrimarySource());
    UpdateColors();
    UpdateAxis();
    {
        CClientDC dc(this);
        OnPrepareDC(&dc);
    }
    ZoomAll();
    SetScrollSizes();
    zoom.KeepCurrent();
    SetCaption();
    titleBarOff = !(profile && profile->GetProfileInt(GetKeyName(), kTitleBarOff, 0));
    OnTitleBarOnOff();
}

void CXYGraphView::OnActivateView(BOOL activate, CView* activated, CView* deactivated) {
    KViewEx::OnActivateView(activate, activated, deactivated);
    if (activate && dataHandler && PrimarySource()) dataHandler->SelectPointSource(PrimarySource());
}

void CXYGraphView::SetKeyName(const CString& name) {
    KViewEx::SetKeyName(name);
    connectionLines->SetKey(name);
    if (!name.IsEmpty() && GetSafeHwnd()) LoadStdProperties();
}

bool CXYGraphView::LoadStdProperties() {
    SetPosition();
    axes.LoadFromRegistry(GetKeyName());
    colors.LoadFromRegistry(GetKeyName());
    tiledLayout.LoadFromRegistry(GetKeyName());
    UpdateAxis();
    UpdateColors();
    Redraw();
    return true;
}

bool CXYGraphView::SaveStdProperties() {
    const RegistryTransaction together;
    SavePosition();
    colors.SaveToRegistry(GetKeyName());
    axes.SaveToRegistry(GetKeyName());
    tiledLayout.SaveToRegistry(GetKeyName());
    GetDSProperties()->SaveToRegistry(GetKeyName());
    KDrawPropertyManager::Instance().Save();
    if (CWinApp* const profile = AfxGetApp()) {
        profile->WriteProfileInt(GetKeyName(), kTitleBarOff, titleBarOff);
        profile->WriteProfileInt(GetKeyName(), kShowLegend, showLegend);
    }
    return true;
}
