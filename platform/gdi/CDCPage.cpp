// The drawing operations of device contexts that draw pages.
#include <algorithm>
#include <cmath>
#include <tuple>

#include "platform/gdi/CDCState.h"

int CDC::State::DotsPerInch() const {
    if (paper) return paper->DotsPerInch();
    return picture ? picture->dotsPerInch : dotsPerInchWithoutPicture;
}

CSize CDC::State::DeviceSize() const {
    if (paper) return paper->Size();
    return picture ? CSize(picture->width, picture->height) : CSize();
}

Paper* CDC::State::Page() const {
    if (paper) paper->SetClip(clip);
    return paper.get();
}

PaperPen CDC::State::PagePen() const {
    PaperPen line{penRecord.style, PenWidth(), penRecord.color, std::nullopt};
    if (bkMode == OPAQUE) line.gapColor = bkColor;
    return line;
}

PaperFill CDC::State::PageFill() const {
    PaperFill fill{brushRecord->style, brushRecord->color, std::nullopt};
    if (bkMode == OPAQUE) fill.gapColor = bkColor;
    return fill;
}

void CDC::State::LineOnPage(CPoint from, CPoint to) {
    if (!HasPen()) return;
    PaperPen line = PagePen();
    line.phase = double(dashPhase);
    paper->Lines({from, to}, false, line);
    dashPhase += std::llround(std::hypot(double(to.x) - from.x, double(to.y) - from.y));
}

void CDC::State::PolylineOnPage(const CPoint* points, std::size_t count, const StatusFilter& which) const {
    if (!HasPen()) return;
    PaperLine kept;
    ForEachTaken(points, count, which, [&](CPoint p) { kept.Add(mapping.ToDevice(p)); });
    paper->Lines(kept.Take(), false, PagePen());
}

void CDC::State::PolygonOnPage(const CPoint* points, std::size_t count) const {
    std::vector<CPoint> device;
    device.reserve(count);
    for (std::size_t i = 0; i < count; ++i) device.push_back(mapping.ToDevice(points[i]));
    if (brushRecord) paper->Polygon(device, PageFill());
    if (HasPen()) paper->Lines(device, true, PagePen());
}

void CDC::State::RectangleOnPage(const CRect& box) const {
    const CRect edge(box.left, box.top, SubtractSaturated(box.right, 1), SubtractSaturated(box.bottom, 1));
    if (brushRecord) paper->Box(edge, PageFill());
    if (HasPen())
        paper->Lines({{edge.left, edge.top},
                      {edge.right, edge.top},
                      {edge.right, edge.bottom},
                      {edge.left, edge.bottom}},
                     true, PagePen());
}

void CDC::State::EllipseOnPage(const CRect& box) const {
    const CRect edge(box.left, box.top, SubtractSaturated(box.right, 1), SubtractSaturated(box.bottom, 1));
    const PaperPen line = PagePen();
    std::optional<PaperFill> fill;
    if (brushRecord) fill = PageFill();
    paper->Ellipse(edge, fill ? &*fill : nullptr, HasPen() ? &line : nullptr);
}

// Shapes of one colour look the same in any order: those that coincide are drawn once.
std::vector<CRect> CDC::State::BoxesOnPage(const CPoint* points, std::size_t count, CSize halfExtent,
                                           const StatusFilter& which) const {
    std::vector<CRect> boxes;
    ForEachTaken(points, count, which, [&](CPoint p) { boxes.push_back(ToDevice(BoxRound(p, halfExtent))); });
    if (!DrawsPlainShapes()) return boxes;
    std::sort(boxes.begin(), boxes.end(), [](const CRect& a, const CRect& b) {
        return std::tie(a.top, a.left, a.bottom, a.right) < std::tie(b.top, b.left, b.bottom, b.right);
    });
    boxes.erase(std::unique(boxes.begin(), boxes.end()), boxes.end());
    return boxes;
}

void CDC::State::RectanglesOnPage(const CPoint* points, std::size_t count, CSize halfExtent,
                                  const StatusFilter& which) const {
    for (const CRect& box : BoxesOnPage(points, count, halfExtent, which)) RectangleOnPage(box);
}

void CDC::State::EllipsesOnPage(const CPoint* points, std::size_t count, CSize halfExtent,
                                const StatusFilter& which) const {
    for (const CRect& box : BoxesOnPage(points, count, halfExtent, which)) EllipseOnPage(box);
}

void CDC::State::DotsOnPage(const CPoint* points, std::size_t count, COLORREF color,
                            const StatusFilter& which) const {
    std::vector<CPoint> device;
    ForEachTaken(points, count, which, [&](CPoint p) { device.push_back(mapping.ToDevice(p)); });
    paper->Dots(std::move(device), color);
}
