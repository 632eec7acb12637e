#include "app/workbench/Legend.h"

#include <algorithm>
#include <cstdlib>

namespace app {

namespace {

constexpr std::size_t kFoldedLines = 10;

bool IsAtLeft(LegendCorner corner) {
    return corner == LegendCorner::TopLeft || corner == LegendCorner::BottomLeft;
}

bool IsAtTop(LegendCorner corner) {
    return corner == LegendCorner::TopLeft || corner == LegendCorner::TopRight;
}

}  // namespace

Legend::Legend(CDC& dc, std::vector<LegendLine> lines, bool folded) : lines_(std::move(lines)) {
    const PixelSpace pixels(dc);
    if (folded && lines_.size() > kFoldedLines) {
        CString more;
        more.Format("+ %d more", static_cast<int>(lines_.size() - (kFoldedLines - 1)));
        lines_.resize(kFoldedLines - 1);
        lines_.push_back({more, CLR_INVALID});
    }
    for (const LegendLine& line : lines_) {
        const CSize extent = dc.GetTextExtent(line.text);
        text_ = {std::max(text_.cx, extent.cx), std::max(text_.cy, extent.cy)};
    }
    gap_ = text_.cy / 3 + 1;
}

CRect Legend::PlaceIn(const CRect& plot, LegendCorner corner) const {
    const int width = 2 * text_.cy + text_.cx + 3 * gap_;
    const int height = static_cast<int>(lines_.size()) * text_.cy + gap_;
    const int left = IsAtLeft(corner) ? plot.left + gap_ : plot.right - gap_ - width;
    const int top = IsAtTop(corner) ? plot.top + gap_ : plot.bottom - gap_ - height;
    return {left, top, left + width, top + height};
}

void Legend::Paint(CDC& dc, const CRect& place, const PlotTheme& theme) const {
    const PixelSpace pixels(dc);
    CBrush backing;
    backing.CreateSolidBrush(theme.background);
    CPen edge;
    edge.CreatePen(PS_SOLID, 0, theme.grid);
    const Selected fill(dc, backing);
    const Selected outline(dc, edge);
    dc.Rectangle(place);
    dc.SetTextAlign(TA_LEFT | TA_TOP);
    dc.SetTextColor(theme.axis);
    const int left = place.left + gap_;
    const int swatch = 2 * text_.cy;
    const int thick = std::max<int>(1, text_.cy / 8);
    int y = place.top + gap_ / 2;
    for (const LegendLine& line : lines_) {
        const int middle = y + text_.cy / 2;
        if (line.mark)
            PaintMarks(dc, *line.mark, {{left + swatch / 2, middle}}, theme);
        else if (line.color != CLR_INVALID)
            dc.FillSolidRect({left, middle - thick, left + swatch, middle + thick}, line.color);
        dc.TextOut(left + swatch + gap_, y, line.text);
        y += text_.cy;
    }
}

LegendCorner CornerAt(const CRect& plot, CPoint pixel) {
    const int right = pixel.x - (plot.left + plot.right) / 2;
    const int down = pixel.y - (plot.top + plot.bottom) / 2;
    constexpr int kMiddle = 6;  // this part of the plot on either side
    if (std::abs(right) < plot.Width() / kMiddle && std::abs(down) < plot.Height() / kMiddle)
        return LegendCorner::Emptiest;
    if (down < 0) return right < 0 ? LegendCorner::TopLeft : LegendCorner::TopRight;
    return right < 0 ? LegendCorner::BottomLeft : LegendCorner::BottomRight;
}

}  // namespace app
