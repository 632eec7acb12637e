// What the program's view says: labels of the axes, read-outs, the caption.
#include <algorithm>
#include <cmath>

#include "app/workbench/CSeriesView.h"
#include "app/workbench/CWorkbenchFrame.h"

namespace app {

namespace {

constexpr int kMostDecimals = 12;

// The decimals that write multiples of `step` in full.
int DecimalsForStep(double step) {
    if (!(step > 0)) return 0;
    double scaled = step;
    for (int decimals = 0; decimals < kMostDecimals; ++decimals, scaled *= 10)
        if (std::fabs(scaled - std::round(scaled)) < 1e-6 * std::max(1.0, scaled)) return decimals;
    return kMostDecimals;
}

// The decimals in which neighbouring pixels differ.
int DecimalsForPixel(double perPixel) {
    if (!(perPixel > 0)) return 0;
    return std::clamp(static_cast<int>(std::ceil(-std::log10(perPixel))), 0, kMostDecimals);
}

CString Number(double value, int decimals) {
    CString text;
    // Beyond this nobody counts digits.
    if (std::fabs(value) >= 1e15 || decimals >= kMostDecimals)
        text.Format("%.6g", value);
    else
        text.Format("%.*f", decimals, std::fabs(value) < 0.5 * std::pow(10.0, -decimals) ? 0.0 : value);
    return text;
}

// The shortest of 1, 2 and 5 times powers of ten that is at least so long.
double NumberStepFor(double least) {
    if (!(least > 0) || !std::isfinite(least)) return 0;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least) return factor * power;
    return 10 * power;
}

}  // namespace

double CSeriesView::UserPerPixelX() const {
    return zoom.plotSize.cx > 0 ? zoom.viewExtent.cx / scaleX / zoom.plotSize.cx : 0;
}

double CSeriesView::UserPerPixelY() const {
    return zoom.plotSize.cy > 0 ? zoom.viewExtent.cy / scaleY / zoom.plotSize.cy : 0;
}

CSizeEx CSeriesView::GetTickSpacing(CSizeEx visible, CSize minimum) {
    CSizeEx spacing = CXYGraphView::GetTickSpacing(visible, minimum);
    const double leastReal = minimum.cx / scaleX / file_.x.unitsPerReal;
    if (!(leastReal > 0)) return spacing;
    if (file_.x.isTime) {
        timeStep_ = TimeStepFor(leastReal);
        spacing.cx = timeStep_.Seconds() * file_.x.unitsPerReal;
    } else {
        // A gap between neighbouring labels.
        numberStep_ = NumberStepFor(leastReal * 1.3);
        spacing.cx = numberStep_ * file_.x.unitsPerReal;
    }
    return spacing;
}

std::vector<double> CSeriesView::TickPlaces(double from, double to) {
    const XReading& x = file_.x;
    if (!x.isTime) {
        auto ticks = TickValues(x.Real(from), x.Real(to), numberStep_, FirstTick::Rounded);
        for (double& tick : ticks) tick = x.User(tick);
        return ticks;
    }
    const auto times = TimesAt(timeStep_, x.Time(from), x.Time(to));
    ChooseDatedTick(times);
    std::vector<double> ticks;
    ticks.reserve(times.size());
    for (const Microseconds time : times) ticks.push_back(x.UserOf(time));
    return ticks;
}

void CSeriesView::ChooseDatedTick(const std::vector<Microseconds>& times) {
    const bool midnight = std::any_of(times.begin(), times.end(), IsMidnight);
    datedTick_.reset();
    // The first label may reach beyond the left edge.
    if (!midnight && !times.empty()) datedTick_ = times[times.size() > 1 ? 1 : 0];
}

int CSeriesView::DrawCoordinateSystem(CDC* dc) {
    drawingLabels_ = true;
    const int result = CXYGraphView::DrawCoordinateSystem(dc);
    drawingLabels_ = false;
    return result;
}

CString CSeriesView::TimeLabel(double value) const {
    if (!drawingLabels_) return CString(WidestTickText(timeStep_));
    const Microseconds at = file_.x.Time(value);
    return CString(TimeTickText(at, timeStep_, datedTick_ && at == *datedTick_));
}

CString& CSeriesView::FormatXLabel(CString& text, double value) {
    text = file_.x.isTime ? TimeLabel(value) : Number(file_.x.Real(value), DecimalsForStep(numberStep_));
    if (!file_.x.isTime && !file_.x.unit.empty()) text += CString(" " + file_.x.unit);
    return text;
}

CString& CSeriesView::FormatYLabel(CString& text, double value) {
    return text = Number(Primary().y.Real(value), DecimalsForStep(TickSpacingInForce().cy));
}

CString& CSeriesView::FormatCaptionStr(CString& text) {
    text = CString(file_.title);
    if (IPointSource* const source = PrimarySource()) text += " - " + source->GetName();
    if (shownSources.size() > 1) {
        CString more;
        more.Format(" and %d more", static_cast<int>(shownSources.size()) - 1);
        text += more;
    }
    return text;
}

void CSeriesView::SetPositionText(CPoint& point) {
    if (!PrimarySource()) return;
    const double x = point.x / scaleX;
    const double y = Primary().y.Real(point.y / scaleY);
    const double perPixel = UserPerPixelX() / file_.x.unitsPerReal;
    CString text = file_.x.isTime ? CString(TimeReadOut(file_.x.Time(x), perPixel))
                                  : Number(file_.x.Real(x), DecimalsForPixel(perPixel));
    if (!file_.x.isTime && !file_.x.unit.empty()) text += CString(" " + file_.x.unit);
    text += ",  " + Number(y, DecimalsForPixel(UserPerPixelY()));
    const CString unit = PrimarySource()->GetUnitY();
    if (!unit.IsEmpty()) text += " " + unit;
    ShowStatus(kPositionPane, text);
}

// Times and values have no distance in common: both lengths are said, each in its unit.
CString CSeriesView::MeasuredText(const KRuler& measured) const {
    const double dx = (double{1.0} * measured.getEnd().x - measured.getStart().x) / scaleX;
    const double dy = (double{1.0} * measured.getEnd().y - measured.getStart().y) / scaleY;
    const double perPixel = UserPerPixelX() / file_.x.unitsPerReal;
    const double length = dx / file_.x.unitsPerReal;
    CString text;
    if (file_.x.isTime) {
        // Whole seconds or minutes where a pixel is longer than that.
        const double unit = perPixel >= 60 ? 60 : perPixel >= 1 ? 1 : 0.001;
        text = CString(DurationText(std::round(length / unit) * unit));
    } else {
        text = Number(length, DecimalsForPixel(perPixel));
        if (!file_.x.unit.empty()) text += CString(" " + file_.x.unit);
    }
    text += ",  " + Number(dy, DecimalsForPixel(UserPerPixelY()));
    if (!axes.UnitY.IsEmpty()) text += " " + axes.UnitY;
    return text;
}

int CSeriesView::DrawBitmap(CDC* dc) {
    const int result = CXYGraphView::DrawBitmap(dc);
    CString text;
    text.Format("Zoom %.3g x %.3g", static_cast<double>(zoom.Current().zoomX),
                static_cast<double>(zoom.Current().zoomY));
    ShowStatus(kZoomPane, text);
    return result;
}

void CSeriesView::ShowStatus(int pane, const CString& text) {
    if (!GetSafeHwnd()) return;
    auto* const frame = dynamic_cast<CWorkbenchFrame*>(AfxGetMainWnd());
    if (frame) frame->ShowStatus(pane, text);
}

}  // namespace app
