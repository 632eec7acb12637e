#include "pages/TavinSheet.h"

#include "pages/TavinPage.h"

namespace {

constexpr UINT kLoad = 4200;
constexpr UINT kSave = 4201;

CRect RectOf(const CWnd& window, const CWnd& client) {
    CRect rect;
    window.GetWindowRect(&rect);
    CPoint corner(rect.left, rect.top);
    client.ScreenToClient(&corner);
    return {corner.x, corner.y, corner.x + rect.Width(), corner.y + rect.Height()};
}

}  // namespace

IMPLEMENT_DYNAMIC(TavinSheet, KPropertySheet)

TavinSheet::TavinSheet(unsigned int captionId, CWnd* parent, unsigned int selectPage)
    : KPropertySheet(captionId, parent, selectPage) {
    m_psh.dwFlags |= PSH_NOAPPLYNOW;
}

TavinSheet::TavinSheet(const char* caption, CWnd* parent, unsigned int selectPage)
    : KPropertySheet(caption, parent, selectPage) {
    m_psh.dwFlags |= PSH_NOAPPLYNOW;
}

BOOL TavinSheet::OnInitDialog() {
    const BOOL result = KPropertySheet::OnInitDialog();
    const CWnd* const ok = GetDlgItem(IDOK);
    const CWnd* const cancel = GetDlgItem(IDCANCEL);
    const CWnd* const tabs = GetTabControl();
    if (!ok || !cancel || !tabs) return result;
    CRect place = RectOf(*ok, *this);
    const int step = RectOf(*cancel, *this).left - place.left;
    const int width = place.Width();
    place.left = RectOf(*tabs, *this).left;
    place.right = place.left + width;
    loadButton.Create("Load", WS_CHILD | WS_VISIBLE, place, this, kLoad);
    place.left += step;
    place.right += step;
    saveButton.Create("Save", WS_CHILD | WS_VISIBLE, place, this, kSave);
    SetTabOrder(*cancel, loadButton);
    SetTabOrder(loadButton, saveButton);
    return result;
}

bool TavinSheet::OnControlMsg(UINT id, UINT code) {
    static constexpr ControlRow<TavinSheet> kControls[] = {
        {BN_CLICKED, kLoad, kLoad, &TavinSheet::OnButtonLoadDefault},
        {BN_CLICKED, kSave, kSave, &TavinSheet::OnButtonSaveDefault},
    };
    return RouteControl(*this, kControls, id, code) || KPropertySheet::OnControlMsg(id, code);
}

void TavinSheet::ForEachPage(int (TavinPage::*act)()) {
    for (int i = 0; i < GetPageCount(); ++i) {
        auto* const page = dynamic_cast<TavinPage*>(GetPage(i));
        if (!page) continue;
        const bool isShown = page == GetActivePage();
        if (isShown) page->OnKillActive();
        (page->*act)();
        if (isShown && page == GetActivePage()) page->OnSetActive();
    }
}

void TavinSheet::OnButtonLoadDefault() {
    CPropertyPage* const active = GetActivePage();
    ForEachPage(&TavinPage::OnLoadDefault);
    // What was loaded is a change of the user's, like those that he types.
    for (int i = 0; i < GetPageCount(); ++i)
        if (auto* const page = dynamic_cast<TavinPage*>(GetPage(i))) page->ControlChanged();
    if (active) SetActivePage(active);
}

void TavinSheet::OnButtonSaveDefault() { ForEachPage(&TavinPage::OnSaveDefault); }
