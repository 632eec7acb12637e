#include "app/workbench/PlotPainter.h"

#include <algorithm>
#include <cmath>

namespace app {

namespace {

void Line(CDC& dc, int x1, int y1, int x2, int y2) {
    dc.MoveTo(x1, y1);
    dc.LineTo(x2, y2);
}

int Half(int length) { return length / 2; }

// One axis of a mapping: the stored values of a range's ends on two pixels. The window starts at a whole
// value at or before the range and is as long in whole values as needed, so that deep zooms lose nothing.
struct AxisMap {
    AxisMap(double storedFrom, double storedTo, int first, int last) {
        const double extent = std::max(storedTo - storedFrom, 1e-3);
        constexpr double kFine = 65536;
        const double factor = extent < kFine ? 1024 : 1;
        windowExt = std::max(1, RoundHalfAway(std::ceil(extent) * factor));
        viewportExt = RoundHalfAway(windowExt * (std::abs(last - first) / extent));
        windowOrg = RoundHalfAway(std::floor(storedFrom));
        const double direction = last < first ? -1 : 1;
        const double perCount = std::abs(last - first) / extent;
        viewportOrg = RoundHalfAway(first - direction * (storedFrom - windowOrg) * perCount);
        if (direction < 0) windowExt = -windowExt;
    }
    int windowOrg, windowExt, viewportOrg, viewportExt;
};

}  // namespace

void ClipTo(CDC& dc, const CRect& area) {
    CRgn region;
    region.CreateRectRgnIndirect(&area);
    dc.SelectClipRgn(&region);
}

void PaintGrid(CDC& dc, const PlotPanel& panel, const Range& x, const PlotTheme& theme, GridLines lines) {
    const PixelSpace pixels(dc);
    CPen pen;
    pen.CreatePen(PS_SOLID, 0, theme.grid);
    const Selected usePen(dc, pen);
    const CRect& plot = panel.plot;
    if (lines.x)
        for (const AxisTick& tick : panel.xTicks) {
            const int at = RoundHalfAway(ScaleX(panel, x).Pixel(tick.at));
            Line(dc, at, plot.top, at, plot.bottom);
        }
    if (!lines.y || panel.axes.empty()) return;
    // Lines of one axis alone: those of two would lie between each other.
    const PlotAxis& axis = panel.axes.front();
    for (const AxisTick& tick : axis.ticks) {
        const int at = RoundHalfAway(ScaleY(panel, axis).Pixel(tick.at));
        Line(dc, plot.left, at, plot.right, at);
    }
}

namespace {

// What labels leave out, where it begins to hold. The first one says what held before: it gives way to the
// next.
void PaintContexts(CDC& dc, const PlotPanel& panel, const Range& x, int top, int gap) {
    struct Context {
        LabelSpan span;
        const CString* text;
    };
    std::vector<Context> contexts;
    for (const AxisTick& tick : panel.xTicks) {
        if (tick.context.IsEmpty()) continue;
        const int width = dc.GetTextExtent(tick.context).cx;
        const int at = RoundHalfAway(ScaleX(panel, x).Pixel(tick.at));
        const int least = panel.tile.left + Half(width) + 1;
        contexts.push_back(
            {{std::clamp(at, least, std::max(least, panel.tile.right - Half(width) - 1)), width},
             &tick.context});
    }
    const auto touch = [&](const Context& a, const Context& b) {
        return b.span.centre - Half(b.span.width) - Half(a.span.width) - a.span.centre < gap;
    };
    if (contexts.size() > 1 && touch(contexts[0], contexts[1])) contexts.erase(contexts.begin());
    const Context* before = nullptr;
    for (const Context& context : contexts) {
        if (before && touch(*before, context)) continue;
        dc.TextOut(context.span.centre, top, *context.text);
        before = &context;
    }
}

void PaintXAxis(CDC& dc, const PlotPanel& panel, const Range& x, const AxisReader& reader, int stroke) {
    const CRect& plot = panel.plot;
    Line(dc, plot.left, plot.bottom, plot.right + 1, plot.bottom);
    std::vector<LabelSpan> spans;
    for (const AxisTick& tick : panel.xTicks) {
        const int at = RoundHalfAway(ScaleX(panel, x).Pixel(tick.at));
        Line(dc, at, plot.bottom, at, plot.bottom + stroke + 1);
        spans.push_back({at, static_cast<int>(dc.GetTextExtent(tick.text).cx)});
    }
    if (!panel.labelled) return;
    KeepWhole(spans, panel.tile.left, panel.tile.right);
    dc.SetTextAlign(TA_CENTER | TA_TOP);
    for (std::size_t i = 0; i < spans.size(); ++i) {
        const int left = spans[i].centre - Half(spans[i].width);
        // A label that would be cut says something wrong.
        if (left < panel.tile.left || left + spans[i].width > panel.tile.right) continue;
        dc.TextOut(spans[i].centre, plot.bottom + stroke + 1, panel.xTicks[i].text);
    }
    const int line = dc.GetTextExtent("0").cy;
    PaintContexts(dc, panel, x, plot.bottom + stroke + 1 + line, line);
    const int taken = stroke + 1 + reader.LabelLines() * line;
    if (panel.tile.bottom - plot.bottom < taken + line) return;
    dc.SetTextAlign(TA_RIGHT | TA_BOTTOM);
    dc.TextOut(plot.right, panel.tile.bottom - 1, reader.Title());
}

void PaintYAxis(CDC& dc, const PlotPanel& panel, const PlotAxis& axis, int stroke, int gap) {
    const CRect& plot = panel.plot;
    Line(dc, axis.column, plot.top, axis.column, plot.bottom + 1);
    const int outwards = axis.atRight ? 1 : -1;
    const int high = dc.GetTextExtent("0").cy;
    dc.SetTextAlign((axis.atRight ? TA_LEFT : TA_RIGHT) | TA_TOP);
    for (const AxisTick& tick : axis.ticks) {
        const int at = RoundHalfAway(ScaleY(panel, axis).Pixel(tick.at));
        Line(dc, axis.column, at, axis.column + outwards * (stroke + 1), at);
        dc.TextOut(axis.column + outwards * (stroke + gap), at - Half(high), tick.text);
    }
}

// A title above each axis; those at the right end where the next one begins.
void PaintTitles(CDC& dc, const PlotPanel& panel, int gap, const PlotTheme& theme,
                 const std::function<COLORREF(const PlotAxis&)>& colorOf) {
    const int bottom = panel.plot.top - gap;
    int free = panel.tile.right - gap;
    int leftEnd = panel.tile.left;
    for (auto axis = panel.axes.begin(); axis != panel.axes.end(); ++axis) {
        if (axis->ticks.empty()) continue;
        dc.SetTextColor(panel.axes.size() > 1 ? colorOf(*axis) : theme.axis);
        const CString title = axis->reader->Title();
        if (axis == panel.axes.begin()) {
            dc.SetTextAlign(TA_LEFT | TA_BOTTOM);
            dc.TextOut(panel.tile.left + gap, bottom, title);
            leftEnd = panel.tile.left + gap + dc.GetTextExtent(title).cx + gap;
        }
    }
    dc.SetTextAlign(TA_RIGHT | TA_BOTTOM);
    for (auto axis = panel.axes.rbegin(); axis != panel.axes.rend(); ++axis) {
        if (!axis->atRight || axis->ticks.empty()) continue;
        const CString title = axis->reader->Title();
        const int width = dc.GetTextExtent(title).cx;
        const int right = std::min(free, axis->column + std::max(axis->width, width));
        if (right - width < leftEnd) continue;
        dc.SetTextColor(colorOf(*axis));
        dc.TextOut(right, bottom, title);
        free = right - width - 2 * gap;
    }
}

}  // namespace

void PaintAxes(CDC& dc, const PlotPanel& panel, const Range& x, const AxisReader& xReader,
               const PlotTheme& theme, const std::function<COLORREF(const PlotAxis&)>& colorOf) {
    const PixelSpace pixels(dc);
    const int line = dc.GetTextExtent("0").cy;
    const int stroke = line / 4 + 1;
    const int gap = line / 4 + 1;
    const auto use = [&](COLORREF color, CPen& pen) {
        pen.CreatePen(PS_SOLID, 0, color);
        dc.SetTextColor(color);
    };
    {
        CPen pen;
        use(theme.axis, pen);
        const Selected usePen(dc, pen);
        PaintXAxis(dc, panel, x, xReader, stroke);
    }
    for (const PlotAxis& axis : panel.axes) {
        if (axis.ticks.empty()) continue;
        CPen pen;
        use(panel.axes.size() > 1 ? colorOf(axis) : theme.axis, pen);
        const Selected usePen(dc, pen);
        PaintYAxis(dc, panel, axis, stroke, gap);
    }
    PaintTitles(dc, panel, gap, theme, colorOf);
}

void MapToPlot(CDC& dc, const PlotPanel& panel, const PlotAxis& axis, const Range& x,
               const SeriesFacts& facts) {
    const AxisMap across(facts.StoredX(x.from), facts.StoredX(x.to), panel.plot.left, panel.plot.right);
    const AxisMap up(facts.StoredY(axis.shown.from), facts.StoredY(axis.shown.to), panel.plot.bottom,
                     panel.plot.top);
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowOrg(across.windowOrg, up.windowOrg);
    dc.SetWindowExt(across.windowExt, up.windowExt);
    dc.SetViewportOrg(across.viewportOrg, up.viewportOrg);
    dc.SetViewportExt(across.viewportExt, up.viewportExt);
}

void PaintNote(CDC& dc, const CRect& area, CPoint beside, const std::vector<CString>& lines,
               const PlotTheme& theme) {
    const PixelSpace pixels(dc);
    CSize text;
    for (const CString& line : lines) {
        const CSize extent = dc.GetTextExtent(line);
        text = {std::max(text.cx, extent.cx), std::max(text.cy, extent.cy)};
    }
    const int gap = text.cy / 3 + 1;
    const CSize box(text.cx + 2 * gap, static_cast<int>(lines.size()) * text.cy + gap);
    int left = beside.x + text.cy;
    int top = beside.y + text.cy;
    if (left + box.cx > area.right) left = beside.x - text.cy / 2 - box.cx;
    if (top + box.cy > area.bottom) top = beside.y - text.cy / 2 - box.cy;
    left = std::max(left, area.left);
    top = std::max(top, area.top);
    CBrush backing;
    backing.CreateSolidBrush(theme.background);
    CPen edge;
    edge.CreatePen(PS_SOLID, 0, theme.axis);
    const Selected fill(dc, backing);
    const Selected outline(dc, edge);
    dc.Rectangle(left, top, left + box.cx, top + box.cy);
    dc.SetTextAlign(TA_LEFT | TA_TOP);
    dc.SetTextColor(theme.axis);
    int y = top + gap / 2;
    for (const CString& line : lines) {
        dc.TextOut(left + gap, y, line);
        y += text.cy;
    }
}

}  // namespace app
