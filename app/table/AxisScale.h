// How the real values of one axis become 32-bit stored integers: stored = real * 10^decimals - origin, where
// the origin is the program's own 64-bit one, in stored counts. Decimals are chosen so that every value in
// the file comes back exactly where 32 bits can hold that; where they cannot, so many that the range still
// fits.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "app/table/TimeText.h"
#include "app/table/Values.h"

namespace app {

// How exactly the values survive the way to stored integers and back.
struct Exactness {
    std::int64_t values = 0;
    std::int64_t inexact = 0;
    double largestError = 0;  // in real units
};

class AxisScale {
  public:
    AxisScale() = default;
    AxisScale(int decimals, std::int64_t origin, Microseconds timeOrigin = 0);

    int Decimals() const { return decimals_; }
    std::int64_t Origin() const { return origin_; }
    // Stored counts per real unit.
    double Scale() const;
    // Rounded half away from zero and saturated at the 32-bit limits; exact where the value has no more than
    // Decimals() of them.
    std::int32_t Stored(double real) const;
    double Real(std::int32_t stored) const;
    // The same for times, which are counted in seconds from the first of them.
    std::int32_t StoredTime(Microseconds time) const;
    Microseconds RealTime(std::int32_t stored) const;
    // A difference or a length, without the origin and not rounded.
    double StoredLength(double real) const { return real * Scale(); }

  private:
    double Counts(double real) const;

    int decimals_ = 0;
    double power_ = 1;             // 10^|decimals|
    std::int64_t origin_ = 0;      // in counts, of values
    Microseconds timeOrigin_ = 0;  // of times
    Microseconds unit_ = 1;        // of a count of times
};

// How the counts of `values` become stored counts of `scale` without any rounding: each times this. Empty
// where they are no counts, or where some would be rounded or saturated.
std::optional<std::int64_t> ExactFactor(const AxisScale& scale, const Values& values);

// For values written with at most `writtenDecimals`. Values stay within half the 32-bit range, so that an
// edit has as much room again on either side. `zeroOrigin` asks for origin 0 at the price of decimals.
AxisScale ScaleForValues(const Values& values, int writtenDecimals, bool zeroOrigin);
// The same for any values from `least` to `most`.
AxisScale ScaleForRange(double least, double most, int writtenDecimals, bool zeroOrigin);
// For times, counted from the first of them.
AxisScale ScaleForTimes(const std::vector<Microseconds>& times);

Exactness Examine(const AxisScale& scale, const Values& values);
Exactness Examine(const AxisScale& scale, const std::vector<Microseconds>& times);

// "exact", or how many values are rounded and by how much at most; `unit` follows the error.
std::string ExactnessText(const Exactness& exactness, const AxisScale& scale, const std::string& unit);

}  // namespace app
