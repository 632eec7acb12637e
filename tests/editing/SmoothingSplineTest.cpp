#include "editing/SmoothingSpline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "sources/PointStatus.h"
#include "tests/core/Limits.h"

namespace {

__extension__ using Quad = __float128;  // 113 bits: stiff systems of a few dozen points keep enough digits

constexpr unsigned short kSmoothed = PS_SMOOTHED | PS_EDITED;

using Points = std::vector<CPoint>;
using Words = std::vector<unsigned short>;

// The solution of a full system of equations by elimination with pivoting.
std::vector<Quad> SolveDense(std::vector<std::vector<Quad>> a, std::vector<Quad> b) {
    const auto size = [](Quad x) { return x < 0 ? -x : x; };
    const std::size_t m = b.size();
    for (std::size_t k = 0; k < m; ++k) {
        std::size_t pivot = k;
        for (std::size_t i = k; i < m; ++i) pivot = size(a[i][k]) > size(a[pivot][k]) ? i : pivot;
        std::swap(a[k], a[pivot]);
        std::swap(b[k], b[pivot]);
        for (std::size_t i = 0; i < m; ++i) {
            if (i == k) continue;
            const Quad factor = a[i][k] / a[k][k];
            for (std::size_t j = k; j < m; ++j) a[i][j] -= factor * a[k][j];
            b[i] -= factor * b[k];
        }
    }
    for (std::size_t k = 0; k < m; ++k) b[k] /= a[k][k];
    return b;
}

// (R + lambda Q'Q) c = Q'y and f = y - lambda Q c, with full matrices.
std::vector<double> DenseFit(const std::vector<double>& t, const std::vector<double>& y, double waveLength,
                             double minimumSpacing) {
    const std::size_t n = t.size();
    const std::size_t m = n - 2;
    std::vector<Quad> h(n - 1);
    for (std::size_t i = 0; i + 1 < n; ++i) h[i] = std::max(std::fabs(t[i + 1] - t[i]), minimumSpacing);
    Quad span = std::fabs(t[n - 1] - t[0]);
    if (span == 0) span = Quad(minimumSpacing) * static_cast<double>(n - 1);
    const Quad l = Quad(waveLength) / 6.283185307179586;
    const Quad lambda = l * l * l * l * static_cast<double>(n) / span;

    std::vector<std::vector<Quad>> q(n, std::vector<Quad>(m)), a(m, std::vector<Quad>(m));
    std::vector<Quad> b(m);
    for (std::size_t j = 0; j < m; ++j) {
        q[j][j] = 1 / h[j];
        q[j + 1][j] = -1 / h[j] - 1 / h[j + 1];
        q[j + 2][j] = 1 / h[j + 1];
        a[j][j] = (h[j] + h[j + 1]) / 3;
        if (j + 1 < m) a[j][j + 1] = a[j + 1][j] = h[j + 1] / 6;
    }
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < m; ++j) {
            b[j] += q[i][j] * y[i];
            for (std::size_t k = 0; k < m; ++k) a[j][k] += lambda * q[i][j] * q[i][k];
        }
    }
    const std::vector<Quad> c = SolveDense(a, b);
    std::vector<double> fit(n);
    for (std::size_t i = 0; i < n; ++i) {
        Quad f = y[i];
        for (std::size_t j = 0; j < m; ++j) f -= lambda * q[i][j] * c[j];
        fit[i] = static_cast<double>(f);
    }
    return fit;
}

// The least-squares line through (t, y) at every t.
std::vector<double> LeastSquaresLine(const std::vector<double>& t, const std::vector<double>& y) {
    Quad st = 0, sy = 0, stt = 0, sty = 0;
    const Quad n = static_cast<double>(t.size());
    for (std::size_t i = 0; i < t.size(); ++i) st += t[i], sy += y[i];
    for (std::size_t i = 0; i < t.size(); ++i) {
        stt += (t[i] - st / n) * (t[i] - st / n);
        sty += (t[i] - st / n) * (y[i] - sy / n);
    }
    std::vector<double> line(t.size());
    for (std::size_t i = 0; i < t.size(); ++i) {
        line[i] = static_cast<double>(sy / n + sty / stt * (t[i] - st / n));
    }
    return line;
}

std::vector<double> Fit(const std::vector<double>& t, const std::vector<double>& y, double waveLength) {
    SplineWork work;
    const int n = static_cast<int>(t.size());
    EXPECT_TRUE(work.Allocate(n, false));
    std::copy(t.begin(), t.end(), work.abscissa);
    std::copy(y.begin(), y.end(), work.values);
    work.used = n;
    SetWaveLength(work, waveLength);
    SolveSmoothingSpline(work);
    return {work.fitted, work.fitted + n};
}

