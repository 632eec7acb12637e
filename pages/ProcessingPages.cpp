#include "pages/ProcessingPages.h"

#include <algorithm>
#include <iterator>

#include "editing/PointRoutines.h"
#include "pages/Illustrations.h"
#include "pages/PageControls.h"
#include "pages/ProcessingResources.h"

using pages::Check;
using pages::Control;
using pages::Edit;
using pages::ExchangeControls;
using pages::ListPlace;
using pages::Radio;

namespace {

using T = CTranslateProperties;
constexpr Control<T> kTranslate[] = {
    Radio(kToValue, &T::translateFunction),
    Edit(kAbsoluteValue, &T::translateValue),
    Edit(kRelativeOffset, &T::translateOffset),
};
using S = CScaleProperties;
constexpr Control<S> kScale[] = {
    Edit(kScaleFactor, &S::scaleValue),
    Edit(kScaleOrigin, &S::scaleOffset),
    ListPlace(kScaleMethods, &S::scaleMethod),
};
using L = CSmoothProperties;
constexpr Control<L> kSmooth[] = {
    Edit(kSmoothWaveLength, &L::waveLength),
    Edit(kSmoothUnit, &L::waveLengthUnit),
};
using W = CSpikeDetectProperties;
constexpr Control<W> kSpikes[] = {
    Edit(kSpikeWaveLength, &W::waveLength), Edit(kWaveLengthUnit, &W::waveLengthUnit),
    Edit(kWindowSize, &W::windowSize),      Edit(kWindowUnit, &W::windowUnit),
    Check(kShowWindow, &W::showWindow),
};
using M = CMedianFilterProperties;
constexpr Control<M> kMedian[] = {
    Edit(kFilterLength, &M::filterLength),
    Edit(kRejectDistance, &M::filterDistance),
    Check(kShowMedianWindow, &M::showWindow),
};

constexpr int kScaleGroup = 1;  // of the names of methods

// In the order of the scale methods.
constexpr UINT kMethodPictures[] = {kScaleWithOffsetPicture, kRampPicture, kDriftPicture,
                                    kCustomScalePicture};

}  // namespace

IMPLEMENT_DYNCREATE(CTranslatePage, TavinPage)
IMPLEMENT_DYNCREATE(CScalePage, TavinPage)
IMPLEMENT_DYNCREATE(CSmoothPage, TavinPage)

CTranslatePage::CTranslatePage(CString section, CTranslateProperties* values)
    : TavinPage(section, values, true, kTranslateDialog, 0), set(values) {}

void CTranslatePage::DoDataExchange(CDataExchange* exchange) {
    TavinPage::DoDataExchange(exchange);
    DDX_Control(exchange, kTranslatePicture, picture);
    if (set) ExchangeControls(*exchange, *set, kTranslate);
}

BOOL CTranslatePage::OnSetActive() {
    if (!TavinPage::OnSetActive()) return FALSE;
    set && set->translateFunction == 1 ? OnRadioOffset() : OnRadioTranslateFunction();
    return TRUE;
}

bool CTranslatePage::OnControlMsg(UINT id, UINT code) {
    static constexpr ControlRow<CTranslatePage> kControls[] = {
        {BN_CLICKED, kToValue, kToValue, &CTranslatePage::OnRadioTranslateFunction},
        {BN_CLICKED, kByOffset, kByOffset, &CTranslatePage::OnRadioOffset},
    };
    return RouteControl(*this, kControls, id, code) || TavinPage::OnControlMsg(id, code);
}

void CTranslatePage::OnRadioTranslateFunction() { ShowFunction(false); }
void CTranslatePage::OnRadioOffset() { ShowFunction(true); }

void CTranslatePage::ShowFunction(bool isOffset) {
    if (CWnd* const value = GetDlgItem(kAbsoluteValue)) value->EnableWindow(!isOffset);
    if (CWnd* const offset = GetDlgItem(kRelativeOffset)) offset->EnableWindow(isOffset);
    picture.SetBitmap(isOffset ? kMovePicture : kSetPicture);
}

CScalePage::CScalePage(CString section, CScaleProperties* values)
    : TavinPage(section, values, true, kScaleDialog, 0), set(values) {}

BOOL CScalePage::OnInitDialog() {
    const BOOL result = TavinPage::OnInitDialog();
    for (int i = 0; i < GetMethodCount(kScaleGroup); ++i)
        methodCombo.AddString(GetMethodName(static_cast<short>(i), kScaleGroup));
    UpdateData(FALSE);
    return result;
}

void CScalePage::DoDataExchange(CDataExchange* exchange) {
    TavinPage::DoDataExchange(exchange);
    DDX_Control(exchange, kScalePicture, picture);
    DDX_Control(exchange, kScaleMethods, methodCombo);
    if (set) ExchangeControls(*exchange, *set, kScale);
    OnSelchangeComboScaleMethod();
}

bool CScalePage::OnControlMsg(UINT id, UINT code) {
    static constexpr ControlRow<CScalePage> kControls[] = {
        {CBN_SELCHANGE, kScaleMethods, kScaleMethods, &CScalePage::OnSelchangeComboScaleMethod},
    };
    return RouteControl(*this, kControls, id, code) || TavinPage::OnControlMsg(id, code);
}

void CScalePage::OnSelchangeComboScaleMethod() {
    const int method = methodCombo.GetCurSel();
    const int last = static_cast<int>(std::size(kMethodPictures)) - 1;
    picture.SetBitmap(method < 0 ? 0 : kMethodPictures[std::min(method, last)]);
}

CSmoothPage::CSmoothPage(CString section, CSmoothProperties* values)
    : TavinPage(section, values, true, kSmoothDialog, 0), set(values) {}

void CSmoothPage::DoDataExchange(CDataExchange* exchange) {
    TavinPage::DoDataExchange(exchange);
    if (set) ExchangeControls(*exchange, *set, kSmooth);
}

CWaveWindowPage::CWaveWindowPage(CString section, CSpikeDetectProperties* values)
    : TavinPage(section, values, true, kSpikeDialog, 0), set(values) {}

BOOL CWaveWindowPage::OnInitDialog() {
    const BOOL result = TavinPage::OnInitDialog();
    showWindowCheck.EnableWindow(showWindowEnabled);
    return result;
}

void CWaveWindowPage::DoDataExchange(CDataExchange* exchange) {
    TavinPage::DoDataExchange(exchange);
    DDX_Control(exchange, kShowWindow, showWindowCheck);
    DDX_Text(exchange, kWaveLengthLabel, waveLengthLabel);
    if (set) ExchangeControls(*exchange, *set, kSpikes);
}

CMedianFilterPage::CMedianFilterPage(CString section, CMedianFilterProperties* values)
    : TavinPage(section, values, true, kMedianDialog, 0), set(values) {}

void CMedianFilterPage::DoDataExchange(CDataExchange* exchange) {
    TavinPage::DoDataExchange(exchange);
    if (set) ExchangeControls(*exchange, *set, kMedian);
}
