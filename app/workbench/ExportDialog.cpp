#include "app/workbench/ExportDialog.h"

#include <algorithm>
#include <cmath>

#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

constexpr UINT kWidth = 34101;
constexpr UINT kHeight = 34102;
constexpr UINT kMillimetres = 34103;
constexpr UINT kPixels = 34104;
constexpr UINT kDots = 34105;

constexpr ControlResource kControls[] = {
    {ControlKind::Text, 0, "&Width:", 7, 9, 56, 8},
    {ControlKind::Edit, kWidth, "", 66, 7, 44, 14},
    {ControlKind::Text, 0, "&Height:", 7, 27, 56, 8},
    {ControlKind::Edit, kHeight, "", 66, 25, 44, 14},
    {ControlKind::Radio, kMillimetres, "&Millimetres", 118, 7, 62, 14},
    {ControlKind::Radio, kPixels, "&Pixels", 118, 25, 62, 14},
    {ControlKind::Text, 0, "&Dots per inch:", 7, 45, 56, 8},
    {ControlKind::Edit, kDots, "", 66, 43, 44, 14},
    {ControlKind::DefaultButton, IDOK, "Export", 76, 65, 50, 14},
    {ControlKind::Button, IDCANCEL, "Cancel", 130, 65, 50, 14},
};
constexpr DialogResource kDialog = {"Size of the picture", 187, 86, kControls};

constexpr const char* kSection = "Export";
constexpr double kMillimetresPerInch = 25.4;

// Lengths to a tenth of a millimetre.
double Tenths(double length) { return std::round(length * 10) / 10; }

}  // namespace

ExportDialog::ExportDialog(const std::string& fileName, const PictureSize& window, CWnd* parent)
    : CDialog(kExport, parent), fileName_(fileName), window_(window), template_(kExport, kDialog) {
    Offer(window);
    CWinApp* const profile = AfxGetApp();
    if (!profile) return;
    const int dots = static_cast<int>(profile->GetProfileInt(kSection, "DotsPerInch", window.dotsPerInch));
    const CString text = profile->GetProfileString(kSection, "Size");
    const auto last = ReadPictureSize(text.GetString(), std::clamp(dots, kLeastDots, kMostDots));
    if (last) Offer(*last);
}

void ExportDialog::Offer(const PictureSize& size) {
    inPixels = size.paper.cx <= 0;
    width = inPixels ? size.pixels.cx : size.paper.cx / 100.0;
    height = inPixels ? size.pixels.cy : size.paper.cy / 100.0;
    dotsPerInch = size.dotsPerInch;
}

PictureSize ExportDialog::TakeChosen() {
    PictureSize size;
    size.dotsPerInch = dotsPerInch;
    const auto pixels = [this](double side) {
        return RoundHalfAway(inPixels ? side : side / kMillimetresPerInch * dotsPerInch);
    };
    size.pixels = {pixels(width), pixels(height)};
    if (!inPixels) size.paper = {RoundHalfAway(width * 100), RoundHalfAway(height * 100)};
    // The window's own size is not kept: the next window may have another one.
    CWinApp* const profile = AfxGetApp();
    const bool own = inPixels && size.pixels == window_.pixels && dotsPerInch == window_.dotsPerInch;
    if (profile) {
        profile->WriteProfileString(kSection, "Size", own ? "" : size.Text().c_str());
        profile->WriteProfileInt(kSection, "DotsPerInch", dotsPerInch);
    }
    return size;
}

BOOL ExportDialog::OnInitDialog() {
    SetWindowText(("Size of " + fileName_).c_str());
    return CDialog::OnInitDialog();
}

// The buttons follow the unit; UseUnit alone changes it.
void ExportDialog::ShowUnit(CDataExchange* exchange) {
    if (exchange->m_bSaveAndValidate) return;
    int inMillimetres = !inPixels;
    DDX_Check(exchange, kMillimetres, inMillimetres);
    DDX_Check(exchange, kPixels, inPixels);
}

void ExportDialog::DoDataExchange(CDataExchange* exchange) {
    ShowUnit(exchange);
    DDX_Text(exchange, kDots, dotsPerInch);
    DDV_MinMaxInt(exchange, dotsPerInch, kLeastDots, kMostDots);
    const double perPixel = inPixels ? 1 : kMillimetresPerInch / std::max(1, dotsPerInch);
    const double least = inPixels ? kLeastPixels : std::ceil(kLeastPixels * perPixel);
    const double most = inPixels ? kMostPixels : std::floor(kMostPixels * perPixel);
    DDX_Text(exchange, kWidth, width);
    DDV_MinMaxDouble(exchange, width, least, most);
    DDX_Text(exchange, kHeight, height);
    DDV_MinMaxDouble(exchange, height, least, most);
}

bool ExportDialog::OnControlMsg(UINT id, UINT code) {
    if (code == BN_CLICKED && (id == kMillimetres || id == kPixels)) {
        UseUnit(id == kPixels);
        return true;
    }
    return CDialog::OnControlMsg(id, code);
}

// The picture stays as large as it was.
void ExportDialog::UseUnit(int pixels) {
    if (pixels == inPixels) return;
    if (!UpdateData(TRUE)) {
        CDataExchange back(this, FALSE);
        return ShowUnit(&back);
    }
    const double perPixel = kMillimetresPerInch / dotsPerInch;
    const auto convert = [&](double side) {
        return pixels ? std::round(side / perPixel) : Tenths(side * perPixel);
    };
    width = convert(width);
    height = convert(height);
    inPixels = pixels;
    UpdateData(FALSE);
}

}  // namespace app
