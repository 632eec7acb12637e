#include "app/workbench/SeriesFacts.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace app {

namespace {

constexpr std::size_t kMostSteps = 200000;
// So many samples are looked at for the nearest one, not more.
constexpr int kMostLookedAt = 2000000;

constexpr int kMostSegments = 2000;

struct PixelPoint {
    double x;
    double y;
};

// Whether a segment has a point in the area: what is left of it after cutting it at each side (after You-Dong
// Liang and Brian Barsky, "A New Concept and Method for Line Clipping", 1984).
bool LeadsThrough(const PixelPoint& a, const PixelPoint& b, const CRect& area) {
    double from = 0;
    double to = 1;
    const auto cut = [&](double towards, double room) {
        if (towards == 0) return room >= 0;
        const double at = room / towards;
        (towards < 0 ? from : to) = towards < 0 ? std::max(from, at) : std::min(to, at);
        return from <= to;
    };
    return cut(a.x - b.x, a.x - area.left) && cut(b.x - a.x, area.right - a.x) &&
           cut(a.y - b.y, a.y - area.top) && cut(b.y - a.y, area.bottom - a.y);
}

// The middle one of the steps between neighbours of ascending x, from an even choice of them; 0: none.
double MiddleStep(const CPoint* points, int count) {
    std::vector<std::int64_t> steps;
    const int stride = 1 + count / static_cast<int>(kMostSteps);
    for (int i = 1; i < count; i += stride)
        if (points[i].x != points[i - 1].x) steps.push_back(std::int64_t{points[i].x} - points[i - 1].x);
    if (steps.empty()) return 0;
    const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
    std::nth_element(steps.begin(), middle, steps.end());
    return static_cast<double>(*middle);
}

}  // namespace

void SeriesFacts::Refresh(double gapFactor) {
    IPointSource& source = Source();
    const bool same = changeCount_ == source.GetChangeCount() && count_ == source.GetCount();
    if (same && gapFactor == gapFactor_) return;
    source.Lock();
    if (auto* const live = dynamic_cast<COnlineSource*>(&source)) {
        Follow(*live, gapFactor > 0);
    } else {
        if (!same) {
            TakeScales();
            TakeExtents();
        }
        TakeBreaks(gapFactor);
    }
    changeCount_ = source.GetChangeCount();
    count_ = source.GetCount();
    gapFactor_ = gapFactor;
    source.UnLock();
}

// Costs what is new. A live line breaks where its session says so: the times of what arrives are too uneven
// to tell a gap by.
void SeriesFacts::Follow(COnlineSource& live, bool atGaps) {
    TakeScales();
    const std::uint64_t appended = live.GetAppended();
    const auto count = static_cast<std::uint64_t>(live.GetCount());
    if (appended < followed_) followed_ = lastFall_ = 0;
    const CPoint* const points = live.GetData();
    const std::uint64_t first = appended - count;
    for (std::uint64_t i = std::max(followed_, first + 1); i < appended; ++i)
        if (points[i - first].x < points[i - first - 1].x) lastFall_ = i;
    followed_ = appended;
    sorted_ = lastFall_ <= first;
    const StoredBox box = live.GetWindowExtent();
    x_ = y_ = Range::None();
    if (box.any) {
        x_ = {RealX(box.minX), RealX(box.maxX)};
        y_ = {RealY(box.minY), RealY(box.maxY)};
    }
    breaks_.clear();
    if (!atGaps) return;
    for (const std::uint64_t number : file_->series[index_].gapNumbers)
        if (number > first && number < appended) breaks_.push_back(static_cast<int>(number - first));
}

void SeriesFacts::TakeScales() {
    IPointSource& source = Source();
    const AxisReading& y = file_->series[index_].y;
    const double perX = source.GetXScale() * file_->x.unitsPerReal;
    const double perY = source.GetYScale() * y.unitsPerReal;
    ax_ = 1 / perX;
    bx_ = source.GetOffset().x / perX + file_->x.shift;
    ay_ = 1 / perY;
    by_ = source.GetOffset().y / perY + y.shift;
}