std::vector<double> FitOf(const Points& points, double waveLength, double tScale) {
    SplineWork work;
    double yScale = 1;
    const int n = static_cast<int>(points.size());
    EXPECT_TRUE(SplineSmooth(points.data(), nullptr, n, work, waveLength, tScale, yScale, nullptr));
    return {work.fitted, work.fitted + n};
}

int Smooth(Points& points, double waveLength, double tScale = 1, double yScale = 1, Words* status = nullptr) {
    const int n = static_cast<int>(points.size());
    return SmoothPoints(points.data(), nullptr, n, nullptr, n, waveLength, 1, tScale, yScale,
                        status ? status->data() : nullptr, nullptr, 0);
}

void ExpectClose(const std::vector<double>& a, const std::vector<double>& b, double tolerance) {
    ASSERT_EQ(a.size(), b.size());
    for (std::size_t i = 0; i < a.size(); ++i) ASSERT_NEAR(a[i], b[i], tolerance) << "point " << i;
}

Points UnevenPoints(int n, unsigned seed) {
    std::mt19937 random(seed);
    Points points;
    int x = -500;
    for (int i = 0; i < n; ++i) {
        x += 1 + static_cast<int>(random() % 40);
        points.emplace_back(x, static_cast<int>(random() % 20001) - 10000);
    }
    return points;
}

TEST(SmoothingSpline, AgreesWithFullMatricesOnRandomPoints) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const std::size_t n = 3 + random() % 28;
        std::uniform_real_distribution<double> uniform(-1, 1);
        std::vector<double> t(n), y(n);
        for (std::size_t i = 0; i < n; ++i) {
            // Repeated abscissas and a few steps back are as good as steps ahead.
            const double step = random() % 8 == 0 ? 0.0 : std::pow(10.0, 2 * uniform(random));
            t[i] = (i ? t[i - 1] : 0.0) + (random() % 9 == 0 ? -step : step);
            y[i] = 1000 * uniform(random);
        }
        if (seed % 5 == 0) std::reverse(t.begin(), t.end());
        for (const double waveLength : {0.01, 3.0, 60.0, 2000.0, 9999.0}) {
            SCOPED_TRACE(waveLength);
            ExpectClose(Fit(t, y, waveLength), DenseFit(t, y, waveLength, 0.001), 1e-6);
        }
    }
}

TEST(SmoothingSpline, ALineStaysALineAndZeroWaveLengthKeepsEverything) {
    for (const int n : {4, 5, 1000, 100001}) {
        Points line = UnevenPoints(n, 7);
        for (CPoint& p : line) p.y = 3 * p.x - 12345;
        for (const double waveLength : {0.0, 1e-300, 5.0, 700.0, 9999.0, 1e5, 1e12, 1e308, kInfinity}) {
            Points points = line;
            ASSERT_EQ(Smooth(points, waveLength, 8.0, 100.0), 1);
            EXPECT_EQ(points, line) << n << " points, wave length " << waveLength;
        }
        Points rough = UnevenPoints(n, 8);
        ASSERT_EQ(Smooth(rough, 0.0, 3.0, 0.7), 1);
        EXPECT_EQ(rough, UnevenPoints(n, 8)) << n;
    }
}

TEST(SmoothingSpline, LongWaveLengthsGiveTheLeastSquaresLine) {
    for (const int n : {4, 501, 200000}) {
        Points points = UnevenPoints(n, 9);
        std::vector<double> t, y;
        for (CPoint& p : points) {
            p.y += p.x;
            t.push_back(p.x);
            y.push_back(p.y);
        }
        const std::vector<double> line = LeastSquaresLine(t, y);
        for (const double waveLength : {1e10, 1e200, kInfinity}) {
            SCOPED_TRACE(waveLength);
            ExpectClose(FitOf(points, waveLength, 1.0), line, 1e-5);
        }
    }
}

TEST(SmoothingSpline, HalfOfAWaveOfTheWaveLengthIsLeft) {
    constexpr double kStep = 0.25;
    for (const double waveLength : {4.0, 25.0, 200.0}) {
        std::vector<double> t, y;
        for (int i = 0; i < 20000; ++i) {
            t.push_back(i * kStep);
            y.push_back(std::sin(6.283185307179586 / waveLength * t.back()));
        }
        const std::vector<double> fit = Fit(t, y, waveLength);
        for (std::size_t i = 5000; i < 15000; ++i) ASSERT_NEAR(fit[i], y[i] / 2, 2e-3) << waveLength;
    }
}

