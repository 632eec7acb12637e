#include "app/workbench/CLoadingView.h"

#include <algorithm>
#include <cmath>

#include "app/table/CellNumber.h"
#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

constexpr int kMargin = 400;      // 0.01 mm
constexpr int kBarHeight = 150;   //
constexpr int kLineHeight = 550;  //

// Upright strokes from the low to the high of each range, over the share of the width that has been read.
void DrawSketch(CDC& dc, const SeriesSketch& sketch, const CRect& area) {
    const auto& whole = sketch.Whole();
    if (whole.IsEmpty() || area.Width() < 1 || area.Height() < 1) return;
    const double span = whole.high > whole.low ? whole.high - whole.low : 1;
    const auto pixelY = [&](double value) {
        return RoundHalfAway(area.bottom - 1 - (value - whole.low) / span * (area.Height() - 1));
    };
    CPen pen(PS_SOLID, 0, GetSysColor(COLOR_HIGHLIGHT));
    const Selected usePen(dc, pen);
    const auto& ranges = sketch.Ranges();
    const auto count = static_cast<int>(ranges.size());
    bool drawing = false;
    for (int i = 0; i < count; ++i) {
        const auto& range = ranges[static_cast<std::size_t>(i)];
        if (range.IsEmpty()) {
            drawing = false;
            continue;
        }
        const int x = area.left + static_cast<int>(std::int64_t{area.Width()} * i / count);
        drawing ? (void)dc.LineTo(x, pixelY(range.low)) : (void)dc.MoveTo(x, pixelY(range.low));
        dc.LineTo(x, pixelY(range.high) - 1);
        drawing = true;
    }
}

}  // namespace

const CommandRow<CLoadingView> CLoadingView::kCommands[] = {
    {kModeEscape, kModeEscape, &CLoadingView::OnStop},
};

bool CLoadingView::OnCmdMsg(UINT id, CCmdUI* update) {
    return RouteCommand(*this, kCommands, id, update) || CView::OnCmdMsg(id, update);
}

std::string ReadingText(const ReadingJob::State& state) {
    std::string text =
        Counted(state.rows, "row") + ", " + std::to_string(static_cast<int>(state.part * 100)) + " %";
    if (state.secondsLeft)
        text += ", about " + std::to_string(static_cast<int>(std::ceil(*state.secondsLeft))) + " s left";
    return text;
}

void CLoadingView::OnDraw(CDC* dc) {
    const ReadingJob::State state = job_.Now();
    const auto pixels = [&](int hundredths) {
        return RoundHalfAway(hundredths * dc->GetDeviceCaps(LOGPIXELSX) / 2540.0);
    };
    CRect area;
    GetClientRect(&area);
    dc->FillSolidRect(area, GetSysColor(COLOR_WINDOW));
    const int margin = pixels(kMargin);
    area = CRect(area.left + margin, area.top + margin, area.right - margin, area.bottom - margin);
    dc->SetBkMode(TRANSPARENT);
    dc->SetTextColor(GetSysColor(COLOR_WINDOWTEXT));
    dc->TextOut(area.left, area.top, CString("Reading " + job_.Options().path));
    const int line = pixels(kLineHeight);
    dc->TextOut(area.left, area.top + line, CString(ReadingText(state) + ". Esc stops."));
    CRect bar(area.left, area.top + 2 * line, area.right, area.top + 2 * line + pixels(kBarHeight));
    const int done = bar.left + RoundHalfAway(bar.Width() * std::clamp(state.part, 0.0, 1.0));
    dc->FillSolidRect(bar, GetSysColor(COLOR_GRAYTEXT));
    dc->FillSolidRect({bar.left, bar.top, done, bar.bottom}, GetSysColor(COLOR_HIGHLIGHT));
    DrawSketch(*dc, state.sketch, {area.left, bar.bottom + line, std::max(area.left + 1, done), area.bottom});
}

}  // namespace app
