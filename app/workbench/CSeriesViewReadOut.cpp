// What the program's view says: the position and the sample under the pointer, the ruler, the zoom.
#include <algorithm>
#include <cmath>

#include "app/workbench/CSeriesView.h"
#include "app/workbench/CWorkbenchFrame.h"

namespace app {

namespace {

constexpr int kReach = 24;  // pixels at 96 dots per inch

// A time without the zeros that its neighbours have too.
CString WholeTime(const XReading& reading, const AxisReader& axis, double seconds) {
    const Microseconds at = reading.Time(seconds * reading.unitsPerReal);
    return axis.ReadOut(seconds, at % (60 * kSecond) == 0 ? 60 : at % kSecond == 0 ? 1 : 1e-6);
}

CString StatusOf(unsigned short status) {
    CString text;
    const auto add = [&](unsigned short bit, const char* word) {
        if (!(status & bit)) return;
        if (!text.IsEmpty()) text += ", ";
        text += word;
    };
    add(PS_DELETED, "deleted");
    add(PS_REJECTED, "rejected");
    add(PS_SPIKE, "spike");
    add(PS_INTERPOLATED, "interpolated");
    add(PS_SMOOTHED, "smoothed");
    add(PS_MOVED, "moved");
    return text;
}

}  // namespace

std::optional<CSeriesView::Hovered> CSeriesView::Hover() const {
    if (!pointer_) return {};
    const std::size_t at = PanelAt(panels_, *pointer_);
    if (at >= panels_.size()) return {};
    const PlotPanel& panel = panels_[at];
    const PixelScale x = ScaleX(panel, ShownX());
    const int reach = kReach * std::max(96, arrangedDots_) / 96;
    std::optional<Hovered> nearest;
    double distance = reach;
    for (const PlotAxis& axis : panel.axes) {
        const PixelScale y = ScaleY(panel, axis);
        for (const std::size_t i : axis.series) {
            const auto near = facts_[i].Nearest(x, y, *pointer_, reach);
            if (!near || near->distance > distance) continue;
            distance = near->distance;
            const CPoint stored = facts_[i].Source().GetData()[near->index];
            nearest = Hovered{i,
                              near->index,
                              {RoundHalfAway(x.Pixel(facts_[i].RealX(stored.x))),
                               RoundHalfAway(y.Pixel(facts_[i].RealY(stored.y)))}};
        }
    }
    return nearest;
}

std::vector<CString> CSeriesView::SampleText(const Hovered& sample) const {
    const FileSeries& series = file_.series[sample.series];
    const SeriesFacts& facts = facts_[sample.series];
    IPointSource& source = facts.Source();
    const CPoint stored = source.GetData()[sample.index];
    CString value = WithDecimals(facts.RealY(stored.y), series.decimals);
    if (const CString unit = source.GetUnitY(); !unit.IsEmpty()) value += " " + unit;
    CString x;
    if (file_.x.isTime) {
        x = WholeTime(file_.x, *xReader_, facts.RealX(stored.x));
    } else {
        x.Format("%.10g", facts.RealX(stored.x));
        if (!file_.x.unit.empty()) x += CString(" " + file_.x.unit);
    }
    CString number;
    number.Format("sample %d", sample.index + 1);
    const unsigned short* const status = source.GetStatus();
    if (const CString word = status ? StatusOf(status[sample.index]) : CString(); !word.IsEmpty())
        number += ", " + word;
    return {source.GetName() + ": " + value, x, number};
}

void CSeriesView::ShowPointer(CPoint pixel) {
    const bool moved = !pointer_ || !(*pointer_ == pixel);
    pointer_ = pixel;
    const PlotPanel* const panel = Panel(PanelAt(panels_, pixel));
    if (!panel) return;
    const PixelScale x = ScaleX(*panel, ShownX());
    const PlotAxis& axis = panel->axes.front();
    const PixelScale y = ScaleY(*panel, axis);
    positionText_ = xReader_->ReadOut(x.Value(pixel.x), x.PerPixel()) + ",  " +
                    axis.reader->ReadOut(y.Value(pixel.y), y.PerPixel());
    ShowStatus(kPositionPane, positionText_);
    if (!moved) return;
    const std::optional<Hovered> before = std::exchange(hovered_, readOut_ ? Hover() : std::nullopt);
    const bool same = before.has_value() == hovered_.has_value() &&
                      (!before || (before->series == hovered_->series && before->index == hovered_->index));
    if (crosshair_ || !same) Invalidate(FALSE);
}

// Times and values have no distance in common: both lengths are said, each in its unit.
CString CSeriesView::MeasuredText() const {
    if (gesturePanel_ >= panels_.size()) return {};
    const PlotPanel& panel = panels_[gesturePanel_];
    const PlotAxis& axis = panel.axes.front();
    const SeriesFacts& facts = facts_[axis.series.front()];
    const CPoint start = ruler.getStart();
    const CPoint end = ruler.getEnd();
    return xReader_->Distance(facts.RealX(end.x) - facts.RealX(start.x), ScaleX(panel, ShownX()).PerPixel()) +
           ",  " +
           axis.reader->Distance(facts.RealY(end.y) - facts.RealY(start.y), ScaleY(panel, axis).PerPixel());
}

void CSeriesView::ShowZoomText() {
    if (panels_.empty()) return;
    const PlotAxis& axis = panels_[std::min(gesturePanel_, panels_.size() - 1)].axes.front();
    zoomText_.Format("Zoom %.3g x %.3g", WholeX().Length() / ShownX().Length(),
                     axis.whole.Length() / axis.shown.Length());
    ShowStatus(kZoomPane, zoomText_);
}

void CSeriesView::OnActivateView(BOOL activate, CView* activated, CView* deactivated) {
    CXYGraphView::OnActivateView(activate, activated, deactivated);
    if (!activate) return;
    ShowStatus(kPositionPane, positionText_);
    ShowStatus(kZoomPane, zoomText_);
}

// The status bar is the active window's.
void CSeriesView::ShowStatus(int pane, const CString& text) {
    if (!GetSafeHwnd()) return;
    auto* const frame = dynamic_cast<CWorkbenchFrame*>(AfxGetMainWnd());
    if (frame && (!frame->ActiveSeriesView() || frame->ActiveSeriesView() == this))
        frame->ShowStatus(pane, text);
}

void CSeriesView::Say(const CString& text) {
    if (CFrameWnd* const frame = GetParentFrame()) frame->SetMessageText(text);
}

}  // namespace app