TEST(SmoothingSpline, WaveLengthsBeyondTheRangeAreRescaled) {
    SplineWork work;
    EXPECT_EQ(SetWaveLength(work, 50000), 9999);
    EXPECT_EQ(SetWaveLength(work, -1), 0);
    EXPECT_EQ(SetWaveLength(work, kNaN), 0);

    const Points points = UnevenPoints(40, 11);
    double waveLength = 50000, tScale = 0.01, yScale = 1;
    ASSERT_TRUE(SplineSmooth(points.data(), nullptr, 40, work, waveLength, tScale, yScale, nullptr));
    EXPECT_DOUBLE_EQ(waveLength, 5000);
    EXPECT_DOUBLE_EQ(tScale, 0.1);
    ExpectClose({work.fitted, work.fitted + 40}, FitOf(points, 5000, 0.1), 1e-9);

    // A work area used before is as good as new.
    Points close = points;
    for (CPoint& p : close) p.x /= 20;
    waveLength = 50, tScale = 10000;
    ASSERT_TRUE(SplineSmooth(close.data(), nullptr, 40, work, waveLength, tScale, yScale, nullptr));
    ExpectClose({work.fitted, work.fitted + 40}, FitOf(close, 50, 10000), 0);

    // Steps of 0.002 to 0.08 remain uneven though the unit grows beyond them.
    std::vector<double> t, y;
    for (const CPoint& p : points) {
        t.push_back(p.x / 500.0);
        y.push_back(p.y);
    }
    ExpectClose(FitOf(points, 20000, 500), DenseFit(t, y, 20000, 0.001), 1e-6);
}

TEST(SmoothingSpline, EqualAndWildAbscissasGiveFiniteFits) {
    const Points points = UnevenPoints(301, 13);
    for (const double waveLength : {0.0, 1e-4, 0.01, 100.0, 1e9, kInfinity}) {
        Points equal = points;
        for (CPoint& p : equal) p.x = 77;
        for (const double f : FitOf(equal, waveLength, 1)) ASSERT_LE(std::fabs(f), 20000) << waveLength;
        Points wild = points;
        for (std::size_t i = 0; i < wild.size(); ++i) wild[i].x = i % 3 ? kMin : kMax;
        for (const double f : FitOf(wild, waveLength, 1e-3)) ASSERT_TRUE(std::isfinite(f)) << waveLength;
    }
    for (const double t : {kNaN, kInfinity, -1e308, 1e-308}) {
        for (const double f : Fit({0, 1, t, 3, 4, -t}, {5, 3, 9, 1, 0, 2}, 7)) {
            EXPECT_TRUE(std::isfinite(f)) << t;
        }
    }
    // A span whose inverse is infinite; without stiffness the values are the fit all the same.
    const std::vector<double> values{5, 3, 9, 1};
    for (const double waveLength : {0.0, 1e-90})
        EXPECT_EQ(Fit({0, 0, 0, 1e-308}, values, waveLength), values);
    for (const double f : Fit({0, 0, 0, 1e-308}, values, 7)) EXPECT_TRUE(std::isfinite(f));
}

TEST(SmoothingSpline, TheLimitsOfStoredValuesSaturate) {
    Points points;
    for (int i = 0; i < 80; ++i) points.emplace_back(i, i < 40 ? kMin : kMax);
    for (const double tScale : {1e-200, 1e-3, 1.0, 1e200}) {
        for (const double waveLength : {1.0, 40.0, 1e5}) {
            Points copy = points;
            ASSERT_EQ(Smooth(copy, waveLength, tScale, 1e-3), 1);
        }
    }
    // The curve overshoots on both sides of a step; nothing wraps around.
    ASSERT_EQ(Smooth(points, 20, 1, 1), 1);
    EXPECT_GT(std::count_if(points.begin(), points.end(), [](CPoint p) { return p.y == kMin; }), 5);
    EXPECT_GT(std::count_if(points.begin(), points.end(), [](CPoint p) { return p.y == kMax; }), 5);
    EXPECT_TRUE(std::is_sorted(points.begin() + 35, points.begin() + 45,
                               [](CPoint p, CPoint q) { return p.y < q.y; }));
}

TEST(SmoothPoints, DeletedPointsTakeNoPart) {
    Points points = UnevenPoints(50, 17);
    Words status(50, PS_MOVED);
    Points usable;
    for (std::size_t i = 0; i < 50; ++i) {
        if (i % 7 == 0) status[i] |= PS_DELETED;
        if (i % 7 != 0) usable.push_back(points[i]);
    }
    const Points before = points;
    ASSERT_EQ(Smooth(points, 120, 1, 10, &status), 1);
    ASSERT_EQ(Smooth(usable, 120, 1, 10), 1);
    std::size_t k = 0;
    for (std::size_t i = 0; i < 50; ++i) {
        EXPECT_EQ(points[i], i % 7 == 0 ? before[i] : usable[k++]) << i;
        EXPECT_EQ(status[i], i % 7 == 0 ? PS_MOVED | PS_DELETED : PS_MOVED | kSmoothed) << i;
    }
}

