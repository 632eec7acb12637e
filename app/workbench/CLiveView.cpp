#include "app/workbench/CLiveView.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

constexpr int kMargin = 4;           // columns right of the newest sample
constexpr int kStroke = 3;           // columns that a line or a dot reaches beyond its sample
constexpr double kHeadroom = 0.15;   // of the values' range that stays free above and below
constexpr double kTooSmall = 0.4;    // of an axis, that values fill at least
constexpr int kCloserEvery = 120;    // pictures
constexpr double kRoomAhead = 0.25;  // of the whole range, behind the newest sample
constexpr COLORREF kAlarmColor = RGB(200, 30, 30);

}  // namespace

CLiveView::CLiveView(LiveSession& session, const CString& key, double window)
    : CSeriesView(session.File(), key), session_(session), window_(window) {
    TakeSeries();
}

// Series that came after the view was made are shown like those that were there.
void CLiveView::TakeSeries() {
    const std::size_t before = seen_.size();
    if (before != facts_.size() || facts_.size() != file_.series.size()) UseFile();
    for (std::size_t i = before; i < file_.series.size(); ++i) {
        RemoveSource(file_.series[i].source.get());
        AddSource(file_.series[i].source.get(), true);
    }
    seen_.resize(file_.series.size());
    UpdatePanels();
}

// The base zooms to everything, which holds nothing here.
void CLiveView::OnInitialUpdate() {
    CSeriesView::OnInitialUpdate();
    held_ = false;
    stack_ = {};
}

void CLiveView::Follow() {
    if (seen_.size() != file_.series.size()) {
        TakeSeries();
        Redraw();
    }
    if (rowsShown_ == session_.Rows()) return;
    rowsShown_ = session_.Rows();
    if (held_) return;
    if (stale == UpToDate) advancing_ = true;
    RedrawMoved();
}

void CLiveView::Hold(bool hold) {
    if (held_ == hold) return;
    held_ = hold;
    stack_ = hold ? stack_ : ZoomStack();
    stack_.KeepCurrent();
    Redraw();
}

void CLiveView::SetRange(LiveRange range) {
    fixed_ = ShownX();
    range_ = range;
    Hold(false);
    Redraw();
}

void CLiveView::SetWindow(double length) {
    window_ = length;
    SetRange(LiveRange::Scrolling);
}

void CLiveView::SetAlarm(std::optional<double> level) {
    alarm_ = level;
    Redraw();
}

// Whoever zooms or pans looks at something: it stays.
void CLiveView::ShowRanges(ShownRanges next, Keep keep) {
    if (!held_) {
        held_ = true;
        // The step back leads to what was followed.
        Redraw();
    }
    CSeriesView::ShowRanges(std::move(next), keep);
    Redraw();
}

Range CLiveView::XOf(const LiveColumns& columns) const {
    return columns.Shown(session_.CountsPerUnit(), file_.x.shift);
}

Range CLiveView::RangeToShow() const {
    const double newest = session_.NewestX().value_or(0) / session_.CountsPerUnit() + file_.x.shift;
    if (range_ == LiveRange::Scrolling) return {newest - window_, newest};
    return range_ == LiveRange::Whole ? whole_ : fixed_;
}

// The values shown on an axis, with room for more. Whether its range changed.
bool CLiveView::FitY(const PlotAxis& axis, bool closer) {
    auto& shown = stack_.Current().y;
    const auto known = shown.find(axis.key);
    Range values = Range::None();
    const Range x = RangeToShow();
    for (const std::size_t i : axis.series) {
        const SeriesFacts& facts = facts_[i];
        const COnlineSource& source = static_cast<COnlineSource&>(facts.Source());
        const auto count = static_cast<std::uint64_t>(facts.Source().GetCount());
        auto [first, end] = facts.Within(x);
        // Values that stood in the range before still do.
        if (known != shown.end() && !closer)
            first = std::max(
                first, static_cast<int>(count - std::min(count, source.GetAppended() - seen_[i].appended)));
        if (first >= end) continue;
        const StoredBox box = FindStoredBox(facts.Source().GetData() + first, nullptr, end - first, 0);
        values.Add(Range{facts.RealY(box.minY), facts.RealY(box.maxY)});
    }
    if (values.IsNone()) {
        if (known == shown.end()) shown[axis.key] = {0, 1};
        return known == shown.end();
    }
    if (known != shown.end()) {
        const Range& now = known->second;
        const bool fits = values.from >= now.from && values.to <= now.to;
        if (fits && !(closer && values.Length() < kTooSmall * now.Length() / (1 + 2 * kHeadroom)))
            return false;
        if (!closer)
            values.Add(Range{now.from + now.Length() * kHeadroom / 2, now.to - now.Length() * kHeadroom / 2});
    }
    const double least =
        std::max(std::fabs(values.Middle()) * 1e-6, 4 * facts_[axis.series.front()].CountY());
    const double room = std::max(values.Length() * kHeadroom, least);
    const Range wanted{values.from - room, values.to + room};
    if (known != shown.end() && known->second == wanted) return false;
    shown[axis.key] = wanted;
    return true;
}

