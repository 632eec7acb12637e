// The sheet of the graph view's settings, and what follows when it closes.
#include <algorithm>
#include <functional>

#include "pages/CAxisPage.h"
#include "pages/CColorPage.h"
#include "pages/CTiledLayoutPage.h"
#include "pages/KPointSourcePage.h"
#include "pages/KPointSourceProperties.h"
#include "pages/TavinSheet.h"
#include "views/CXYGraphView.h"
#include "views/KConnectionLineManager.h"
#include "views/KConnectionLinePage.h"

namespace {

// What the pages say counts at once when the user applies it.
class SettingsSheet : public TavinSheet {
  public:
    SettingsSheet(const CString& title, CWnd* parent, std::function<void()> applied)
        : TavinSheet(title, parent), m_applied(std::move(applied)) {}

  protected:
    BOOL OnApplyNow() override {
        if (!TavinSheet::OnApplyNow()) return FALSE;
        m_applied();
        return TRUE;
    }

  private:
    std::function<void()> m_applied;
};

}  // namespace

// What the pages may change.
struct CXYGraphView::Settings {
    CAxisProperties axes;
    CColorProperties colors;
    CTiledLayoutProperties tiledLayout;
    IPointSource* primary;
};

int CXYGraphView::EditViewSettings() {
    std::list<CPropertyPage*> none;
    return EditViewSettings(none, "Settings", false);
}

int CXYGraphView::EditViewSettings(std::list<CPropertyPage*>& morePages, CString title, bool canApply) {
    if (settingsOpen) return IDCANCEL;
    const auto current = [this] { return Settings{axes, colors, tiledLayout, PrimarySource()}; };
    Settings before = current();
    CAxisPage axisPage(GetKeyName(), &axes);
    CColorPage colorPage(GetKeyName(), &colors);
    CTiledLayoutPage tilePage(GetKeyName(), &tiledLayout);
    KPointSourcePage sourcePage(GetKeyName(), GetDSProperties());
    const auto take = [&] {
        TakeSettings(before, axisPage.GetPageTouched() || sourcePage.GetPageTouched(),
                     colorPage.GetPageTouched());
        before = current();
    };
    SettingsSheet sheet(title, this, take);
    if (canApply) sheet.m_psh.dwFlags &= ~PSH_NOAPPLYNOW;
    if (settingsPages & PageAxes) sheet.AddPage(&axisPage);
    if (settingsPages & PageColors) sheet.AddPage(&colorPage);
    if (settingsPages & PageTiles) sheet.AddPage(&tilePage);
    if (settingsPages & PageSources) sheet.AddPage(&sourcePage);
    if (settingsPages & PageLines) sheet.AddPage(&connectionLines->GetPage());
    for (CPropertyPage* const more : morePages) sheet.AddPage(more);

    const bool hadWindow = GetSafeHwnd() != nullptr;
    settingsOpen = true;
    const int result = sheet.DoModal();
    settingsOpen = false;
    // The view may have ended meanwhile, and its series with it.
    if (hadWindow && !GetSafeHwnd()) return result;
    if (result == IDOK) {
        take();
        return result;
    }
    // Pages write into the sets when they are left.
    axes = before.axes;
    colors = before.colors;
    tiledLayout = before.tiledLayout;
    TakeSettings(before, false, true);
    return result;
}

void CXYGraphView::TakeSettings(const Settings& before, bool rangesTouched, bool colorsTouched) {
    // Loading may have changed the lists of a page that was never shown.
    const bool primaryChanged = PrimarySource() != before.primary;
    if (primaryChanged) {
        PrimaryDataChanged(PrimarySource());
        SetCaption();
    }
    if (rangesTouched || primaryChanged) ZoomAll();
    if (colorsTouched) UpdateColors();
    page = std::clamp(page, 0, GetNumPages() - 1);
    pyramids.Clear();
    SetScrollSizes();
    Redraw();
}

void CXYGraphView::OnViewSettings() { EditViewSettings(); }
