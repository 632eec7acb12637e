// The smooth drawing operations of device contexts.
#include <algorithm>
#include <cmath>

#include "platform/gdi/CDCState.h"
#include "platform/gdi/PointPyramid.h"
#include "platform/gdi/SmoothLine.h"

namespace {

constexpr double kPixels = 1.5;  // of a screen of 96 dots per inch
constexpr double kMillimetresOnPaper = 0.25;
constexpr double kMillimetresPerInch = 25.4;
constexpr double kLoneWidths = 2.0;

CRect BoxAround(CPoint middle, double diameter) {
    return {SaturateToInt32(std::llround(middle.x - diameter / 2.0)),
            SaturateToInt32(std::llround(middle.y - diameter / 2.0)),
            SaturateToInt32(std::llround(middle.x + diameter / 2.0)),
            SaturateToInt32(std::llround(middle.y + diameter / 2.0))};
}

// The only point of a piece that the filter takes; none when there are more or fewer.
const CPoint* LonePoint(const CPoint* points, std::size_t begin, std::size_t end, const StatusFilter& which) {
    const CPoint* lone = nullptr;
    for (std::size_t i = begin; i < end; ++i) {
        if (!which.Takes(i)) continue;
        if (lone) return nullptr;
        lone = points + i;
    }
    return lone;
}

}  // namespace

double CDC::State::SmoothWidth() const {
    const double least = paper ? kMillimetresOnPaper * DotsPerInch() / kMillimetresPerInch
                               : kPixels * DotsPerInch() / kScreenDotsPerInch;
    return HasPen() ? std::max<double>(least, PenWidth()) : least;
}

void CDC::State::SmoothPolylineOnPage(const CPoint* points, std::size_t count, const StatusFilter& which,
                                      const LineBreaks& breaks) const {
    const double width = SmoothWidth();
    PaperPen line = PagePen();
    line.width = std::max(1, RoundHalfAway(width));
    const PaperFill dot{kNoHatch, penRecord.color, std::nullopt};
    ForEachPiece(count, breaks, [&](std::size_t begin, std::size_t end) {
        if (const CPoint* const lone = LonePoint(points, begin, end, which))
            return paper->Ellipse(BoxAround(mapping.ToDevice(*lone), kLoneWidths * width), &dot, nullptr);
        PaperLine piece;
        ForEachTaken(points + begin, end - begin, which.From(begin),
                     [&](CPoint p) { piece.Add(mapping.ToDevice(p)); });
        paper->Lines(piece.Take(), false, line);
    });
}

void CDC::State::SmoothDotsOnPage(const CPoint* points, std::size_t count, double diameter, COLORREF color,
                                  const StatusFilter& which) const {
    std::vector<CPoint> middles;
    ForEachTaken(points, count, which, [&](CPoint p) { middles.push_back(mapping.ToDevice(p)); });
    std::sort(middles.begin(), middles.end(),
              [](const CPoint& a, const CPoint& b) { return a.y != b.y ? a.y < b.y : a.x < b.x; });
    middles.erase(std::unique(middles.begin(), middles.end()), middles.end());
    const PaperFill fill{kNoHatch, color, std::nullopt};
    for (const CPoint& middle : middles) paper->Ellipse(BoxAround(middle, diameter), &fill, nullptr);
}

BOOL CDC::SmoothPolyline(const CPoint* points, int count, const StatusFilter& which, const LineBreaks& breaks,
                         KeptLine* kept) {
    if (!points || count < 1) return FALSE;
    const auto size = static_cast<std::size_t>(count);
    if (!state_->HasPen()) return TRUE;
    const bool smooth = state_->DrawsSmoothLines();
    if (smooth && state_->Page())
        return Guarded([&] { state_->SmoothPolylineOnPage(points, size, which, breaks); });
    const auto canvas = smooth ? state_->Target() : std::nullopt;
    if (smooth && !canvas) return TRUE;
    if (smooth && CanDrawSmooth(*canvas)) {
        const double width = state_->SmoothWidth();
        const bool known = kept && kept->pyramid.Describes(points, size, which);
        const LinePoints line{points, size, which, breaks, known ? &kept->pyramid : nullptr};
        const SmoothPen pen{ToPixel(state_->penRecord.color), width, kLoneWidths * width};
        return Guarded(
            [&] { DrawSmoothLine(*canvas, state_->mapping, line, pen, known ? &kept->runs : nullptr); });
    }
    ForEachPiece(size, breaks, [&](std::size_t begin, std::size_t end) {
        const CPoint* const lone = LonePoint(points, begin, end, which);
        if (lone && state_->rasterOperation == R2_COPYPEN)
            SetPixelV(lone->x, lone->y, state_->penRecord.color);
        Polyline(points + begin, static_cast<int>(end - begin), which.From(begin),
                 kept && begin == 0 ? &kept->pyramid : nullptr);
    });
    return TRUE;
}

void CDC::DrawSmoothDots(const CPoint* points, int count, int diameter, COLORREF color,
                         const StatusFilter& which) {
    if (!points || count < 1) return;
    const auto size = static_cast<std::size_t>(count);
    const double wide = diameter / 100.0 * state_->DotsPerInch() / kMillimetresPerInch;
    const double width = state_->SmoothWidth();
    if (state_->Page()) {
        Guarded([&] { state_->SmoothDotsOnPage(points, size, std::max(wide, width), color, which); });
        return;
    }
    const auto canvas = state_->Target();
    if (!canvas) return;
    if (!CanDrawSmooth(*canvas)) return DrawPixels(points, count, color, which);
    const SmoothPen pen{ToPixel(color), width, std::max(wide, width)};
    Guarded([&] { ::DrawSmoothDots(*canvas, state_->mapping, points, size, which, pen); });
}