// What x and y show now; whether y, or the length of x, is another than before. `closer`: an axis that has
// become too long for what it shows counts, too.
bool CLiveView::ChooseRanges(bool closer) {
    for (const std::size_t i : ShownSeries()) facts_[i].Refresh(breakAtGaps_ ? gapFactor_ : 0);
    bool changed = false;
    if (range_ == LiveRange::Whole) {
        const Range data = WholeX();
        if (data.to > whole_.to || data.from > whole_.from + kRoomAhead * whole_.Length() ||
            data.from < whole_.from) {
            whole_ = {data.from, data.to + std::max(kRoomAhead * data.Length(), window_ / 10)};
            changed = true;
        }
    }
    for (const PlotPanel& panel : panels_)
        for (const PlotAxis& axis : panel.axes) changed |= FitY(axis, closer);
    return changed;
}

LiveColumns CLiveView::ColumnsFor(const PlotPanel& panel) const {
    const Range x = RangeToShow();
    const double counts = session_.CountsPerUnit();
    const auto columns =
        LiveColumns::Of(panel.plot, (x.from - file_.x.shift) * counts, (x.to - file_.x.shift) * counts);
    return range_ == LiveRange::Scrolling && session_.NewestX()
               ? columns.EndingAt(*session_.NewestX(), kMargin)
               : columns;
}

// Whether the picture can be moved on. The plots lie as they are; ticks are asked for anew.
bool CLiveView::PlanAdvance(const CDC& dc) {
    next_.clear();
    const bool closer = --untilCloser_ <= 0;
    if (closer) untilCloser_ = kCloserEvery;
    if (ChooseRanges(closer) || panels_.empty() || standing_.size() != panels_.size() ||
        drawnArea_ != DrawingArea())
        return false;
    for (std::size_t p = 0; p < panels_.size(); ++p) {
        const Standing& before = standing_[p];
        Standing now{ColumnsFor(panels_[p]), {}};
        const std::int64_t step = now.columns.first - before.columns.first;
        if (now.columns.counts != before.columns.counts || now.columns.width != before.columns.width ||
            step < 0 || step >= now.columns.width)
            return false;
        const Range x = XOf(now.columns);
        AxisRoom room{panels_[p].plot.Width(), false,
                      [&dc](const CString& text) { return dc.GetTextExtent(text); }};
        now.xTicks = xReader_->Ticks(x, room);
        // Grid lines that stand have to be lines of the new range, too.
        const auto inside = [&](const std::vector<AxisTick>& ticks) {
            std::vector<double> places;
            const double from = x.from + 1e-9 * x.Length();
            const double to = XOf(before.columns).to - 1e-9 * x.Length();
            for (const AxisTick& tick : ticks)
                if (tick.at >= from && tick.at <= to) places.push_back(tick.at);
            return places;
        };
        if (inside(now.xTicks) != inside(before.xTicks)) return false;
        next_.push_back(std::move(now));
    }
    for (const std::size_t i : ShownSeries()) {
        const COnlineSource& source = session_.Series(i);
        const Seen& seen = seen_[i];
        // Emptied, overtaken by a whole ring, or with x that falls.
        if (source.GetAppended() < seen.appended ||
            source.GetAppended() - static_cast<std::uint64_t>(session_.Series(i).GetCount()) >
                seen.appended ||
            !facts_[i].IsSorted())
            return false;
    }
    return true;
}

int CLiveView::DrawBackground(CDC* dc, CBrush* brush, CSize area) {
    planned_ = false;
    if (Follows() && advancing_ && stale == Moved) {
        const PixelSpace pixels(*dc);
        planned_ = PlanAdvance(*dc);
        if (planned_) return 1;
    }
    return CSeriesView::DrawBackground(dc, brush, area);
}

int CLiveView::DrawBitmap(CDC* dc) {
    advancing_ = false;
    if (!Follows() || !dataHandler) {
        standing_.clear();
        if (!dataHandler) AllocDataHandler(PrimarySource());
        if (!Follows()) {
            redrawing = Changed;
            return CSeriesView::DrawBitmap(dc);
        }
    }
    const int saved = dc->SaveDC();
    if (planned_)
        DrawAdvanced(*dc);
    else
        DrawWhole(*dc);
    dc->RestoreDC(saved);
    NoteDrawn();
    return 1;
}

void CLiveView::NoteDrawn() {
    for (const std::size_t i : ShownSeries()) {
        COnlineSource& source = session_.Series(i);
        seen_[i] = {source.GetAppended(),
                    source.GetAppended() - static_cast<std::uint64_t>(source.GetCount())};
    }
    drawnArea_ = DrawingArea();
}

