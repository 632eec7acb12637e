#include "editing/PointRoutines.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>

#include "editing/IndexRuns.h"
#include "editing/PointMarks.h"
#include "editing/RoundedRule.h"
#include "sources/PointStatus.h"

namespace {

constexpr int kOthers = 0;
constexpr int kListed = 1;

// The arrays of a series and the points covered.
struct Target {
    CPoint* data;
    long count;
    const long* indices;
    long indexCount;
    int mode;
    unsigned short* status;
    int* rejection;
    int code;
};

// change(points, n) for each run of covered points, which are then marked.
template <class Change>
int ChangeCovered(const Target& to, Change change) {
    if (!to.data || to.indexCount < 1) return 0;
    if (to.mode != kOthers && to.mode != kListed) return 1;
    const auto visit = [&](long begin, long end) {
        change(to.data + begin, end - begin);
        MarkRun(to.status, to.rejection, begin, end, PS_MOVED | PS_EDITED, to.code);
    };
    if (!to.indices)
        visit(0, std::clamp(to.count, 0L, to.indexCount));
    else if (to.mode == kListed)
        ForListedRuns(to.count, to.indices, to.indexCount, visit);
    else
        ForUnlistedRuns(to.count, to.indices, to.indexCount, visit);
    return 1;
}

template <class Rule>
int ScaleCovered(const Target& to, Rule rule) {
    return ChangeCovered(to, [rule](CPoint* points, long n) { ApplyRule(points, n, rule); });
}

int MarkCovered(const Target& to) {
    return ChangeCovered(to, [](CPoint*, long) {});
}

TAVIN_INLINE inline LONG AddWithoutBranches(LONG a, LONG b) {
    const auto sum = static_cast<LONG>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
    const LONG limit = b < 0 ? std::numeric_limits<LONG>::min() : std::numeric_limits<LONG>::max();
    return ((a ^ sum) & (b ^ sum)) < 0 ? limit : sum;
}

void AddToRun(CPoint* points, long n, LONG dx, LONG dy) {
    if (n == 1) return points->Offset(dx, dy);
    for (long i = 0; i < n; ++i)
        points[i] = CPoint(AddWithoutBranches(points[i].x, dx), AddWithoutBranches(points[i].y, dy));
}

// Amounts beyond 32 bits are added in steps; a sum that has saturated stays where it is.
void TranslateFar(CPoint* points, long n, long dx, long dy) {
    constexpr long kBeyondEverySum = 1L << 33;
    dx = std::clamp(dx, -kBeyondEverySum, kBeyondEverySum);
    dy = std::clamp(dy, -kBeyondEverySum, kBeyondEverySum);
    while (dx != 0 || dy != 0) {
        const LONG stepX = SaturateToInt32(dx);
        const LONG stepY = SaturateToInt32(dy);
        AddToRun(points, n, stepX, stepY);
        dx -= stepX;
        dy -= stepY;
    }
}

// The x of the first and of the last covered point of a routine without a mode.
struct Span {
    double first = 0.0;
    double length = 0.0;  // 0 where the fraction of a point's x is undefined
};

Span SpanOf(const Target& to) {
    if (!to.data || to.count < 1 || to.indexCount < 1) return {};
    long first = 0;
    long last = std::min(to.count, to.indexCount) - 1;
    if (to.indices) {
        const auto inArrays = [&to](long i) { return i >= 0 && i < to.count; };
        const long* end = to.indices + to.indexCount;
        const long* front = std::find_if(to.indices, end, inArrays);
        if (front == end) return {};
        while (!inArrays(end[-1])) --end;
        first = *front;
        last = end[-1];
    }
    const double start = to.data[first].x;
    return {start, to.data[last].x - start};
}

struct Method {
    int group;
    const char* name;
};
constexpr Method kMethods[] = {
    {0, "Translate"},
    {1, "Scale with offset"},
    {1, "Ramp (y1 = y + K*(Ti-T1)/(Tn-T1))"},
    {1, "Drift (y1 = y + y*P/100*(Ti-T1)/(Tn-T1))"},
    {1, "Custom scale (KI) (y1 = y + (y - offset)*P/100)"},
    {2, "Spline smooth"},
};

}  // namespace

int TranslatePoints(CPoint* data, int count, const long* indices, int indexCount, long dx, long dy, int mode,
                    unsigned short* status, int* rejection, int code) {
    const Target to{data, count, indices, indexCount, mode, status, rejection, code};
    const LONG nearX = SaturateToInt32(dx);
    const LONG nearY = SaturateToInt32(dy);
    if (nearX == dx && nearY == dy)
        return ChangeCovered(to, [=](CPoint* points, long n) { AddToRun(points, n, nearX, nearY); });
    return ChangeCovered(to, [=](CPoint* points, long n) { TranslateFar(points, n, dx, dy); });
}

int ScaleWithOffset(CPoint* data, int count, const long* indices, int indexCount, double factor,
                    double origin, int mode, unsigned short* status, int* rejection, int code) {
    return ScaleCovered({data, count, indices, indexCount, mode, status, rejection, code},
                        [=](const auto&, auto& y) TAVIN_INLINE { y = origin + (y - origin) * factor; });
}

int RampScale(CPoint* data, int count, const long* indices, int indexCount, double K, unsigned short* status,
              int* rejection, int code) {
    const Target to{data, count, indices, indexCount, kListed, status, rejection, code};
    const Span span = SpanOf(to);
    if (span.length == 0.0) return MarkCovered(to);
    return ScaleCovered(
        to, [=](const auto& x, auto& y) TAVIN_INLINE { y = y + K * (x - span.first) / span.length; });
}

int DriftScale(CPoint* data, int count, const long* indices, int indexCount, double P, unsigned short* status,
               int* rejection, int code) {
    const Target to{data, count, indices, indexCount, kListed, status, rejection, code};
    const Span span = SpanOf(to);
    if (span.length == 0.0) return MarkCovered(to);
    const double share = P / 100.0;
    return ScaleCovered(
        to, [=](const auto& x, auto& y) TAVIN_INLINE { y = y + y * share * (x - span.first) / span.length; });
}

int CustomScale(CPoint* data, int count, const long* indices, int indexCount, double P, double origin,
                unsigned short* status, int* rejection, int code) {
    return ScaleCovered({data, count, indices, indexCount, kListed, status, rejection, code},
                        [=](const auto&, auto& y) TAVIN_INLINE { y = y + (y - origin) * P / 100.0; });
}

const char* GetMethodName(short index, int group) {
    int place = 0;
    for (const Method& method : kMethods) {
        if (method.group != group) continue;
        if (place == index) return method.name;
        ++place;
    }
    return "Error Nothing found!!";
}

int GetMethodCount(int group) {
    return static_cast<int>(std::count_if(std::begin(kMethods), std::end(kMethods),
                                          [group](const Method& method) { return method.group == group; }));
}
