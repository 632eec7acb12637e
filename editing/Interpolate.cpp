#include "editing/Interpolate.h"

#include <algorithm>

#include "editing/IndexRuns.h"
#include "editing/PointMarks.h"
#include "editing/RoundedRule.h"
#include "sources/PointStatus.h"

namespace {

// The support points nearest to a run of listed points, found by walking over each gap of the list once.
class Supports {
  public:
    Supports(const unsigned short* status, long count, const long* indices, long indexCount)
        : status_(status), count_(count), listed_(indices), listEnd_(indices + indexCount) {}

    // For runs that ascend. A support point below or above that does not exist is -1 or `count`.
    void MoveTo(long begin, long end) {
        for (long i = begin - 1; i >= done_; --i) {
            if (IsDeleted(i)) continue;
            below_ = i;
            break;
        }
        done_ = end;
        if (above_ < end) above_ = FirstFrom(end);
    }
    long Done() const { return done_; }
    long Below() const { return below_; }
    long Above() const { return above_; }

  private:
    bool IsDeleted(long i) const { return status_ && (status_[i] & PS_DELETED); }
    // Over a run of consecutive entries in one step.
    void PassOverListedBelow(long i) {
        while (listed_ != listEnd_ && *listed_ < i) {
            const long step =
                *listed_ < 0 ? 1 : std::min(i - *listed_, static_cast<long>(listEnd_ - listed_));
            listed_ += listed_[step - 1] == *listed_ + step - 1 ? step : 1;
        }
    }
    long FirstFrom(long i) {
        for (; i < count_; ++i) {
            PassOverListedBelow(i);
            const bool isListed = listed_ != listEnd_ && *listed_ == i;
            if (!isListed && !IsDeleted(i)) break;
        }
        return i;
    }

    const unsigned short* status_;
    long count_;
    const long* listed_;  // passes over the list as FirstFrom moves up
    const long* listEnd_;
    long done_ = 0;  // points below are behind us
    long below_ = -1;
    long above_ = -1;
};

void SetLevel(CPoint* points, long n, LONG level) {
    for (long i = 0; i < n; ++i) points[i].y = level;
}

void SetLine(CPoint* points, long n, const CPoint& from, const CPoint& to, double yScale) {
    const double x0 = from.x;
    const double x1 = to.x;
    const double y0 = from.y / yScale;
    const double y1 = to.y / yScale;
    const double length = x1 - x0;
    if (length == 0.0)
        SetLevel(points, n, 0);
    else
        ApplyRule(points, n, [=](const auto& x, auto& y) TAVIN_INLINE {
            y = yScale * (y0 * (x1 - x) / length + y1 * (x - x0) / length);
        });
}

}  // namespace

int InterpolatePoints(CPoint* data, long count, const long* indices, long indexCount, double yScale,
                      unsigned short* status) {
    if (!data || !indices || indexCount < 1 || indexCount >= count) return 0;
    int changed = 0;
    Supports supports(status, count, indices, indexCount);
    ForListedRuns(count, indices, indexCount, [&](long begin, long end) {
        begin = std::max(begin, supports.Done());
        if (begin >= end) return;
        supports.MoveTo(begin, end);
        const long below = supports.Below();
        const long above = supports.Above();
        if (below < 0 && above == count) return;
        if (below < 0)
            SetLevel(data + begin, end - begin, data[above].y);
        else if (above == count)
            SetLevel(data + begin, end - begin, data[below].y);
        else
            SetLine(data + begin, end - begin, data[below], data[above], yScale);
        changed = 1;
        MarkRun(status, nullptr, begin, end, PS_INTERPOLATED | PS_EDITED, 0);
    });
    return changed;
}
