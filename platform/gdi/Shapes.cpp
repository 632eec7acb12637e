#include "platform/gdi/Shapes.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace {

// Counts for every pixel how often an outline winds round it, by the edges' crossings with the row of pixel
// centres (Bryan Ackland and Neil Weste, The edge flag algorithm, 1981, with counts in place of flags). Takes
// any number of edges, in any order, however far outside they lie.
class Winding {
  public:
    // Covers the part of the clip rectangle in rows top to bottom.
    Winding(const Canvas& canvas, double top, double bottom)
        : canvas_(canvas), width_(static_cast<std::size_t>(canvas.clip.Width())) {
        const double low = canvas.clip.top, high = canvas.clip.bottom;
        top_ = static_cast<std::int32_t>(std::clamp(std::floor(top), low, high));
        bottom_ = static_cast<std::int32_t>(std::clamp(std::ceil(bottom) + 1.0, low, high));
        changes_.resize(static_cast<std::size_t>(bottom_ - top_) * width_);
    }

    void AddEdge(double x0, double y0, double x1, double y1) {
        if (y0 == y1) return;
        const int direction = y0 < y1 ? 1 : -1;
        if (direction < 0) {
            std::swap(x0, x1);
            std::swap(y0, y1);
        }
        const double first = std::max(std::ceil(y0), double(top_)),
                     behind = std::min(std::ceil(y1), double(bottom_));
        const double slope = (x1 - x0) / (y1 - y0);
        const double left = canvas_.clip.left, right = canvas_.clip.right;
        for (double y = first; y < behind; y += 1.0) {
            const double x = std::max(std::ceil(x0 + (y - y0) * slope), left);
            if (x < right) At(static_cast<std::int32_t>(x), static_cast<std::int32_t>(y)) += direction;
        }
    }

    // evenOdd: inside where the count is odd, otherwise where it is not 0.
    void Fill(bool evenOdd, Ink ink) {
        const int mask = evenOdd ? 1 : -1;
        for (std::int32_t y = top_; y < bottom_; ++y) FillRow(y, mask, ink);
    }

  private:
    int& At(std::int32_t x, std::int32_t y) {
        return changes_[static_cast<std::size_t>(y - top_) * width_ +
                        static_cast<std::size_t>(x - canvas_.clip.left)];
    }

    void FillRow(std::int32_t y, int mask, Ink ink) {
        const LONG left = canvas_.clip.left, right = canvas_.clip.right;
        int count = 0;
        LONG start = left;
        for (LONG x = left; x < right; ++x) {
            const int change = At(x, y);
            if (change == 0) continue;
            if (count & mask) FillSpan(canvas_, y, start, x, ink);
            count += change;
            start = x;
        }
        if (count & mask) FillSpan(canvas_, y, start, right, ink);
    }

    const Canvas& canvas_;
    std::size_t width_;
    std::int32_t top_, bottom_;
    std::vector<int> changes_;  // of the count, from pixel to pixel along the rows
};

struct Extent {
    double low, high;
};

Extent Rows(const CPoint* points, std::size_t count) {
    const auto [low, high] = std::minmax_element(points, points + count,
                                                 [](const CPoint& a, const CPoint& b) { return a.y < b.y; });
    return {double(low->y), double(high->y)};
}

// Every part of a wide line goes round the same way, so that counts add up and never cancel.
void AddBar(Winding& winding, CPoint a, CPoint b, double radius) {
    const double dx = double(b.x) - a.x, dy = double(b.y) - a.y, length = std::hypot(dx, dy);
    if (length == 0.0) return;
    const double nx = -dy / length * radius, ny = dx / length * radius;
    winding.AddEdge(a.x + nx, a.y + ny, a.x - nx, a.y - ny);
    winding.AddEdge(a.x - nx, a.y - ny, b.x - nx, b.y - ny);
    winding.AddEdge(b.x - nx, b.y - ny, b.x + nx, b.y + ny);
    winding.AddEdge(b.x + nx, b.y + ny, a.x + nx, a.y + ny);
}

