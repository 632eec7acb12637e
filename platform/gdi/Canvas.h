// Where and how pixels are written: the part of a picture that may be drawn on, and the raster operations.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/core/Geometry.h"
#include "platform/gdi/GdiRecord.h"

struct Canvas {
    std::uint32_t* pixels;
    std::ptrdiff_t stride;  // pixels from row to row
    CRect clip;             // inside the picture, not empty

    std::uint32_t* Row(std::int64_t y) const { return pixels + stride * y; }
};

// What a shape leaves on each of its pixels.
struct Ink {
    std::uint32_t pixel;  // 0xffRRGGBB
    int operation;        // R2_...
    // Filled areas only: lines in place of the whole area.
    int hatch = kNoHatch;  // HS_...
    std::uint32_t gapPixel = 0;
    bool drawGaps = false;
};

// Whether a pixel lies on a line of a hatch pattern.
constexpr bool IsHatchLine(int hatch, std::int64_t x, std::int64_t y) {
    constexpr std::int64_t kSpacing = 8;
    const bool rising = (x + y) % kSpacing == kSpacing - 1, falling = (x - y) % kSpacing == 0;
    const bool across = y % kSpacing == kSpacing / 2, upright = x % kSpacing == kSpacing / 2;
    switch (hatch) {
        case HS_HORIZONTAL:
            return across;
        case HS_VERTICAL:
            return upright;
        case HS_FDIAGONAL:
            return falling;
        case HS_BDIAGONAL:
            return rising;
        case HS_CROSS:
            return across || upright;
        default:
            return rising || falling;
    }
}

constexpr std::uint32_t kOpaque = 0xff000000;

constexpr std::uint32_t ToPixel(COLORREF color) {
    return kOpaque | std::uint32_t{GetRValue(color)} << 16 | std::uint32_t{GetGValue(color)} << 8 |
           GetBValue(color);
}

constexpr COLORREF ToColor(std::uint32_t pixel) { return RGB(pixel >> 16, pixel >> 8, pixel); }

// Calls draw(put), put(target, pixel) being the raster operation, chosen outside the loop over the pixels.
template <class Draw>
void WithOperation(int operation, Draw&& draw) {
    switch (operation) {
        case R2_XORPEN:
            return draw([](std::uint32_t& q, std::uint32_t c) { q = (q ^ c) | kOpaque; });
        case R2_NOTXORPEN:
            return draw([](std::uint32_t& q, std::uint32_t c) { q = ~(q ^ c) | kOpaque; });
        case R2_NOT:
            return draw([](std::uint32_t& q, std::uint32_t) { q = ~q | kOpaque; });
        default:
            return draw([](std::uint32_t& q, std::uint32_t c) { q = c; });
    }
}

// Pixels left to right - 1 of row y.
inline void FillSpan(const Canvas& canvas, std::int64_t y, std::int64_t left, std::int64_t right, Ink ink) {
    if (y < canvas.clip.top || y >= canvas.clip.bottom) return;
    left = std::max<std::int64_t>(left, canvas.clip.left);
    right = std::min<std::int64_t>(right, canvas.clip.right);
    std::uint32_t* const row = canvas.Row(y);
    WithOperation(ink.operation, [=](auto put) {
        if (ink.hatch == kNoHatch) {
            for (std::int64_t x = left; x < right; ++x) put(row[x], ink.pixel);
            return;
        }
        for (std::int64_t x = left; x < right; ++x) {
            const bool line = IsHatchLine(ink.hatch, x, y);
            if (line || ink.drawGaps) put(row[x], line ? ink.pixel : ink.gapPixel);
        }
    });
}

// Right and bottom are outside.
inline void FillBox(const Canvas& canvas, std::int64_t left, std::int64_t top, std::int64_t right,
                    std::int64_t bottom, Ink ink) {
    top = std::max<std::int64_t>(top, canvas.clip.top);
    bottom = std::min<std::int64_t>(bottom, canvas.clip.bottom);
    for (std::int64_t y = top; y < bottom; ++y) FillSpan(canvas, y, left, right, ink);
}
