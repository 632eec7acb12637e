// Every rule against a slow version that follows its definition word for word, on random series with deleted
// and rejected points, missing values and points at one x.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "selections/Hampel.h"
#include "selections/Selection.h"
#include "sources/PointStatus.h"

namespace selections {
namespace {

struct Point {
    long x;
    long y;
    long place;
};

struct RandomSamples {
    explicit RandomSamples(unsigned seed) {
        std::mt19937 random(seed);
        const auto below = [&](unsigned n) { return static_cast<int>(random() % n); };
        const int n = below(40);
        const int levels = 1 + below(12);
        const unsigned flagged = seed % 3 == 0 ? 1000 : 6;
        int x = below(100) - 50;
        int level = 0;
        for (int i = 0; i < n; ++i) {
            if (below(8) == 0) empty.push_back({x, i});
            if (below(15) == 0) level += below(60) - 30;
            points.emplace_back(x, level + below(static_cast<unsigned>(levels)));
            constexpr unsigned short kFlags[] = {PS_DELETED, PS_REJECTED, PS_SPIKE};
            status.push_back(below(flagged) == 0 ? kFlags[below(3)] : 0);
            rejection.push_back(below(4));
            x += below(4) == 0 ? 0 : below(5) == 0 ? below(30) : 4;
        }
        samples.points = points.data();
        samples.status = status.data();
        samples.rejection = rejection.data();
        samples.count = n;
        samples.empty = empty;
        samples.x = {2, 1};  // real x = (stored + 1) / 2
        samples.y = {10, -3};
        samples.xIsTime = true;
        samples.time.numberOrigin = samples.time.timeOfZero = 0;
        for (long i = 0; i < n; ++i)
            if (!(status[static_cast<std::size_t>(i)] & (PS_DELETED | PS_REJECTED)))
                valid.push_back(
                    {points[static_cast<std::size_t>(i)].x, points[static_cast<std::size_t>(i)].y, i});
    }
    double Y(const Point& point) const { return double(point.y - 3) / 10; }

