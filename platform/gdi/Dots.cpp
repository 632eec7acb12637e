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

// The boxes round points, cut off just outside the clip rectangle.
class Boxes {
  public:
    Boxes(const CRect& clip, const Mapping& mapping, CSize halfExtent, int shrink)
        : m_x(mapping.x, clip.left, clip.right),
          m_y(mapping.y, clip.top, clip.bottom),
          m_clip(clip),
          m_half(halfExtent),
          m_shrink(shrink) {}

    // What is visible of the box round p; empty when left >= right or top >= bottom.
    Box Round(CPoint p) const {
        const auto [left, right] = Side(m_x, p.x, m_half.cx);
        const auto [top, bottom] = Side(m_y, p.y, m_half.cy);
        return {std::max(left, m_clip.left), std::max(top, m_clip.top), std::min(right, m_clip.right),
                std::min(bottom, m_clip.bottom)};
    }

  private:
    std::pair<int, int> Side(const PixelAxis& axis, std::int32_t centre, std::int32_t half) const {
        const int a = axis.PixelOrOutside(SubtractSaturated(centre, half));
        const int b = axis.PixelOrOutside(AddSaturated(centre, half));
        return {std::min(a, b), std::max(a, b) - m_shrink};
    }

    PixelAxis m_x, m_y;
    CRect m_clip;
    CSize m_half;
    int m_shrink;
};

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
        int* const top = Row(box.top) - m_canvas.clip.left;
        int* const bottom = Row(box.bottom) - m_canvas.clip.left;
        ++top[box.left];
        --top[box.right];
        --bottom[box.left];
        ++bottom[box.right];
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

// Without the tables, for pictures too large for them.
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
    const PixelAxis x(mapping.x, clip.left, clip.right - 1), y(mapping.y, clip.top, clip.bottom - 1);
    ForEachTaken(points, count, which, [&](CPoint p) {
        if (x.Knows(p.x) && y.Knows(p.y)) canvas.Row(y.Pixel(p.y))[x.Pixel(p.x)] = pixel;
    });
}

void DrawBoxCloud(const Canvas& canvas, const Mapping& mapping, const CPoint* points, std::size_t count,
                  const StatusFilter& which, CSize halfExtent, int shrink, std::uint32_t pixel) {
    const Ink ink{pixel, R2_COPYPEN};
    if (!IsExact(canvas.clip))
        return DrawBoxByBox(canvas, mapping, points, count, which, halfExtent, shrink, ink);
    const Boxes boxes(canvas.clip, mapping, halfExtent, shrink);
    if (count < kWorthCounting) {
        ForEachTaken(points, count, which, [&](CPoint p) {
            const Box box = boxes.Round(p);
            FillBox(canvas, box.left, box.top, box.right, box.bottom, ink);
        });
        return;
    }
    Coverage coverage(canvas);
    ForEachTaken(points, count, which, [&](CPoint p) {
        const Box box = boxes.Round(p);
        if (box.left < box.right && box.top < box.bottom) coverage.Add(box);
    });
    coverage.Fill(pixel);
}
