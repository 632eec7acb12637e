// Which sub-pixels of a part of a picture a line covers: one bit for each. A byte holds the eight sub-rows of
// one sub-column of a pixel; the bytes of a sub-column lie together, so that an upright span of sub-pixels is
// a run of memory and a pixel's share is the number of bits in eight bytes.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/gdi/Canvas.h"
#include "platform/gdi/Subpixels.h"

class SubpixelGrid {
  public:
    // Spans are covered this many sub-columns at a time.
    static constexpr int kAtOnce = 16;

    // Makes this the grid of some pixels, nothing covered. Throws when memory is short.
    void Cover(const CRect& pixels);
    // Lays the colour over the pixels, each in the share that is covered, and covers nothing any more.
    void Blend(const Canvas& canvas, std::uint32_t pixel);

    // The sub-columns and sub-rows of the grid, on the device.
    int Left() const { return pixels_.left * kSubpixels; }
    int Right() const { return pixels_.right * kSubpixels; }
    int Top() const { return pixels_.top * kSubpixels; }
    int Bottom() const { return pixels_.bottom * kSubpixels; }

    // Of each sub-column, counted from the left: the span of sub-rows, counted from the top, that was covered
    // last (none when from == to), with room for kAtOnce more columns at either side that are covered whole.
    // Spans that touch it may widen it; its bits are set when it is over.
    int* CoveredFrom() { return coveredFrom_.data() + kMargin; }
    int* CoveredTo() { return coveredTo_.data() + kMargin; }
    // Begins a span that does not touch the last one.
    void Begin(int column, int from, int to);

  private:
    static constexpr int kMargin = kAtOnce;
    struct Span;

    void Settle(int column);
    void Forget(int column);
    void BlendGroup(const Canvas& canvas, std::uint32_t pixel, LONG first, int width);

    CRect pixels_;
    std::size_t stride_ = 0;  // bytes of a sub-column
    std::size_t capacity_ = 0;
    std::unique_ptr<std::uint64_t[]> bits_;
    std::vector<int> coveredFrom_, coveredTo_;
    std::vector<int> touchedFrom_, touchedTo_;  // all that was covered lies between
    std::vector<std::uint64_t> shares_;         // of eight pixel columns, one byte for a pixel
};
