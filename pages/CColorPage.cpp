#include "pages/CColorPage.h"

#include "pages/PageResources.h"
#include "platform/gdi/CDC.h"
#include "platform/window/CommonDialogs.h"
#include "settings/CColorProperties.h"

namespace {

constexpr UINT kDialogId = 401;

using P = CColorProperties;
struct Row {
    UINT button, swatch;
    COLORREF P::*color;
};
constexpr Row kRows[] = {
    {4060, 4025, &P::axis}, {4071, 4038, &P::region}, {4066, 4028, &P::background},
    {4068, 4030, &P::grid}, {4069, 4031, &P::dots},   {4070, 4037, &P::modified},
};

constexpr const char* kBlanks = "                    ";
constexpr ControlResource kTemplate[] = {
    {ControlKind::Group, 0, "Drawing area", 7, 7, 150, 82},
    {ControlKind::Button, 4060, "&Axis...", 14, 19, 70, 14},
    {ControlKind::Swatch, 4025, kBlanks, 92, 20, 58, 12},
    {ControlKind::Button, 4071, "&Region ...", 14, 36, 70, 14},
    {ControlKind::Swatch, 4038, kBlanks, 92, 37, 58, 12},
    {ControlKind::Button, 4066, "&Background ...", 14, 53, 70, 14},
    {ControlKind::Swatch, 4028, kBlanks, 92, 54, 58, 12},
    {ControlKind::Button, 4068, "&Grid...", 14, 70, 70, 14},
    {ControlKind::Swatch, 4030, kBlanks, 92, 71, 58, 12},
    {ControlKind::Group, 0, "Primary graph", 7, 95, 150, 48},
    {ControlKind::Button, 4069, "&Dot...", 14, 107, 70, 14},
    {ControlKind::Swatch, 4031, kBlanks, 92, 108, 58, 12},
    {ControlKind::Button, 4070, "&Modify ...", 14, 124, 70, 14},
    {ControlKind::Swatch, 4037, kBlanks, 92, 125, 58, 12},
};
const DialogResource kDialog = {"Colors", 164, 150, kTemplate, TavinModule()};
const DialogTable dialog(kDialogId, kDialog);

}  // namespace

IMPLEMENT_DYNCREATE(CColorPage, TavinPage)

CColorPage::CColorPage(CString key, CColorProperties* set)
    : TavinPage(key, set, true, kDialogId, 0), colors(set) {}

int CColorPage::EditColor(unsigned long& color) {
    CColorDialog ask(static_cast<COLORREF>(color), this);
    if (ask.DoModal() != IDOK) return 0;
    color = ask.GetColor();
    return 1;
}

const CBrush* CColorPage::OnCtlColor(CDC* dc, CWnd* control, UINT kind) {
    const CBrush* const brush = TavinPage::OnCtlColor(dc, control, kind);
    if (kind != CTLCOLOR_STATIC || !colors) return brush;
    dc->SetBkMode(OPAQUE);
    for (const Row& row : kRows)
        if (control->GetDlgCtrlID() == static_cast<int>(row.swatch)) dc->SetBkColor(colors->*row.color);
    return brush;
}

bool CColorPage::OnControlMsg(UINT id, UINT code) {
    for (const Row& row : kRows) {
        if (code != BN_CLICKED || id != row.button || !colors) continue;
        unsigned long color = colors->*row.color;
        if (EditColor(color)) colors->*row.color = static_cast<COLORREF>(color);
        Invalidate();
        return true;
    }
    return TavinPage::OnControlMsg(id, code);
}