void AddDisc(Winding& winding, CPoint centre, double radius) {
    constexpr int kCorners = 16;
    const auto corner = [&](int i) {
        const double angle = 2.0 * std::numbers::pi * (i % kCorners) / kCorners;
        return std::pair{centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
    };
    for (int i = 0; i < kCorners; ++i) {
        const auto [x0, y0] = corner(i);
        const auto [x1, y1] = corner(i + 1);
        winding.AddEdge(x0, y0, x1, y1);
    }
}

using Span = EllipseSpan;

// A row of the ellipse in a box.
Span RowOfBox(const CRect& box, std::int64_t y) {
    const Span row =
        EllipseRow(std::int64_t{box.right} - box.left, std::int64_t{box.bottom} - box.top, y - box.top);
    return {row.left + box.left, row.right + box.left};
}

// The part of a row that has neighbours of the ellipse on all four sides.
Span EllipseInside(const CRect& box, std::int64_t y) {
    const Span row = RowOfBox(box, y), above = RowOfBox(box, y - 1), below = RowOfBox(box, y + 1);
    if (above.left > above.right || below.left > below.right) return {1, 0};
    return {std::max({row.left + 1, above.left, below.left}),
            std::min({row.right - 1, above.right, below.right})};
}

}  // namespace

// The half axes are a quarter pixel short of the box: that makes small circles look round (3 pixels: a cross,
// 4: a square without corners).
EllipseSpan EllipseRow(std::int64_t width, std::int64_t height, std::int64_t row) {
    if (row < 0 || row >= height) return {0, -1};
    const double wide = double(width), high = double(height);
    const double up = (2.0 * double(row) + 1.0 - high) / (high - 0.5);
    const double half = (wide - 0.5) / 2.0 * std::sqrt(std::max(0.0, 1.0 - up * up));
    const double middle = (wide - 1.0) / 2.0;
    return {static_cast<std::int64_t>(std::min(std::ceil(middle - half), std::floor(middle))),
            static_cast<std::int64_t>(std::max(std::floor(middle + half), std::ceil(middle)))};
}

void FillPolygon(const Canvas& canvas, const CPoint* points, std::size_t count, Ink ink) {
    if (count < 3) return;
    const Extent rows = Rows(points, count);
    Winding winding(canvas, rows.low, rows.high);
    for (std::size_t i = 0; i < count; ++i) {
        const CPoint a = points[i], b = points[i + 1 == count ? 0 : i + 1];
        winding.AddEdge(a.x, a.y, b.x, b.y);
    }
    winding.Fill(true, ink);
}

void DrawWideLine(const Canvas& canvas, const CPoint* points, std::size_t count, bool closed, int width,
                  Ink ink) {
    const double radius = width / 2.0;
    const Extent rows = Rows(points, count);
    Winding winding(canvas, rows.low - radius, rows.high + radius);
    for (std::size_t i = 0; i < count; ++i) {
        AddDisc(winding, points[i], radius);
        if (i > 0) AddBar(winding, points[i - 1], points[i], radius);
    }
    if (closed) AddBar(winding, points[count - 1], points[0], radius);
    winding.Fill(false, ink);
}

void FillEllipse(const Canvas& canvas, const CRect& box, bool insideOutline, Ink ink) {
    const LONG top = std::max(box.top, canvas.clip.top), bottom = std::min(box.bottom, canvas.clip.bottom);
    for (LONG y = top; y < bottom; ++y) {
        const Span span = insideOutline ? EllipseInside(box, y) : RowOfBox(box, y);
        FillSpan(canvas, y, span.left, span.right + 1, ink);
    }
}

// Runs down the right side and up the left one, so that dashes follow the curve. They start where the ellipse
// comes into sight.
void OutlineEllipse(const Canvas& canvas, const CRect& box, const HairPen& pen) {
    const LONG top = std::max(box.top, canvas.clip.top), bottom = std::min(box.bottom, canvas.clip.bottom);
    const double middleY = (double(box.top) + box.bottom - 1.0) / 2.0;
    std::int64_t phase = 0;
    const auto draw = [&](LONG y, std::int64_t left, std::int64_t right, bool rightward) {
        left = std::max<std::int64_t>(left, canvas.clip.left);
        right = std::min<std::int64_t>(right, canvas.clip.right - 1);
        for (std::int64_t i = 0; i <= right - left; ++i) {
            const std::int64_t x = rightward ? left + i : right - i;
            const bool on = IsDash(pen.style, phase++);
            if (on || pen.drawGaps)
                FillSpan(canvas, y, x, x + 1, {on ? pen.pixel : pen.gapPixel, pen.operation});
        }
    };
    const auto rowOf = [&](LONG y, bool rightSide) {
        const Span row = RowOfBox(box, y);
        Span inside = EllipseInside(box, y);
        if (inside.left > inside.right) {  // the whole row is outline: halve it
            inside.left = row.left + (row.right - row.left + 1) / 2;
            inside.right = inside.left - 1;
        }
        if (rightSide)
            draw(y, inside.right + 1, row.right, y < middleY);
        else
            draw(y, row.left, inside.left - 1, y < middleY);
    };
    for (LONG y = top; y < bottom; ++y) rowOf(y, true);
    for (LONG y = bottom; y-- > top;) rowOf(y, false);
}
