// A range of an axis in the values of the file: for times seconds from the first one.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace app {

struct Range {
    double from = 0;
    double to = 1;

    // Holds nothing and grows with what is added.
    static Range None() {
        return {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
    }
    double Length() const { return to - from; }
    double Middle() const { return from + (to - from) / 2; }
    bool IsNone() const { return !(from <= to); }
    bool Holds(double value) const { return value >= from && value <= to; }
    void Add(double value) {
        from = std::min(from, value);
        to = std::max(to, value);
    }
    void Add(const Range& other) {
        from = std::min(from, other.from);
        to = std::max(to, other.to);
    }
    Range Moved(double by) const { return {from + by, to + by}; }
    // `factor` times as long, with `at` where it was.
    Range Scaled(double factor, double at) const {
        return {at - (at - from) * factor, at + (to - at) * factor};
    }
    bool operator==(const Range&) const = default;
};

// Where the values of a range lie on the pixels of a side of a plot; `first` belongs to range.from.
struct PixelScale {
    Range range;
    double first = 0;
    double last = 1;

    double Pixel(double value) const {
        return first + (value - range.from) / range.Length() * (last - first);
    }
    double Value(double pixel) const {
        return range.from + (pixel - first) / (last - first) * range.Length();
    }
    double PerPixel() const { return range.Length() / std::max(1.0, std::fabs(last - first)); }
};

}  // namespace app
