#include "platform/gdi/Dots.h"

#include <deque>
#include <vector>

#include "platform/gdi/PixelAxis.h"
#include "platform/gdi/Shapes.h"

namespace {

// From this many boxes on counting coverage is faster than filling each box, whatever their size.
constexpr std::size_t kWorthCounting = 20000;

struct Box {
    int left, top, right, bottom;
};

// Points are converted in batches that stay in the first cache.
constexpr std::size_t kBatch = 256;

// visit(x, y) for the pixel of every point that the filter takes; pixels outside the clip rectangle are just
// outside it.
template <class Visit>
void ForEachPixel(const CRect& clip, const Mapping& mapping, const CPoint* points, std::size_t count,
                  const StatusFilter& which, Visit&& visit) {
    const PixelAxis axisX(mapping.x, clip.left, clip.right - 1), axisY(mapping.y, clip.top, clip.bottom - 1);
    int x[kBatch], y[kBatch];
    for (std::size_t start = 0; start < count; start += kBatch) {
        const std::size_t size = std::min(kBatch, count - start);
        axisX.PixelsOrOutside<&POINT::x>(points + start, size, 0, x);
        axisY.PixelsOrOutside<&POINT::y>(points + start, size, 0, y);
        for (std::size_t i = 0; i < size; ++i)
            if (which.Takes(start + i)) visit(x[i], y[i]);
    }
}

// visit(box) for the box round every point that the filter takes. Sides are exact within `range` and just
// outside it otherwise; boxes may be empty.
template <class Visit>
void ForEachBox(const CRect& range, const Mapping& mapping, const CPoint* points, std::size_t count,
                const StatusFilter& which, CSize half, int shrink, Visit&& visit) {
    const PixelAxis axisX(mapping.x, range.left, range.right), axisY(mapping.y, range.top, range.bottom);
    int x0[kBatch], x1[kBatch], y0[kBatch], y1[kBatch];
    for (std::size_t start = 0; start < count; start += kBatch) {
        const std::size_t size = std::min(kBatch, count - start);
        axisX.PixelsOrOutside<&POINT::x>(points + start, size, -half.cx, x0);
        axisX.PixelsOrOutside<&POINT::x>(points + start, size, half.cx, x1);
        axisY.PixelsOrOutside<&POINT::y>(points + start, size, -half.cy, y0);
        axisY.PixelsOrOutside<&POINT::y>(points + start, size, half.cy, y1);
        for (std::size_t i = 0; i < size; ++i)
            if (which.Takes(start + i))
                visit(Box{std::min(x0[i], x1[i]), std::min(y0[i], y1[i]), std::max(x0[i], x1[i]) - shrink,
                          std::max(y0[i], y1[i]) - shrink});
    }
}

// How many boxes cover each pixel, kept as changes from pixel to pixel and row to row, so that a box costs
// four additions whatever its size (Franklin Crow, Summed-area tables for texture mapping, 1984, read
// backwards).
class Coverage {
  public:
    explicit Coverage(const Canvas& canvas)
        : canvas_(canvas),
          width_(static_cast<std::size_t>(canvas.clip.Width()) + 1),
          changes_(width_ * (static_cast<std::size_t>(canvas.clip.Height()) + 1)) {}

    void Add(const Box& box) {
        const CRect& clip = canvas_.clip;
        const LONG left = std::max(box.left, clip.left) - clip.left;
        const LONG right = std::min(box.right, clip.right) - clip.left;
        const LONG first = std::max(box.top, clip.top), behind = std::min(box.bottom, clip.bottom);
        if (left >= right || first >= behind) return;
        int* const top = Row(first);
        int* const bottom = Row(behind);
        ++top[left];
        --top[right];
        --bottom[left];
        ++bottom[right];
    }

    void Fill(std::uint32_t pixel) {
        const CRect& clip = canvas_.clip;
        const auto width = static_cast<std::size_t>(clip.Width());
        for (LONG y = clip.top; y < clip.bottom; ++y) {
            const int* const changes = Row(y);
            int* const below = Row(y + 1);
            std::uint32_t* const target = canvas_.Row(y) + clip.left;
            int covering = 0;
            for (std::size_t x = 0; x < width; ++x) {
                covering += changes[x];
                target[x] = covering > 0 ? pixel : target[x];
            }
            for (std::size_t x = 0; x <= width; ++x) below[x] += changes[x];
        }
    }

  private:
    int* Row(LONG y) { return changes_.data() + width_ * static_cast<std::size_t>(y - canvas_.clip.top); }