TEST(SmoothPoints, WritesTheCoveredPointsWhateverTheIndicesLookLike) {
    const std::vector<long> indices = {9, 4, 4, -1, 20, 1L << 40, 0, 19, -(1L << 40)};
    const auto listed = [](int i) { return i == 0 || i == 4 || i == 9 || i == 19; };
    for (const bool withStatus : {true, false}) {
        for (const int mode : {0, 1, 2, -1}) {
            SCOPED_TRACE(mode);
            const Points before = UnevenPoints(20, 19);
            Points all = before, points = before;
            Words status(20), none(20);
            status[4] = none[4] = withStatus ? PS_DELETED : 0;
            std::vector<int> rejection(20, 1);
            ASSERT_EQ(Smooth(all, 300, 1, 1, &none), 1);
            ASSERT_EQ(SmoothPoints(points.data(), nullptr, 20, indices.data(), 9, 300, mode, 1, 1,
                                   withStatus ? status.data() : nullptr, rejection.data(), REJECT_MOVED),
                      1);
            for (int k = 0; k < 20; ++k) {
                const auto i = static_cast<std::size_t>(k);
                const bool covered = (mode == 1 && listed(k)) || (mode == 0 && !listed(k));
                const bool marked = covered && withStatus && k != 4;
                EXPECT_EQ(points[i], covered ? all[i] : before[i]) << k;
                EXPECT_EQ(rejection[i], marked ? 1 | REJECT_MOVED : 1) << k;
                EXPECT_EQ(status[i], marked ? kSmoothed : withStatus && k == 4 ? PS_DELETED : 0) << k;
            }
        }
    }
}

TEST(SmoothPoints, WithAThirdCoordinateBothOthersAreFitted) {
    for (const int n : {4, 5, 30, 61}) {
        Points points = UnevenPoints(n, 23);
        std::vector<int> z;
        std::vector<double> t, x, y;
        for (const CPoint& p : points) {
            const int i = static_cast<int>(z.size());
            z.push_back(i * i);
            t.push_back(i * i / 4.0);
            x.push_back(p.x / 10.0);
            y.push_back(p.y / 10.0);
        }
        ASSERT_EQ(SmoothPoints(points.data(), z.data(), n, nullptr, n, 40, 1, 4, 10, nullptr, nullptr, 0), 1);
        const std::vector<double> fitX = DenseFit(t, x, 40, 0.001), fitY = DenseFit(t, y, 40, 0.001);
        for (std::size_t i = 0; i < points.size(); ++i) {
            EXPECT_NEAR(points[i].x, fitX[i] * 10, 0.5001) << i << " of " << n;
            EXPECT_NEAR(points[i].y, fitY[i] * 10, 0.5001) << i << " of " << n;
        }
    }
}

TEST(SmoothPoints, RefusalsChangeNothing) {
    const struct {
        const char* why;
        double waveLength, tScale, yScale;
    } cases[] = {{"negative wave length", -1, 1, 1},
                 {"undefined wave length", kNaN, 1, 1},
                 {"negative time scale and endless wave length", kInfinity, -1, 1},
                 {"time scale zero", 10, 0, 1},
                 {"time scale negative", 10, -1, 1},
                 {"time scale undefined", 10, kNaN, 1},
                 {"time scale infinite", 10, kInfinity, 1},
                 {"value scale zero", 10, 1, 0},
                 {"value scale undefined", 10, 1, kNaN},
                 {"value scale infinite", 10, 1, kInfinity},
                 {"value scale tiny", 10, 1, 1e-310}};
    const Points before = UnevenPoints(10, 29);
    Points points = before;
    for (const auto& one : cases) {
        Words status(10);
        EXPECT_EQ(Smooth(points, one.waveLength, one.tScale, one.yScale, &status), 0) << one.why;
        EXPECT_EQ(points, before) << one.why;
        EXPECT_EQ(status, Words(10)) << one.why;
    }
    EXPECT_EQ(SmoothPoints(nullptr, nullptr, 10, nullptr, 10, 5, 1, 1, 1, nullptr, nullptr, 0), 0);
    EXPECT_EQ(SmoothPoints(points.data(), nullptr, 3, nullptr, 3, 5, 1, 1, 1, nullptr, nullptr, 0), 0);
    EXPECT_EQ(SmoothPoints(points.data(), nullptr, 10, nullptr, 0, 5, 1, 1, 1, nullptr, nullptr, 0), 0);
    EXPECT_EQ(SmoothPoints(points.data(), nullptr, -4, nullptr, 9, 5, 1, 1, 1, nullptr, nullptr, 0), 0);
    Words threeLeft(10, PS_DELETED);
    threeLeft[2] = threeLeft[5] = threeLeft[6] = 0;
    EXPECT_EQ(Smooth(points, 5, 1, 1, &threeLeft), 0);
    EXPECT_EQ(points, before);
}

}  // namespace
