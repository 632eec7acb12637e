#include "pages/CStylePage.h"

#include "pages/LineStyles.h"
#include "pages/PageControls.h"
#include "pages/PageResources.h"
#include "platform/gdi/CDC.h"
#include "platform/window/CommonDialogs.h"
#include "settings/CStyleProperties.h"

namespace {

constexpr UINT kDialogId = 402;
enum ControlId : UINT {
    kDrawStyle = 4019,  // the first of three
    kDotSize = 4022,    // the first of five
    kLineStyle = 4077,
    kSwatch = 4123,
    kLineColor = 4124,
};

constexpr ControlResource kTemplate[] = {
    {ControlKind::Group, 0, "Draw Style", 7, 7, 78, 54},
    {ControlKind::Radio, kDrawStyle, "&Dot", 14, 19, 66, 10},
    {ControlKind::Radio, 4020, "Li&ne && Dot", 14, 32, 66, 10},
    {ControlKind::Radio, 4021, "L&ine", 14, 45, 66, 10},
    {ControlKind::Group, 0, "Dot Size (Pixels)", 91, 7, 130, 54},
    {ControlKind::Radio, kDotSize, "&1", 98, 26, 20, 10},
    {ControlKind::Radio, 4023, "&2", 122, 26, 20, 10},
    {ControlKind::Radio, 4024, "&3", 146, 26, 20, 10},
    {ControlKind::Radio, 4029, "&4", 170, 26, 20, 10},
    {ControlKind::Radio, 4027, "&5", 194, 26, 20, 10},
    {ControlKind::Group, 0, "Line Style", 7, 67, 214, 34},
    {ControlKind::DropList, kLineStyle, "", 14, 80, 130, 80},
    {ControlKind::Swatch, kSwatch, "          ", 152, 80, 36, 12},
    {ControlKind::Button, kLineColor, "...", 192, 79, 22, 14},
};
const DialogResource kDialog = {"Drawing Style", 228, 108, kTemplate, TavinModule()};
const DialogTable dialog(kDialogId, kDialog);

using P = CStylePage;
constexpr pages::Control<P> kControls[] = {
    pages::Radio(kDrawStyle, &P::drawStyle),
    pages::Radio(kDotSize, &P::dotSize),
    pages::ListData(kLineStyle, &P::lineStyle),
};

}  // namespace

IMPLEMENT_DYNCREATE(CStylePage, TavinPage)

CStylePage::CStylePage(CString key, CStyleProperties* set) : TavinPage(key, set, true, kDialogId, 0) {}

BOOL CStylePage::OnInitDialog() {
    TavinPage::OnInitDialog();
    ListLineStyles(lineStyles);
    UpdateData(FALSE);
    return TRUE;
}

void CStylePage::DoDataExchange(CDataExchange* exchange) {
    TavinPage::DoDataExchange(exchange);
    DDX_Control(exchange, kLineStyle, lineStyles);
    pages::ExchangeControls(*exchange, *this, kControls);
}

const CBrush* CStylePage::OnCtlColor(CDC* dc, CWnd* control, UINT kind) {
    const CBrush* const brush = TavinPage::OnCtlColor(dc, control, kind);
    if (kind != CTLCOLOR_STATIC) return brush;
    dc->SetBkMode(OPAQUE);
    if (control->GetDlgCtrlID() == kSwatch) dc->SetBkColor(lineColor);
    return brush;
}

bool CStylePage::OnControlMsg(UINT id, UINT code) {
    static constexpr ControlRow<CStylePage> kClicks[] = {
        {BN_CLICKED, kLineColor, kLineColor, &CStylePage::OnBtnLineColor}};
    return RouteControl(*this, kClicks, id, code) || TavinPage::OnControlMsg(id, code);
}

void CStylePage::OnBtnLineColor() {
    CColorDialog ask(lineColor, this);
    if (ask.DoModal() != IDOK) return;
    lineColor = ask.GetColor();
    Invalidate();
}
