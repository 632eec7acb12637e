// Finding the point under the mouse.
#include <cmath>
#include <cstdlib>

#include "editing/CXYEditData.h"
#include "editing/DrawSizes.h"
#include "editing/SeriesArrays.h"

namespace {

std::int64_t DistanceX(const CPoint& a, const CPoint& b) { return std::llabs(std::int64_t{a.x} - b.x); }

// A point whose x is nearest to `x`, or the one below it.
int FindNearestX(const SeriesArrays& series, LONG x) {
    int lo = 0;
    int hi = series.count - 1;
    int mid = series.count / 2;
    while (hi != mid && lo != mid) {
        const LONG middle = series.draw[mid].x;
        if (x < middle)
            hi = mid;
        else if (x > middle)
            lo = mid;
        else
            lo = hi = mid;
        mid = lo + (hi - lo) / 2;
    }
    return mid;
}

// The candidate nearest to a place on the device.
class Nearest {
  public:
    Nearest(const CDC& dc, CPoint place) : dc_(dc), place_(place) { dc_.LPtoDP(&place_); }

    void Offer(int index, CPoint point) {
        dc_.LPtoDP(&point);
        const double dx = double(point.x) - place_.x;
        const double dy = double(point.y) - place_.y;
        const double away = std::sqrt(dx * dx + dy * dy);
        if (index_ >= 0 && away >= distance_) return;
        index_ = index;
        distance_ = away;
    }
    int IndexWithin(int tolerance) const { return distance_ <= tolerance ? index_ : -1; }

  private:
    const CDC& dc_;
    CPoint place_;
    int index_ = -1;
    double distance_ = 0.0;
};

}  // namespace

long CXYEditData::HitTest(CDC* dc, CPoint& point, int tolerance) {
    const SeriesArrays series(source);
    if (!dc || series.count == 0 || tolerance < 0) return -1;
    const std::int64_t window = LogicalSize(*dc, std::int64_t{tolerance} * 35, 0).cx;
    const auto present = [&series](int i) { return !series.status || !(series.status[i] & PS_DELETED); };
    const auto inWindow = [&](int i) { return DistanceX(series.draw[i], point) <= window; };

    int start = FindNearestX(series, point.x);
    // The search ends on the upper of two points only where there are no others.
    if (start > 0 && point.x < series.draw[start].x && !inWindow(start)) --start;
    Nearest nearest(*dc, point);
    for (int i = start; i >= 0 && inWindow(i); --i)
        if (present(i)) nearest.Offer(i, series.draw[i]);
    for (int i = start + 1; i < series.count && inWindow(i); ++i)
        if (present(i)) nearest.Offer(i, series.draw[i]);

    const int hit = nearest.IndexWithin(tolerance);
    if (hit >= 0) point = series.draw[hit];
    return hit;
}
