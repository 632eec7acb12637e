// Integer points, sizes and rectangles in the framework's shape. A CPoint is exactly two std::int32_t, so
// that an array of samples is an array of coordinate pairs. Sums and differences saturate at the 32-bit
// limits.
#pragma once

#include <type_traits>

#include "platform/core/Rounding.h"
#include "platform/core/Types.h"

struct POINT {
    LONG x;
    LONG y;
};

struct SIZE {
    LONG cx;
    LONG cy;
};

struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

class CSize : public SIZE {
  public:
    constexpr CSize() : SIZE{0, 0} {}
    constexpr CSize(LONG width, LONG height) : CSize() {
        cx = width;
        cy = height;
    }
    constexpr CSize(SIZE size) : SIZE(size) {}
    friend constexpr bool operator==(const CSize& a, const CSize& b) { return a.cx == b.cx && a.cy == b.cy; }
};

class CPoint : public POINT {
  public:
    constexpr CPoint() : POINT{0, 0} {}
    constexpr CPoint(LONG px, LONG py) : CPoint() {
        x = px;
        y = py;
    }
    constexpr CPoint(POINT point) : POINT(point) {}

    constexpr void Offset(LONG dx, LONG dy) {
        x = AddSaturated(x, dx);
        y = AddSaturated(y, dy);
    }
    constexpr CPoint& operator+=(POINT d) {
        Offset(d.x, d.y);
        return *this;
    }
    constexpr CPoint& operator-=(POINT d) {
        x = SubtractSaturated(x, d.x);
        y = SubtractSaturated(y, d.y);
        return *this;
    }
    friend constexpr CPoint operator+(CPoint a, const CPoint& b) { return a += b; }
    friend constexpr CPoint operator-(CPoint a, const CPoint& b) { return a -= b; }
    friend constexpr bool operator==(const CPoint& a, const CPoint& b) { return a.x == b.x && a.y == b.y; }
};

static_assert(sizeof(CPoint) == 8 && std::is_trivially_copyable_v<CPoint>);

// Right and bottom are outside the rectangle.
class CRect : public RECT {
  public:
    constexpr CRect() : RECT{0, 0, 0, 0} {}
    constexpr CRect(LONG l, LONG t, LONG r, LONG b) : CRect() {
        left = l;
        top = t;
        right = r;
        bottom = b;
    }
    constexpr CRect(RECT rect) : RECT(rect) {}

    constexpr LONG Width() const { return SubtractSaturated(right, left); }
    constexpr LONG Height() const { return SubtractSaturated(bottom, top); }
    constexpr bool IsRectEmpty() const { return right <= left || bottom <= top; }
    constexpr bool PtInRect(POINT p) const {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    friend constexpr bool operator==(const CRect& a, const CRect& b) {
        return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
    }
};
