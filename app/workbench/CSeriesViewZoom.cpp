// What the program's view shows of its axes: zooming, panning, scrolling and windows that follow each other.
#include <algorithm>
#include <cmath>

#include "app/workbench/CGraphFrame.h"
#include "app/workbench/CSeriesView.h"
#include "app/workbench/CWorkbenchFrame.h"

namespace app {

namespace {

constexpr double kZoomStep = 1.4142135623730951;
// An axis shows at least so many of the smallest distances that samples can be apart, and at most so many
// times its whole range.
constexpr double kLeastCounts = 4;
constexpr double kMostWholes = 20;
constexpr int kScrollSteps = 10000;
constexpr double kLine = 0.05;

// Keeps a range's length between the ends of an axis. False when it had to be changed.
bool Limit(Range& range, double least, double most) {
    const double length = range.Length();
    if (length >= least && length <= most) return true;
    const double wanted = std::clamp(length, least, most);
    range = length > 0 ? range.Scaled(wanted / length, range.Middle())
                       : Range{range.from - wanted / 2, range.from + wanted / 2};
    return false;
}

}  // namespace

bool CSeriesView::LimitX(Range& x) const {
    double least = 0;
    for (const std::size_t i : ShownSeries()) {
        const double own = kLeastCounts * facts_[i].CountX();
        least = least > 0 ? std::min(least, own) : own;
    }
    return Limit(x, least, std::max(least, WholeX().Length() * kMostWholes));
}

bool CSeriesView::LimitY(Range& y, const PlotAxis& axis) const {
    double least = 0;
    for (const std::size_t i : axis.series) {
        const double own = kLeastCounts * facts_[i].CountY();
        least = least > 0 ? std::min(least, own) : own;
    }
    return Limit(y, least, std::max(least, axis.whole.Length() * kMostWholes));
}

void CSeriesView::ShowRanges(ShownRanges next, Keep keep) {
    if (keep == Keep::Entry)
        stack_.Push(std::move(next));
    else
        stack_.Current() = std::move(next);
    SyncRanges();
    arranged_ = false;
    TellLinked();
    RedrawMoved();
}

// Everything follows from the series shown.
void CSeriesView::RangesChanged() {
    emptiest_.clear();
    UpdatePanels();
    TellLinked();
    Redraw();
    CatchUp();
}

// About a pixel of its panel, or, without one, about the middle of all panels.
void CSeriesView::ZoomAbout(double factor, std::optional<CPoint> pixel) {
    if (GetKeyState(VK_CONTROL) < 0) factor = (factor - 1) * 0.2 + 1;
    ShownRanges next = stack_.Current();
    const Range x = ShownX();
    const std::size_t at = pixel ? PanelAt(panels_, *pixel) : 0;
    const PlotPanel* const panel = Panel(at);
    if (!panel) return;
    const char* end = nullptr;  // the axes that go no further
    if (!zoom.onlyY) {
        const double about = pixel ? ScaleX(*panel, x).Value(pixel->x) : x.Middle();
        Range scaled = x.Scaled(1 / factor, about);
        if (!LimitX(scaled)) {
            end = "x axis";
            scaled = std::fabs(scaled.Length() - x.Length()) < 1e-9 * x.Length() ? x : scaled;
        }
        next.x = scaled;
    }
    if (!zoom.onlyX) {
        for (std::size_t i = 0; i < panels_.size(); ++i) {
            if (pixel && i != at) continue;
            for (const PlotAxis& axis : panels_[i].axes) {
                const double about = pixel ? ScaleY(panels_[i], axis).Value(pixel->y) : axis.shown.Middle();
                Range scaled = axis.shown.Scaled(1 / factor, about);
                if (!LimitY(scaled, axis)) {
                    end = end ? "axes" : "y axis";
                    if (std::fabs(scaled.Length() - axis.shown.Length()) < 1e-9 * axis.shown.Length())
                        scaled = axis.shown;
                }
                next.y[axis.key] = scaled;
            }
        }
    }
    KeepAspect(next);
    const bool moved = next.x.value_or(x) != x || next.y != stack_.Current().y;
    if (moved) ShowRanges(std::move(next), Keep::Entry);
    if (end) Say(CString("The ") + end + (factor > 1 ? ": no closer than this" : ": no further than this"));
}

void CSeriesView::ZoomTo(const PlotPanel& panel, const CRect& pixels) {
    constexpr int kLeastSide = 3;
    const CRect& plot = panel.plot;
    const int left = std::clamp(std::min(pixels.left, pixels.right), plot.left, plot.right);
    const int right = std::clamp(std::max(pixels.left, pixels.right), plot.left, plot.right);
    const int top = std::clamp(std::min(pixels.top, pixels.bottom), plot.top, plot.bottom);
    const int bottom = std::clamp(std::max(pixels.top, pixels.bottom), plot.top, plot.bottom);
    // A side that was hardly drawn leaves its axis alone.
    const bool wide = right - left >= kLeastSide;
    const bool high = bottom - top >= kLeastSide;
    if (!wide && !high) return;
    ShownRanges next = stack_.Current();
    bool whole = true;
    if (wide) {
        const PixelScale scale = ScaleX(panel, ShownX());
        Range x{scale.Value(left), scale.Value(right)};
        whole = LimitX(x) && whole;
        next.x = x;
    }
    if (high)
        for (const PlotAxis& axis : panel.axes) {
            const PixelScale scale = ScaleY(panel, axis);
            Range y{scale.Value(bottom), scale.Value(top)};
            whole = LimitY(y, axis) && whole;
            next.y[axis.key] = y;
        }
    KeepAspect(next);
    ShowRanges(std::move(next), Keep::Entry);
    if (!whole) Say("No closer than this");
}

void CSeriesView::PanBy(CSize pixels, std::size_t at) {
    const PlotPanel* const panel = Panel(at);
    if (!panel) return;
    ShownRanges next = stack_.Current();
    const Range x = ShownX();
    next.x = x.Moved(-pixels.cx * ScaleX(*panel, x).PerPixel());
    for (const PlotAxis& axis : panel->axes)
        next.y[axis.key] = axis.shown.Moved(pixels.cy * ScaleY(*panel, axis).PerPixel());
    ShowRanges(std::move(next), Keep::InPlace);
}

void CSeriesView::ZoomAll() {
    UpdatePanels();
    ShownRanges next;
    KeepAspect(next);
    ShowRanges(std::move(next), Keep::Entry);
}

// Every y axis takes the range of the values that the x axis shows.
void CSeriesView::FitValues() {
    UpdatePanels();
    ShownRanges next = stack_.Current();
    for (const PlotPanel& panel : panels_)
        for (const PlotAxis& axis : panel.axes) {
            Range values = Range::None();
            for (const std::size_t i : axis.series)
                if (const Range y = facts_[i].YWithin(ShownX()); !y.IsNone()) values.Add(y);
            if (values.IsNone()) continue;
            next.y[axis.key] = Padded(values);
        }
    ShowRanges(std::move(next), Keep::Entry);
}

// The first series from edge to edge.
void CSeriesView::ShowExtent() {
    UpdatePanels();
    if (panels_.empty()) return;
    const PlotAxis& axis = panels_.front().axes.front();
    const SeriesFacts& facts = facts_[axis.series.front()];
    if (facts.X().IsNone()) return;
    ShownRanges next = stack_.Current();
    Range x = facts.X();
    Range y = facts.Y();
    LimitX(x);
    LimitY(y, axis);
    next.x = x;
    next.y[axis.key] = y;
    ShowRanges(std::move(next), Keep::Entry);
}

// The same distance per pixel on both axes of a lone plot, by showing more of one of them.
void CSeriesView::KeepAspect(ShownRanges& shown) const {
    if (!zoom.isoAspect || zoom.onlyX || zoom.onlyY || panels_.size() != 1) return;
    const PlotPanel& panel = panels_.front();
    if (panel.axes.size() != 1) return;
    const PlotAxis& axis = panel.axes.front();
    const Range x = shown.x.value_or(WholeX());
    const auto known = shown.y.find(axis.key);
    const Range y = known != shown.y.end() ? known->second : axis.whole;
    // Panels made anew have no place yet: a lone one comes where the last was.
    const CRect& plot = panel.plot.IsRectEmpty() ? plotArea : panel.plot;
    if (plot.IsRectEmpty()) return;
    const double perX = x.Length() / plot.Width();
    const double perY = y.Length() / plot.Height();
    if (perX < perY)
        shown.x = x.Scaled(perY / perX, x.Middle());
    else
        shown.y[axis.key] = y.Scaled(perX / perY, y.Middle());
}

// Other windows show the same part of the x axis while they are linked.
void CSeriesView::TellLinked() {
    if (!linked_ || !GetSafeHwnd()) return;
    auto* const frame = dynamic_cast<CWorkbenchFrame*>(AfxGetMainWnd());
    if (!frame) return;
    for (CMDIChildWnd* const child : frame->GetChildren()) {
        auto* const graph = dynamic_cast<CGraphFrame*>(child);
        CSeriesView* const other = graph ? graph->View() : nullptr;
        if (other && other != this) other->FollowX(file_.x, ShownX());
    }
}

void CSeriesView::FollowX(const XReading& reading, const Range& x) {
    if (reading.isTime != file_.x.isTime || (!reading.isTime && reading.unit != file_.x.unit)) return;
    const double shift = static_cast<double>(reading.origin - file_.x.origin) / 1e6;
    Range own = reading.isTime ? x.Moved(shift) : x;
    LimitX(own);
    if (own == ShownX()) return;
    stack_.Current().x = own;
    SyncRanges();
    arranged_ = false;
    RedrawMoved();
}

void CSeriesView::ShowScrollBars() {
    if (!GetSafeHwnd() || panels_.empty()) return;
    const auto show = [this](int bar, Range all, const Range& shown, bool upwards) {
        all.Add(shown);
        const double step = all.Length() / kScrollSteps;
        const int visible = std::clamp(RoundHalfAway(shown.Length() / step), 1, kScrollSteps);
        const double before = upwards ? all.to - shown.to : shown.from - all.from;
        SetScrollRange(bar, 0, kScrollSteps - visible);
        SetScrollPage(bar, visible);
        SetScrollPos(bar, RoundHalfAway(before / step));
    };
    show(SB_HORZ, WholeX(), ShownX(), false);
    const PlotPanel& panel = panels_[std::min(gesturePanel_, panels_.size() - 1)];
    show(SB_VERT, panel.axes.front().whole, panel.axes.front().shown, true);
}

void CSeriesView::OnHScroll(UINT code, UINT position, CScrollBar*) { Scroll(SB_HORZ, code, position); }

void CSeriesView::OnVScroll(UINT code, UINT position, CScrollBar*) { Scroll(SB_VERT, code, position); }

void CSeriesView::Scroll(int bar, UINT code, UINT position) {
    SCROLLINFO info;
    const PlotPanel* const panel = Panel(gesturePanel_);
    if (!panel || !GetScrollInfo(bar, &info)) return;
    // In parts of what is shown, to the right or down.
    double parts = 0;
    const auto to = [&](int target) {
        return (target - info.nPos) / std::max(1.0, static_cast<double>(info.nPage));
    };
    switch (code) {
        case SB_LINELEFT:
            parts = -kLine;
            break;
        case SB_LINERIGHT:
            parts = kLine;
            break;
        case SB_PAGELEFT:
        case SB_LEFT:
            parts = -1;
            break;
        case SB_PAGERIGHT:
        case SB_RIGHT:
            parts = 1;
            break;
        case SB_THUMBPOSITION:
            parts = to(static_cast<int>(position));
            break;
        case SB_THUMBTRACK:
            parts = to(info.nTrackPos);
            break;
        default:
            return;
    }
    ShownRanges next = stack_.Current();
    if (bar == SB_HORZ)
        next.x = ShownX().Moved(parts * ShownX().Length());
    else
        for (const PlotAxis& axis : panel->axes)
            next.y[axis.key] = axis.shown.Moved(-parts * axis.shown.Length());
    ShowRanges(std::move(next), Keep::InPlace);
}

}  // namespace app
