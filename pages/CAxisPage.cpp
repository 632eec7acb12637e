#include "pages/CAxisPage.h"

#include "pages/PageControls.h"
#include "pages/PageResources.h"
#include "settings/CAxisProperties.h"

namespace {

constexpr UINT kDialogId = 400;
enum ControlId : UINT {
    kUnitX = 4039,
    kUnitY = 4040,
    kMaxX = 4044,
    kMaxY = 4047,
    kMinX = 4049,
    kMinY = 4051,
    kLinesX = 4052,
    kTop = 4053,
    kMiddle = 4054,
    kBottom = 4055,
    kLinesY = 4056,
    kLeft = 4057,
    kCentre = 4058,
    kRight = 4059,
    kAutoX = 4061,
    kAutoY = 4062,
    kShowX = 4063,
    kShowY = 4064,
    kPositiveUp = 4065,
};

constexpr ControlResource kTemplate[] = {
    {ControlKind::Group, 0, "X axis", 7, 7, 158, 62},
    {ControlKind::Text, 0, "&min", 14, 21, 20, 8},
    {ControlKind::Edit, kMinX, "", 36, 19, 50, 12},
    {ControlKind::Text, 0, "ma&x", 14, 37, 20, 8},
    {ControlKind::Edit, kMaxX, "", 36, 35, 50, 12},
    {ControlKind::Check, kLinesX, "&Grid lines", 14, 53, 72, 10},
    {ControlKind::Text, 0, "Unit", 94, 21, 18, 8},
    {ControlKind::Edit, kUnitX, "", 114, 19, 44, 12, kReadOnly},
    {ControlKind::Check, kAutoX, "&Auto scale", 94, 36, 64, 10},
    {ControlKind::Check, kShowX, "&Show", 94, 53, 64, 10},
    {ControlKind::Group, 0, "Position", 171, 7, 60, 62},
    {ControlKind::Radio, kTop, "&Top", 178, 20, 46, 10},
    {ControlKind::Radio, kMiddle, "&Center", 178, 36, 46, 10},
    {ControlKind::Radio, kBottom, "&Bottom", 178, 52, 46, 10},

    {ControlKind::Group, 0, "Y axis", 7, 76, 158, 76},
    {ControlKind::Text, 0, "mi&n", 14, 90, 20, 8},
    {ControlKind::Edit, kMinY, "", 36, 88, 50, 12},
    {ControlKind::Text, 0, "max", 14, 106, 20, 8},
    {ControlKind::Edit, kMaxY, "", 36, 104, 50, 12},
    {ControlKind::Check, kLinesY, "G&rid lines", 14, 122, 72, 10},
    {ControlKind::Text, 0, "Unit", 94, 90, 18, 8},
    {ControlKind::Edit, kUnitY, "", 114, 88, 44, 12, kReadOnly},
    {ControlKind::Check, kAutoY, "A&uto scale", 94, 105, 64, 10},
    {ControlKind::Check, kShowY, "S&how", 94, 122, 64, 10},
    {ControlKind::Check, kPositiveUp, "&Positive up", 14, 137, 72, 10},
    {ControlKind::Group, 0, "Position", 171, 76, 60, 76},
    {ControlKind::Radio, kLeft, "&Left", 178, 89, 46, 10},
    {ControlKind::Radio, kCentre, "C&enter", 178, 105, 46, 10},
    {ControlKind::Radio, kRight, "R&ight", 178, 121, 46, 10},
};
const DialogResource kDialog = {"Axis", 238, 159, kTemplate, TavinModule()};
const DialogTable dialog(kDialogId, kDialog);

using P = CAxisProperties;
constexpr pages::Control<P> kControls[] = {
    pages::Check(kLinesX, &P::DrawXLines),
    pages::Check(kLinesY, &P::DrawYLines),
    pages::Check(kAutoX, &P::XAutoScale),
    pages::Check(kAutoY, &P::YAutoScale),
    pages::Check(kShowX, &P::ShowX),
    pages::Check(kShowY, &P::ShowY),
    pages::Check(kPositiveUp, &P::PositiveUp),
    pages::Radio(kTop, &P::XAxisPos),
    pages::Radio(kLeft, &P::YAxisPos),
    pages::Edit(kUnitX, &P::UnitX),
    pages::Edit(kUnitY, &P::UnitY),
};

struct Range {
    UINT maxId, minId;
    double P::*max;
    double P::*min;
    int P::*autoScale;
};
constexpr Range kRanges[] = {
    {kMaxX, kMinX, &P::MaxX, &P::MinX, &P::XAutoScale},
    {kMaxY, kMinY, &P::MaxY, &P::MinY, &P::YAutoScale},
};

void ExchangeRange(CDataExchange& exchange, P& axes, const Range& range) {
    double max = axes.*range.max;
    double min = axes.*range.min;
    DDX_Text(&exchange, range.maxId, max);
    DDX_Text(&exchange, range.minId, min);
    if (!exchange.m_bSaveAndValidate || exchange.HasFailed()) return;
    if (min >= max && !(axes.*range.autoScale))
        return exchange.Refuse("max value must be greater than min value");
    axes.*range.max = max;
    axes.*range.min = min;
}

}  // namespace

IMPLEMENT_DYNCREATE(CAxisPage, TavinPage)

CAxisPage::CAxisPage(CString key, CAxisProperties* set)
    : TavinPage(key, set, true, kDialogId, 0), axes(set) {}

void CAxisPage::DoDataExchange(CDataExchange* exchange) {
    TavinPage::DoDataExchange(exchange);
    DDX_Control(exchange, kAutoX, xAutoScale);
    DDX_Control(exchange, kAutoY, yAutoScale);
    if (!axes) return;
    pages::ExchangeControls(*exchange, *axes, kControls);
    for (const Range& range : kRanges) ExchangeRange(*exchange, *axes, range);
}

BOOL CAxisPage::OnSetActive() {
    if (!TavinPage::OnSetActive()) return FALSE;
    UpdateEnabled();
    return TRUE;
}

bool CAxisPage::OnControlMsg(UINT id, UINT code) {
    static constexpr ControlRow<CAxisPage> kClicks[] = {
        {BN_CLICKED, kAutoX, kAutoY, &CAxisPage::UpdateEnabled}};
    return RouteControl(*this, kClicks, id, code) || TavinPage::OnControlMsg(id, code);
}

void CAxisPage::UpdateEnabled() {
    for (const UINT id : {kMinX, kMaxX}) GetDlgItem(id)->EnableWindow(!xAutoScale.GetCheck());
    for (const UINT id : {kMinY, kMaxY}) GetDlgItem(id)->EnableWindow(!yAutoScale.GetCheck());
}
