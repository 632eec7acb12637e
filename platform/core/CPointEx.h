// Points and sizes in real units. Turning one into integers rounds each coordinate half away from zero.
#pragma once

#include "platform/core/Geometry.h"

class CPointEx {
  public:
    double x = 0.0;
    double y = 0.0;

    constexpr CPointEx() = default;
    constexpr CPointEx(double px, double py) : x(px), y(py) {}
    constexpr CPointEx(int px, int py) : x(px), y(py) {}
    constexpr CPointEx(const CPoint& point) : x(point.x), y(point.y) {}

    constexpr void Add(double dx, double dy) {
        x += dx;
        y += dy;
    }
    constexpr CPointEx& operator+=(const CPointEx& d) {
        Add(d.x, d.y);
        return *this;
    }
    constexpr CPointEx& operator-=(const CPointEx& d) {
        Add(-d.x, -d.y);
        return *this;
    }
    friend constexpr CPointEx operator-(CPointEx a, const CPointEx& b) { return a -= b; }
    constexpr operator CPoint() const { return {RoundHalfAway(x), RoundHalfAway(y)}; }
};

class CSizeEx {
  public:
    double cx = 0.0;
    double cy = 0.0;

    constexpr CSizeEx() = default;
    constexpr CSizeEx(double width, double height) : cx(width), cy(height) {}
    constexpr CSizeEx(int width, int height) : cx(width), cy(height) {}
    constexpr CSizeEx(const CSize& size) : cx(size.cx), cy(size.cy) {}

    constexpr operator CSize() const { return {RoundHalfAway(cx), RoundHalfAway(cy)}; }
};
