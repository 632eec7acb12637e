// Where smooth lines lie: device positions in sub-pixels, eight to a pixel on each axis. A pixel's middle is
// where a hairline through the same point has its pixel's middle.
//
// Along x a point is moved to the nearest line of a lattice of sub-pixels that is tied to the logical
// coordinates, and the lattice to the nearest sub-pixel of the device. So which points share a line does not
// depend on the window's origin: a view that pans finds the same ones again. Along y nothing is rounded.
#pragma once

#include <cstdint>

#include "platform/gdi/Mapping.h"

constexpr int kSubpixels = 8;

class SubpixelColumns {
  public:
    explicit SubpixelColumns(const AxisMapping& mapping);

    // The line of the lattice that a coordinate belongs to: a whole number, never turning back.
    double Column(std::int32_t logical) const {
        auto column = double(logical);
        ToColumns(column);
        return column;
    }
    // Makes columns of coordinates: of one double or of a vector of them.
    template <class Real>
    void ToColumns(Real& logical) const {
        logical = slope_ * (logical - reference_) + kRound - kRound;
    }
    // What to add to a column for its position on the device.
    double Shift() const { return shift_; }

    // The logical coordinates in the columns first to last; none when left > right.
    struct Interval {
        std::int64_t left, right;
    };
    Interval LogicalOf(double first, double last) const;

    bool IsRising() const { return slope_ > 0; }
    // Whether points that share a column here share one there.
    bool HasLatticeOf(const SubpixelColumns& other) const {
        return slope_ == other.slope_ && reference_ == other.reference_;
    }

  private:
    // Added and subtracted, it rounds to the nearest whole number, halves to even ones.
    static constexpr double kRound = 0x1.8p52;

    bool Reaches(std::int64_t logical, double column) const;
    std::int64_t Border(double column) const;

    double slope_;
    double reference_;
    double shift_;
};

class SubpixelRows {
  public:
    explicit SubpixelRows(const AxisMapping& mapping);

    double At(std::int32_t logical) const { return slope_ * (double(logical) - origin_) + shift_; }
    bool IsRising() const { return slope_ > 0; }

  private:
    double slope_;
    double origin_;
    double shift_;
};