void CLiveView::DrawWhole(CDC& dc) {
    ++drawn_.whole;
    UpdatePanels();
    ChooseRanges(false);
    stack_.Current().x = RangeToShow();
    SyncRanges();
    arranged_ = false;
    {
        const PixelSpace pixels(dc);
        Arrange(dc);
    }
    // The plots lie where they are now: what they show goes by their columns.
    standing_.clear();
    for (const PlotPanel& panel : panels_) standing_.push_back({ColumnsFor(panel), {}});
    for (std::size_t p = 0; p < panels_.size(); ++p) {
        const PixelSpace pixels(dc);
        AxisRoom room{panels_[p].plot.Width(), false,
                      [&dc](const CString& text) { return dc.GetTextExtent(text); }};
        panels_[p].xTicks = standing_[p].xTicks = xReader_->Ticks(XOf(standing_[p].columns), room);
        if (p == 0) stack_.Current().x = XOf(standing_[p].columns);
    }
    for (std::size_t p = 0; p < panels_.size(); ++p) DrawPart(dc, panels_[p], standing_[p], panels_[p].tile);
    ShowScrollBars();
    ShowZoomText();
}

void CLiveView::DrawAdvanced(CDC& dc) {
    ++drawn_.advanced;
    for (std::size_t p = 0; p < panels_.size(); ++p) {
        panels_[p].xTicks = next_[p].xTicks;
        AdvancePanel(dc, panels_[p], standing_[p], next_[p]);
    }
    standing_ = std::move(next_);
    if (!standing_.empty()) stack_.Current().x = XOf(standing_.front().columns);
}

void CLiveView::AdvancePanel(CDC& dc, const PlotPanel& panel, const Standing& before, const Standing& now) {
    const CRect& plot = panel.plot;
    const auto step = static_cast<int>(now.columns.first - before.columns.first);
    if (step > 0) MovePixels(plot, step);
    // New columns from the sample that was the newest; forgotten ones up to the one that is the oldest.
    std::int64_t newFrom = plot.right - step;
    std::int64_t oldTo = plot.left + (step > 0 ? 1 : 0);
    for (const PlotAxis& axis : panel.axes)
        for (const std::size_t i : axis.series) {
            COnlineSource& source = session_.Series(i);
            const std::uint64_t first = source.GetAppended() - static_cast<std::uint64_t>(source.GetCount());
            if (source.GetCount() == 0) continue;
            const CPoint* const points = source.GetData();
            if (source.GetAppended() > seen_[i].appended) {
                const std::uint64_t last = std::max(first, seen_[i].appended > 0 ? seen_[i].appended - 1 : 0);
                newFrom = std::min(newFrom, now.columns.Column(points[last - first].x) - kStroke);
            }
            if (first > seen_[i].first)
                oldTo = std::max(oldTo, now.columns.Column(points[0].x) + kStroke + 1);
        }
    const auto column = [&](std::int64_t at) {
        return static_cast<int>(std::clamp<std::int64_t>(at, plot.left, plot.right));
    };
    const int left = column(oldTo);
    const int right = std::max(left, column(newFrom));
    if (left > plot.left) DrawPart(dc, panel, now, {plot.left, plot.top, left, plot.bottom});
    if (right < plot.right) DrawPart(dc, panel, now, {right, plot.top, plot.right, plot.bottom});
    if (step > 0)
        DrawPart(dc, panel, now, {panel.tile.left, plot.bottom, panel.tile.right, panel.tile.bottom});
}

// The pixels of the plot move to the left.
void CLiveView::MovePixels(const CRect& plot, int columns) {
    auto* const bits = static_cast<std::uint32_t*>(picture->GetBits());
    const int wide = picture->GetWidth();
    const int top = std::clamp(static_cast<int>(plot.top), 0, picture->GetHeight());
    const int bottom = std::clamp(static_cast<int>(plot.bottom), 0, picture->GetHeight());
    const int left = std::clamp(static_cast<int>(plot.left), 0, wide);
    const int right = std::clamp(static_cast<int>(plot.right), 0, wide);
    if (right - left <= columns) return;
    for (int row = top; row < bottom; ++row) {
        std::uint32_t* const line = bits + std::ptrdiff_t{row} * wide;
        std::memmove(line + left, line + left + columns,
                     static_cast<std::size_t>(right - left - columns) * sizeof *line);
    }
}