void SeriesFacts::TakeExtents() {
    IPointSource& source = Source();
    const auto count = static_cast<int>(source.GetCount());
    const CPoint* const points = source.GetData();
    const unsigned short* const status = source.GetStatus();
    CPoint low(INT32_MAX, INT32_MAX);
    CPoint high(INT32_MIN, INT32_MIN);
    const auto widen = [&](bool all) {
        for (int i = 0; i < count; ++i) {
            if (!all && status && (status[i] & PS_DELETED)) continue;
            low = {std::min(low.x, points[i].x), std::min(low.y, points[i].y)};
            high = {std::max(high.x, points[i].x), std::max(high.y, points[i].y)};
        }
    };
    widen(false);
    if (low.x > high.x) widen(true);
    x_ = y_ = Range::None();
    unsigned flags = 0;
    for (int i = 0; status && i < count; ++i) flags |= status[i];
    flags_ = static_cast<unsigned short>(flags);
    sorted_ =
        std::is_sorted(points, points + count, [](const CPoint& a, const CPoint& b) { return a.x < b.x; });
    if (low.x > high.x) return;
    x_ = {RealX(low.x), RealX(high.x)};
    y_ = {RealY(low.y), RealY(high.y)};
}

void SeriesFacts::TakeBreaks(double gapFactor) {
    breaks_.clear();
    if (gapFactor <= 0) return;
    IPointSource& source = Source();
    const auto count = static_cast<int>(source.GetCount());
    const CPoint* const points = source.GetData();
    std::vector<int> gaps;
    // Without an order there is no usual step.
    if (const double usual = sorted_ ? MiddleStep(points, count) : 0; usual > 0) {
        const double longest = usual * gapFactor;
        for (int i = 1; i < count; ++i)
            if (static_cast<double>(std::int64_t{points[i].x} - points[i - 1].x) > longest) gaps.push_back(i);
    }
    const std::vector<int>& empty = file_->series[index_].emptyBefore;
    std::set_union(gaps.begin(), gaps.end(), empty.begin(), empty.end(), std::back_inserter(breaks_));
}

std::pair<int, int> SeriesFacts::Within(const Range& x) const {
    IPointSource& source = Source();
    const auto count = static_cast<int>(source.GetCount());
    if (!sorted_) return {0, count};
    const CPoint* const points = source.GetData();
    const auto before = [](const CPoint& point, double stored) { return point.x < stored; };
    const auto after = [](double stored, const CPoint& point) { return stored < point.x; };
    const CPoint* const first = std::lower_bound(points, points + count, StoredX(x.from), before);
    const CPoint* const end = std::upper_bound(first, points + count, StoredX(x.to), after);
    return {static_cast<int>(first - points), static_cast<int>(end - points)};
}

Range SeriesFacts::YWithin(const Range& x) const {
    const auto [first, end] = Within(x);
    const CPoint* const points = Source().GetData();
    const unsigned short* const status = Source().GetStatus();
    Range stored = Range::None();
    for (int i = first; i < end; ++i) {
        if ((status && (status[i] & PS_DELETED)) || (!sorted_ && !x.Holds(RealX(points[i].x)))) continue;
        stored.Add(points[i].y);
    }
    return stored.IsNone() ? stored : Range{RealY(stored.from), RealY(stored.to)};
}

// From an even choice of the samples: it need not be exact.
double SeriesFacts::PartThrough(const PixelScale& x, const PixelScale& y, const CRect& area) const {
    auto [first, end] = Within({x.Value(area.left), x.Value(area.right)});
    first = std::max(0, first - 1);
    end = std::min(end + 1, static_cast<int>(Source().GetCount()));
    const CPoint* const points = Source().GetData();
    const unsigned short* const status = Source().GetStatus();
    const int stride = 1 + (end - first) / kMostSegments;
    std::optional<PixelPoint> before;
    int through = 0;
    int all = 0;
    for (int i = first; i < end; i += stride) {
        if (status && (status[i] & PS_DELETED)) continue;
        const PixelPoint at{x.Pixel(RealX(points[i].x)), y.Pixel(RealY(points[i].y))};
        const bool broken = !before || std::binary_search(breaks_.begin(), breaks_.end(), i);
        through += LeadsThrough(broken ? at : *before, at, area);
        ++all;
        before = at;
    }
    return all > 0 ? static_cast<double>(through) / all : 0;
}

std::optional<SeriesFacts::Near> SeriesFacts::Nearest(const PixelScale& x, const PixelScale& y, CPoint pixel,
                                                      int reach) const {
    const Range looked{x.Value(pixel.x - reach), x.Value(pixel.x + reach)};
    auto [first, end] = Within(looked);
    end = std::min(end, first + kMostLookedAt);
    const CPoint* const points = Source().GetData();
    std::optional<Near> nearest;
    for (int i = first; i < end; ++i) {
        const double dx = x.Pixel(RealX(points[i].x)) - pixel.x;
        const double dy = y.Pixel(RealY(points[i].y)) - pixel.y;
        const double distance = std::hypot(dx, dy);
        if (distance <= (nearest ? nearest->distance : reach)) nearest = Near{i, distance};
    }
    return nearest;
}

}  // namespace app
