#include "platform/gdi/Dots.h"

#include <cstdlib>
#include <utility>
#include <vector>

#include "platform/gdi/PixelAxis.h"

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

// visit(box) for what is visible of the box round every point that the filter takes.
template <class Visit>
void ForEachBox(const CRect& clip, const Mapping& mapping, const CPoint* points, std::size_t count,
                const StatusFilter& which, CSize half, int shrink, Visit&& visit) {
    const PixelAxis axisX(mapping.x, clip.left, clip.right), axisY(mapping.y, clip.top, clip.bottom);
    int x0[kBatch], x1[kBatch], y0[kBatch], y1[kBatch];
    for (std::size_t start = 0; start < count; start += kBatch) {
        const std::size_t size = std::min(kBatch, count - start);
        axisX.PixelsOrOutside<&POINT::x>(points + start, size, -half.cx, x0);
        axisX.PixelsOrOutside<&POINT::x>(points + start, size, half.cx, x1);
        axisY.PixelsOrOutside<&POINT::y>(points + start, size, -half.cy, y0);
        axisY.PixelsOrOutside<&POINT::y>(points + start, size, half.cy, y1);
        for (std::size_t i = 0; i < size; ++i) {
            if (!which.Takes(start + i)) continue;
            const Box box = {std::max(std::min(x0[i], x1[i]), clip.left),
                             std::max(std::min(y0[i], y1[i]), clip.top),
                             std::min(std::max(x0[i], x1[i]) - shrink, clip.right),
                             std::min(std::max(y0[i], y1[i]) - shrink, clip.bottom)};
            if (box.left < box.right && box.top < box.bottom) visit(box);
        }
    }
}

// How many boxes cover each pixel, kept as changes from pixel to pixel and row to row, so that a box costs
// four additions whatever its size (Franklin Crow, Summed-area tables for texture mapping, 1984, read
// backwards).
class Coverage {
  public:
    explicit Coverage(const Canvas& canvas)
        : m_canvas(canvas),
          m_width(static_cast<std::size_t>(canvas.clip.Width()) + 1),
          m_changes(m_width * (static_cast<std::size_t>(canvas.clip.Height()) + 1)) {}

    void Add(const Box& box) {
        const LONG left = box.left - m_canvas.clip.left, right = box.right - m_canvas.clip.left;
        int* const top = Row(box.top);
        int* const bottom = Row(box.bottom);
        ++top[left];
        --top[right];
        --bottom[left];
        ++bottom[right];
    }

    void Fill(std::uint32_t pixel) {
        const CRect& clip = m_canvas.clip;
        const auto width = static_cast<std::size_t>(clip.Width());
        for (LONG y = clip.top; y < clip.bottom; ++y) {
            const int* const changes = Row(y);
            int* const below = Row(y + 1);
            std::uint32_t* const target = m_canvas.Row(y) + clip.left;
            int covering = 0;
            for (std::size_t x = 0; x < width; ++x) {
                covering += changes[x];
                target[x] = covering > 0 ? pixel : target[x];
            }
            for (std::size_t x = 0; x <= width; ++x) below[x] += changes[x];
        }
    }

  private:
    int* Row(LONG y) { return m_changes.data() + m_width * static_cast<std::size_t>(y - m_canvas.clip.top); }

    const Canvas& m_canvas;
    std::size_t m_width;
    std::vector<int> m_changes;
};

bool IsExact(const CRect& clip) { return std::max(clip.right, clip.bottom) <= PixelAxis::kLargestPicture; }

// For pictures too large for the fast conversion, and for extents the wrong way round.
void DrawBoxByBox(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                  const StatusFilter& which, CSize half, int shrink, Ink ink) {
    ForEachTaken(points, count, which, [&](CPoint p) {
        const CPoint a = mapping.ToDevice({SubtractSaturated(p.x, half.cx), SubtractSaturated(p.y, half.cy)});
        const CPoint b = mapping.ToDevice({AddSaturated(p.x, half.cx), AddSaturated(p.y, half.cy)});
        FillBox(canvas, std::min(a.x, b.x), std::min(a.y, b.y), std::max<std::int64_t>(a.x, b.x) - shrink,
                std::max<std::int64_t>(a.y, b.y) - shrink, ink);
    });
}

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
    if (!IsExact(canvas.clip) || halfExtent.cx < 0 || halfExtent.cy < 0)
        return DrawBoxByBox(canvas, mapping, points, count, which, halfExtent, shrink, ink);
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