    std::vector<CPoint> points;
    std::vector<unsigned short> status;
    std::vector<int> rejection;
    std::vector<EmptyPlace> empty;
    std::vector<Point> valid;
    Samples samples;
};

std::vector<long> Found(const std::string& text, const Samples& samples, const PlaceSet& before = {}) {
    SelectionFault fault;
    const auto selection = Selection::Read(text, fault);
    EXPECT_TRUE(selection) << text << ": " << fault.position << ": " << fault.message;
    PlaceSet found;
    std::vector<long> places;
    if (!selection || !selection->Find(samples, before, found)) return {-1};
    found.ForEach([&](long place) { places.push_back(place); });
    return places;
}

std::vector<long> Sorted(std::vector<long> places) {
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

using Slow = std::vector<long> (*)(const RandomSamples&);

std::vector<long> SlowRange(const RandomSamples& s) {
    std::vector<long> found;
    for (const auto& p : s.valid)
        if (s.Y(p) < -0.2 || s.Y(p) > 0.7) found.push_back(p.place);
    return found;
}

// 0.4 / s: |dy| / 10 over dx / 2 s.
std::vector<long> SlowRate(const RandomSamples& s) {
    std::vector<long> found;
    for (std::size_t k = 1; k < s.valid.size(); ++k) {
        const long dx = s.valid[k].x - s.valid[k - 1].x;
        const long dy = std::labs(s.valid[k].y - s.valid[k - 1].y);
        if (dx > 0 && dy * 2 * 10 > 4 * dx * 10) found.push_back(s.valid[k].place);
    }
    return found;
}

std::vector<long> SlowSpike(const RandomSamples& s) {
    std::vector<long> found;
    for (std::size_t k = 1; k + 1 < s.valid.size(); ++k)
        if (std::labs(2 * s.valid[k].y - s.valid[k - 1].y - s.valid[k + 1].y) > 2 * 3)
            found.push_back(s.valid[k].place);
    return found;
}

// 6 s are 12 counts of x, 0.2 are 2 of y.
std::vector<long> SlowFlat(const RandomSamples& s) {
    std::vector<long> found;
    for (std::size_t a = 0; a < s.valid.size(); ++a) {
        long least = s.valid[a].y;
        long most = least;
        for (std::size_t b = a; b < s.valid.size(); ++b) {
            least = std::min(least, s.valid[b].y);
            most = std::max(most, s.valid[b].y);
            if (most - least > 2 || s.valid[b].x - s.valid[a].x < 12) continue;
            for (std::size_t k = a; k <= b; ++k) found.push_back(s.valid[k].place);
        }
    }
    return Sorted(found);
}

std::vector<long> SlowGap(const RandomSamples& s) {
    std::vector<long> found;
    for (std::size_t k = 1; k < s.valid.size(); ++k)
        if (s.valid[k].x - s.valid[k - 1].x > 6)
            found.insert(found.end(), {s.valid[k - 1].place, s.valid[k].place});
    return Sorted(found);
}

// Windows of 6 s, 12 counts; more than 0.5, 5 counts. Means as fractions.
std::vector<long> SlowStep(const RandomSamples& s) {
    struct Change {
        Point point;
        double difference;
    };
    std::vector<Change> changes;
    for (std::size_t k = 1; k < s.valid.size(); ++k) {
        const Point at = s.valid[k];
        long sums[2] = {0, 0};
        long counts[2] = {0, 0};
        for (const auto& p : s.valid) {
            const int side = p.x >= at.x && p.place >= at.place ? 1 : 0;
            const bool in = side ? p.x < at.x + 12 : p.x < at.x && p.x >= at.x - 12;
            if (!in) continue;
            sums[side] += p.y;
            ++counts[side];
        }
        if (s.valid[k - 1].x == at.x || counts[0] == 0) continue;
        const long exact = sums[1] * counts[0] - sums[0] * counts[1];
        if (std::labs(exact) > 5 * counts[0] * counts[1])
            changes.push_back({at, double(exact) / double(counts[0] * counts[1])});
    }
    std::vector<long> found;
    for (const auto& one : changes) {
        const bool beaten = std::any_of(changes.begin(), changes.end(), [&](const Change& other) {
            const double a = std::fabs(one.difference);
            const double b = std::fabs(other.difference);
            return one.difference * other.difference > 0 && std::labs(one.point.x - other.point.x) < 12 &&
                   (b > a || (b == a && other.point.x < one.point.x));
        });
        if (!beaten) found.push_back(one.point.place);
    }
    return found;
}

double SlowMedian(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return (values[(values.size() - 1) / 2] + values[values.size() / 2]) / 2;
}

bool SlowIsOutlier(const std::vector<std::int32_t>& samples, long i, long half, double limit) {
    std::vector<double> window;
    for (long j = std::max(0L, i - half); j <= std::min(static_cast<long>(samples.size()) - 1, i + half); ++j)
        window.push_back(samples[static_cast<std::size_t>(j)]);
    const double median = SlowMedian(window);
    for (auto& value : window) value = std::fabs(value - median);
    const double deviation = SlowMedian(window);
    const double scale = deviation == 0 ? 1 : 1.4826 * deviation;
    return std::fabs(samples[static_cast<std::size_t>(i)] - median) > limit * scale;
}

std::vector<long> SlowHampel(const RandomSamples& s) {
    std::vector<std::int32_t> ys;
    for (const auto& p : s.valid) ys.push_back(static_cast<std::int32_t>(p.y));
    std::vector<long> found;
    for (std::size_t k = 0; k < ys.size(); ++k)
        if (SlowIsOutlier(ys, static_cast<long>(k), 3, 3)) found.push_back(s.valid[k].place);
    return found;
}

// How many valid points lie between two places, in the order of the series.
std::vector<long> SlowGrown(const RandomSamples& s, bool byLength) {
    auto found = Found("spikes or missing", s.samples);
    const auto seeds = found;
    const auto order = [&](long place) {  // empty places stand before the point that follows them
        return place < s.samples.count
                   ? 2 * place + 1
                   : 2 * s.empty[static_cast<std::size_t>(place - s.samples.count)].pointsBefore;
    };
    const auto x = [&](long place) {
        return place < s.samples.count ? s.points[static_cast<std::size_t>(place)].x
                                       : s.empty[static_cast<std::size_t>(place - s.samples.count)].x;
    };
    for (const long seed : seeds)
        for (const auto& p : s.valid) {
            const long low = std::min(order(seed), order(p.place));
            const long high = std::max(order(seed), order(p.place));
            const auto between = std::count_if(s.valid.begin(), s.valid.end(), [&](const Point& q) {
                return order(q.place) > low && order(q.place) < high;
            });
            if (byLength ? std::labs(x(seed) - p.x) <= 10 : between < 2) found.push_back(p.place);
        }
    return Sorted(found);
}

TEST(SelectionRules, AgreeWithTheirDefinitions) {
    const struct {
        const char* text;
        Slow slow;
    } cases[] = {
        {"range(-0.2,0.7)", SlowRange},
        {"rate(0.4/s)", SlowRate},
        {"rate(0.4)", SlowRate},
        {"rate(24/min)", SlowRate},
        {"spike(0.3)", SlowSpike},
        {"flat(6s,0.2)", SlowFlat},
        {"gap(3s)", SlowGap},
        {"step(0.5,6s)", SlowStep},
        {"hampel", SlowHampel},
        {"(spikes or missing) grow(2)", [](const RandomSamples& s) { return SlowGrown(s, false); }},
        {"(spikes or missing) grow(5s)", [](const RandomSamples& s) { return SlowGrown(s, true); }},
    };
    for (const auto& one : cases) {
        std::size_t all = 0;
        for (unsigned seed = 1; seed <= 400; ++seed) {
            const RandomSamples random(seed);
            const auto expected = one.slow(random);
            all += expected.size();
            ASSERT_EQ(Found(one.text, random.samples), expected) << one.text << ", seed " << seed;
        }
        EXPECT_GT(all, 100u) << one.text << " was hardly tried";
    }
}

TEST(SelectionRules, CombineAsSets) {
    for (unsigned seed = 1; seed <= 100; ++seed) {
        const RandomSamples random(seed);
        const Samples& s = random.samples;
        PlaceSet before(s.PlaceCount());
        for (long place = seed % 3; place < s.PlaceCount(); place += 3) before.Add(place);
        const auto has = [&](const std::string& text) {
            PlaceSet set(s.PlaceCount());
            for (const long place : Found(text, s, before)) set.Add(place);
            return set;
        };
        const PlaceSet a = has("range(0,0.4)");
        const PlaceSet b = has("x=0:20");
        const PlaceSet c = has("missing");
        const PlaceSet d = has("selected");
        ASSERT_EQ(d, before);
        PlaceSet expected(s.PlaceCount());
        for (long i = 0; i < s.PlaceCount(); ++i)
            if ((a.Has(i) && !b.Has(i)) || (!(c.Has(i) || !d.Has(i)) && b.Has(i))) expected.Add(i);
        ASSERT_EQ(has("range(0,.4) and not x=0:20 or not (missing or invert) and x=0:20"), expected) << seed;
    }
}

// The windows that a series may have, its ends, equal samples, the 32-bit limits.
TEST(Hampel, AgreesWithSortingEveryWindow) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::mt19937 random(seed);
        std::vector<std::int32_t> samples(random() % (seed % 7 ? 120 : 9000));
        const unsigned kind = seed % 4;
        for (auto& sample : samples) {
            const auto number = static_cast<std::int32_t>(random());
            sample = kind == 0 ? number : kind == 1 ? number % 4 : number % 1000 - (number & 1 ? 1 << 30 : 0);
            if (kind == 3 && number % 3) sample = number % 2 ? INT32_MAX : INT32_MIN;
        }
        const long half = 1 + static_cast<long>(random() % (seed % 5 ? 8 : 90));
        std::vector<unsigned char> outliers;
        HampelOutliers(samples, half, 2.5, outliers, seed % 2 ? kWidestSortedHalf : 0);
        for (std::size_t i = 0; i < samples.size(); ++i)
            ASSERT_EQ(outliers[i] != 0, SlowIsOutlier(samples, static_cast<long>(i), half, 2.5))
                << "seed " << seed << ", half " << half << ", sample " << i;
    }
}

// What lies on a limit is good, also where the limit is no binary fraction.
TEST(SelectionRules, AreStrictAtDecimalLimits) {
    const std::vector<CPoint> points = {{0, 100}, {60, 129}, {120, 100}, {180, 101}, {240, 101}, {300, 101}};
    Samples samples;
    samples.points = points.data();
    samples.count = 6;
    samples.y = {100, 0};
    samples.xIsTime = true;
    const struct {
        const char* text;
        std::vector<long> found;
    } cases[] = {
        {"range(1,1.29)", {}},
        {"range(1.01,1.28)", {0, 1, 2}},
        {"range(,1.28)", {1}},
        {"range(1.01,)", {0, 2}},
        {"spike(0.29)", {}},
        {"spike(0.289)", {1}},
        {"rate(17.4/h)", {}},
        {"rate(17.3/h)", {1, 2}},
        {"rate(0.29/min)", {}},
        {"gap(1min)", {}},
        {"gap(0.9999min)", {0, 1, 2, 3, 4, 5}},
        {"flat(2min)", {3, 4, 5}},
        {"flat(121s)", {}},
        {"flat(180s,0.01)", {2, 3, 4, 5}},
        {"flat(180s,0.009)", {}},
        {"y=1.01:1.29", {1, 3, 4, 5}},
        {"x=60:120", {1, 2}},
        {"x=60.001:", {2, 3, 4, 5}},
        {"step(0.01,1min)", {1, 2}},
        {"step(0.009,1min)", {1, 2, 3}},
    };
    for (const auto& one : cases) EXPECT_EQ(Found(one.text, samples), one.found) << one.text;
}

}  // namespace
}  // namespace selections