    const Canvas& canvas_;
    std::size_t width_;
    std::vector<int> changes_;
};

bool IsExact(const CRect& clip) { return std::max(clip.right, clip.bottom) <= PixelAxis::kLargestPicture; }

// For pictures too large for the fast conversion, and for extents the wrong way round.
CRect DeviceBoxRound(CPoint p, const Mapping& mapping, CSize half, int shrink) {
    const CPoint a = mapping.ToDevice({SubtractSaturated(p.x, half.cx), SubtractSaturated(p.y, half.cy)});
    const CPoint b = mapping.ToDevice({AddSaturated(p.x, half.cx), AddSaturated(p.y, half.cy)});
    return {std::min(a.x, b.x), std::min(a.y, b.y), AddSaturated(std::max(a.x, b.x), -shrink),
            AddSaturated(std::max(a.y, b.y), -shrink)};
}

// The rows of ellipses that have been met: dots of one extent come in few sizes.
class EllipseShapes {
  public:
    const std::vector<EllipseSpan>& Rows(int width, int height) {
        if (last_ && last_->width == width && last_->height == height) return last_->rows;
        const auto known = std::find_if(shapes_.begin(), shapes_.end(), [=](const Shape& shape) {
            return shape.width == width && shape.height == height;
        });
        last_ = known != shapes_.end() ? &*known : &shapes_.emplace_back(width, height);
        return last_->rows;
    }

  private:
    struct Shape {
        Shape(int w, int h) : width(w), height(h) {
            for (int row = 0; row < h; ++row) rows.push_back(EllipseRow(w, h, row));
        }
        int width, height;
        std::vector<EllipseSpan> rows;
    };
    std::deque<Shape> shapes_;
    const Shape* last_ = nullptr;
};

}  // namespace

void DrawPixelCloud(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                    const StatusFilter& which, std::uint32_t pixel) {
    const CRect& clip = canvas.clip;
    if (!IsExact(clip)) {
        ForEachTaken(points, count, which, [&](CPoint p) {
            const CPoint d = mapping.ToDevice(p);
            if (clip.PtInRect(d)) canvas.Row(d.y)[d.x] = pixel;
        });
        return;
    }
    ForEachPixel(clip, mapping, points, count, which, [&](int x, int y) {
        if (clip.PtInRect({x, y})) canvas.Row(y)[x] = pixel;
    });
}

void DrawBoxCloud(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                  const StatusFilter& which, CSize halfExtent, int shrink, std::uint32_t pixel) {
    const Ink ink{pixel, R2_COPYPEN};
    if (!IsExact(canvas.clip) || halfExtent.cx < 0 || halfExtent.cy < 0) {
        ForEachTaken(points, count, which, [&](CPoint p) {
            const CRect box = DeviceBoxRound(p, mapping, halfExtent, shrink);
            FillBox(canvas, box.left, box.top, box.right, box.bottom, ink);
        });
        return;
    }
    if (count < kWorthCounting) {
        ForEachBox(canvas.clip, mapping, points, count, which, halfExtent, shrink,
                   [&](const Box& box) { FillBox(canvas, box.left, box.top, box.right, box.bottom, ink); });
        return;
    }
    Coverage coverage(canvas);
    ForEachBox(canvas.clip, mapping, points, count, which, halfExtent, shrink,
               [&](const Box& box) { coverage.Add(box); });
    coverage.Fill(pixel);
}

void DrawEllipseCloud(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                      const StatusFilter& which, CSize halfExtent, int shrink, std::uint32_t pixel) {
    const Ink ink{pixel, R2_COPYPEN};
    const CRect& clip = canvas.clip;
    // The shape of an ellipse that is partly visible needs all of its box: as far out as boxes are large.
    const std::int64_t width = 2 * std::int64_t{mapping.x.LengthToDevice(halfExtent.cx)} + 4;
    const std::int64_t height = 2 * std::int64_t{mapping.y.LengthToDevice(halfExtent.cy)} + 4;
    constexpr std::int64_t kLargest = 1000;
    if (!IsExact(clip) || halfExtent.cx < 0 || halfExtent.cy < 0 || std::max(width, height) > kLargest) {
        ForEachTaken(points, count, which, [&](CPoint p) {
            const CRect box = DeviceBoxRound(p, mapping, halfExtent, shrink);
            if (!box.IsRectEmpty()) FillEllipse(canvas, box, false, ink);
        });
        return;
    }
    const auto dx = static_cast<LONG>(width), dy = static_cast<LONG>(height);
    const CRect range(clip.left - dx, clip.top - dy, clip.right + dx, clip.bottom + dy);
    EllipseShapes shapes;
    ForEachBox(range, mapping, points, count, which, halfExtent, shrink, [&](const Box& box) {
        if (box.left >= clip.right || box.right <= clip.left || box.left >= box.right) return;
        if (box.top >= clip.bottom || box.bottom <= clip.top) return;
        int y = box.top;
        for (const EllipseSpan& row : shapes.Rows(box.right - box.left, box.bottom - box.top)) {
            FillSpan(canvas, y, box.left + row.left, box.left + row.right + 1, ink);
            ++y;
        }
    });
}
