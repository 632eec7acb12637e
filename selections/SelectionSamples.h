// What selections look at: the points of one series, the places where a value is missing, and what the stored
// numbers mean.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "sources/IPointSource.h"

namespace selections {

// real = (stored + origin) / scale.
struct AxisUnits {
    double scale = 1;
    double origin = 0;
};

// A time as it is written, in microseconds since 1970.
struct WrittenTime {
    std::int64_t at = 0;
    bool isLocal = false;  // it names no zone
};

// An x axis of times, whose real unit is the second. Times count in microseconds since 1970.
struct TimeUnits {
    std::int64_t timeOfZero = 0;  // at stored 0
    // A plain number as a time: numberOrigin + number * microsecondsPerNumber.
    std::int64_t numberOrigin = 0;
    double microsecondsPerNumber = 1e6;
    // A local time on this axis; of an hour that the clock showed twice, the last one if asked. Without it
    // local times count as the axis does.
    std::function<std::int64_t(std::int64_t time, bool last)> fromLocal = {};
};

// A place in a series that has an x and no value.
struct EmptyPlace {
    std::int32_t x;
    long pointsBefore;  // it stands before the point of this index
};

// Points in ascending order of x; nothing is owned. Places 0 ... count - 1 are the points, those behind them
// the empty ones, which ascend in pointsBefore.
struct Samples {
    const CPoint* points = nullptr;
    const unsigned short* status = nullptr;  // may be null
    const int* rejection = nullptr;          // may be null
    long count = 0;
    std::span<const EmptyPlace> empty;
    AxisUnits x;
    AxisUnits y;
    bool xIsTime = false;
    TimeUnits time;

    long PlaceCount() const { return count + static_cast<long>(empty.size()); }
    bool HasFlag(long point, unsigned short flags) const { return status && (status[point] & flags); }
};

// The series as it stands, its x a plain number in real units.
Samples SamplesOf(IPointSource& source);

// The points that take part in tests: those neither deleted nor rejected. Without deleted and rejected points
// the list of indices stays empty.
class ValidPoints {
  public:
    // Throws std::bad_alloc.
    explicit ValidPoints(const Samples& samples);

    long Count() const { return count_; }
    // The k-th valid point's index among all points.
    long Index(long k) const { return indices_.empty() ? k : indices_[static_cast<std::size_t>(k)]; }
    // How many valid points come before the point of this index.
    long CountBefore(long index) const;
    std::int32_t X(long k) const { return points_[Index(k)].x; }
    std::int32_t Y(long k) const { return points_[Index(k)].y; }
    bool AreAll() const { return indices_.empty(); }

  private:
    const CPoint* points_;
    std::vector<std::int32_t> indices_;
    long count_ = 0;
};

}  // namespace selections