void CLiveView::DrawPart(CDC& dc, const PlotPanel& panel, const Standing& standing, const CRect& part) {
    const Range x = XOf(standing.columns);
    ClipTo(dc, part);
    {
        const PixelSpace pixels(dc);
        dc.FillSolidRect(part, Theme().background);
    }
    PaintGrid(dc, panel, x, Theme(), {axes.DrawXLines != 0, axes.DrawYLines != 0});
    PaintAxes(dc, panel, x, *xReader_, Theme(), [this](const PlotAxis& axis) {
        return axis.series.size() == 1 ? ColorOf(axis.series.front()) : Theme().axis;
    });
    const CRect& plot = panel.plot;
    const CRect inside(std::max(part.left, plot.left), std::max(part.top, plot.top),
                       std::min(part.right, plot.right), std::min(part.bottom, plot.bottom));
    if (inside.left < inside.right && inside.top < inside.bottom) {
        ClipTo(dc, inside);
        for (auto axis = panel.axes.rbegin(); axis != panel.axes.rend(); ++axis)
            for (auto i = axis->series.rbegin(); i != axis->series.rend(); ++i)
                DrawLive(dc, panel, *axis, *i, standing.columns, inside);
    }
    dc.SelectClipRgn(nullptr);
}

// The samples whose lines and dots reach into the part, and one more at either side.
void CLiveView::DrawLive(CDC& dc, const PlotPanel& panel, const PlotAxis& axis, std::size_t i,
                         const LiveColumns& columns, const CRect& part) {
    const SeriesFacts& facts = facts_[i];
    IPointSource& source = facts.Source();
    const auto count = static_cast<int>(source.GetCount());
    if (count == 0) return;
    const double perUnit = session_.CountsPerUnit();
    const auto real = [&](std::int64_t column) { return columns.Stored(column) / perUnit + file_.x.shift; };
    auto [first, end] = facts.Within({real(part.left - kStroke - 1), real(part.right + kStroke + 1)});
    first = std::max(0, first - 1);
    end = std::min(count, end + 1);
    if (first >= end) return;
    const CPoint* const points = source.GetData();
    MapToPlot(dc, panel, axis, XOf(columns), facts);
    std::int32_t oldest = points[first].x;
    if (!facts.IsSorted())
        for (int k = first; k < end; ++k) oldest = std::min(oldest, points[k].x);
    columns.MapX(dc, oldest);
    std::vector<int> breaks;
    for (const int at : facts.Breaks())
        if (at > first && at < end) breaks.push_back(at - first);
    const KDrawProperty& property = KDrawPropertyManager::Instance().GetProperty(source.GetKey());
    const COLORREF color = ColorOf(i);
    CPen pen;
    pen.CreatePen(property.getLineStyle(), 0, color);
    const Selected usePen(dc, pen);
    constexpr int kDots = 0;
    constexpr int kLine = 2;
    if (property.getDrawStyle() != kDots)
        dc.SmoothPolyline(points + first, end - first, {}, {breaks.data(), static_cast<int>(breaks.size())});
    if (property.getDrawStyle() != kLine)
        dc.DrawSmoothDots(points + first, end - first, (property.getDotSize() + 1) * 32, color);
}

bool CLiveView::IsAlarmed() const {
    if (!alarm_ || panels_.empty() || panels_.front().axes.empty()) return false;
    return std::ranges::any_of(panels_.front().axes.front().series, [this](std::size_t i) {
        COnlineSource& source = session_.Series(i);
        const long count = source.GetCount();
        return count > 0 && facts_[i].RealY(source.GetData()[count - 1].y) > *alarm_;
    });
}

int CLiveView::DrawAfterBitmap(CDC* dc) {
    if (Follows()) {
        legends_.clear();
        // The corner with the fewest data would be another one all the time.
        if (legendCorner_ == LegendCorner::Emptiest) legendCorner_ = LegendCorner::TopLeft;
        for (std::size_t i = 0; i < panels_.size(); ++i) DrawLegendOf(*dc, i);
    }
    if (alarm_ && !panels_.empty() && !panels_.front().axes.empty()) {
        const PlotPanel& panel = panels_.front();
        const PlotAxis& axis = panel.axes.front();
        const int saved = dc->SaveDC();
        {
            const PixelSpace pixels(*dc);
            CPen pen;
            pen.CreatePen(PS_SOLID, 0, kAlarmColor);
            const Selected usePen(*dc, pen);
            const CRect& plot = panel.plot;
            if (axis.shown.Holds(*alarm_)) {
                const int at = RoundHalfAway(ScaleY(panel, axis).Pixel(*alarm_));
                dc->MoveTo(plot.left, at);
                dc->LineTo(plot.right, at);
            }
            const SelectedStock noFill(*dc, NULL_BRUSH);
            for (int i = 0; IsAlarmed() && i < 3; ++i)
                dc->Rectangle(plot.left + i, plot.top + i, plot.right - i, plot.bottom - i);
        }
        dc->RestoreDC(saved);
    }
    return CSeriesView::DrawAfterBitmap(dc);
}

}  // namespace app
