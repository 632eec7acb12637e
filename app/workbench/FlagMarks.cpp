#include "app/workbench/FlagMarks.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace app {

namespace {

constexpr int kFine = 16;          // parts of a pixel
constexpr double kRadius = 0.042;  // of an inch

// A closed outline.
void AddOutline(std::vector<CPoint>& points, CPoint middle, double radius, int corners, double firstAngle) {
    for (int i = 0; i <= corners; ++i) {
        const double angle = firstAngle + 2 * std::numbers::pi * i / corners;
        points.emplace_back(RoundHalfAway(middle.x + radius * std::cos(angle)),
                            RoundHalfAway(middle.y + radius * std::sin(angle)));
    }
}

// The strokes of one mark; `breaks` gets the places where a new one begins.
void AddMark(std::vector<CPoint>& points, std::vector<int>& breaks, FlagMark::Shape shape, CPoint middle,
             double radius) {
    const auto begin = [&] { breaks.push_back(static_cast<int>(points.size())); };
    begin();
    if (shape == FlagMark::Ring) return AddOutline(points, middle, radius, 24, 0);
    if (shape == FlagMark::Triangle)
        return AddOutline(points, middle, radius * 1.2, 3, -std::numbers::pi / 2);
    const int arm = RoundHalfAway(radius * 0.8);
    points.emplace_back(middle.x - arm, middle.y - arm);
    points.emplace_back(middle.x + arm, middle.y + arm);
    begin();
    points.emplace_back(middle.x - arm, middle.y + arm);
    points.emplace_back(middle.x + arm, middle.y - arm);
}

}  // namespace

MarkPlaces::MarkPlaces(const CRect& area, int dotsPerInch)
    : area_(area),
      cell_(std::max(1, dotsPerInch / 48)),
      columns_(std::max(0, static_cast<int>(area.Width())) / cell_ + 1),
      taken_(static_cast<std::size_t>(columns_) *
             (std::max(0, static_cast<int>(area.Height())) / cell_ + 1)) {}

void MarkPlaces::Add(CPoint pixel) {
    if (pixel.x < area_.left || pixel.x > area_.right || pixel.y < area_.top || pixel.y > area_.bottom)
        return;
    const int column = (pixel.x - area_.left) / cell_;
    const int row = (pixel.y - area_.top) / cell_;
    auto taken = taken_.begin() + (std::ptrdiff_t{row} * columns_ + column);
    if (*taken) return;
    *taken = true;
    places_.push_back(pixel);
}

int MarkRadius(const CDC& dc) { return RoundHalfAway(kRadius * dc.GetDeviceCaps(LOGPIXELSX)); }

// All of them as one line with breaks: strokes that cross do not darken each other.
void PaintMarks(CDC& dc, const FlagMark& mark, const std::vector<CPoint>& places, const PlotTheme& theme) {
    if (places.empty()) return;
    const double radius = kRadius * kFine * dc.GetDeviceCaps(LOGPIXELSX);
    std::vector<CPoint> points;
    std::vector<int> breaks;
    for (const CPoint& place : places)
        AddMark(points, breaks, mark.shape, {place.x * kFine, place.y * kFine}, radius);
    const PixelSpace pixels(dc);
    dc.SetMapMode(MM_ANISOTROPIC);
    dc.SetWindowExt(kFine, kFine);
    dc.SetViewportExt(1, 1);
    CPen pen;
    pen.CreatePen(PS_SOLID, 0, theme.OfSeries(mark.color));
    const Selected usePen(dc, pen);
    dc.SmoothPolyline(points.data(), static_cast<int>(points.size()), {},
                      {breaks.data(), static_cast<int>(breaks.size())});
}

}  // namespace app
