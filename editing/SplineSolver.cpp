// The solver of the smoothing spline, in O(n).
//
// The usual band matrix of the second derivatives (C. H. Reinsch, "Smoothing by spline functions", 1967)
// has a condition number that grows with the fourth power of the wave length in points: from a few thousand
// points on, its fits lose all their digits. The same minimiser is the expected path of an integrated random
// walk observed with noise (G. Wahba, "Improper priors, spline smoothing and the problem of guarding against
// model errors in regression", 1978; W. E. Wecker and C. F. Ansley, "The signal extraction approach to
// nonlinear regression and spline smoothing", 1983). It comes from a filter with the state (level, slope) and
// a backward pass over the residuals (S. J. Koopman, "Disturbance smoother for state space models", 1993).
// Different here:
// - The covariance is carried with its determinant, which makes every quantity a sum and product of
//   non-negative numbers: no cancellation at any stiffness or spacing.
// - Two filters start at both ends, one in each lane of a vector register, and meet in the middle; the
//   right one sees time reversed.
// - Noise variances are w = lambda / (lambda + 1) per observation and v = 1 / (lambda + 1) per unit of time,
//   so that lambda may be anything from zero (f = y) to infinity (the least-squares line).
#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "editing/SmoothingSpline.h"

namespace {

using Pair = double __attribute__((vector_size(16)));  // lane 0 walks from the left, lane 1 from the right

constexpr double kTwoPi = 6.283185307179586;
constexpr double kExtremeStep = 1e50;  // steps are held within [1 / this, this] mean steps

// Where a is not a number the answer is b.
double Larger(double a, double b) { return a > b ? a : b; }
double Smaller(double a, double b) { return a < b ? a : b; }
#ifdef __SSE2__
Pair Larger(Pair a, Pair b) { return _mm_max_pd(a, b); }
Pair Smaller(Pair a, Pair b) { return _mm_min_pd(a, b); }
#else
Pair Larger(Pair a, Pair b) { return a > b ? a : b; }
Pair Smaller(Pair a, Pair b) { return a < b ? a : b; }
#endif

// Time is counted in mean spacings, which keeps all magnitudes near one.
struct Problem {
    const double* t;
    int n;
    double minimumSpacing;
    double perUnit;      // mean spacings per t
    double process;      // v
    double observation;  // w

    // The distance between two abscissas, in mean spacings; not-a-number counts as the smallest spacing.
    template <class V>
    V Step(V a, V b) const {
        const V distance = Larger(b - a, a - b);
        const V steps = Larger(distance, V{} + minimumSpacing) * perUnit;
        return Smaller(Larger(steps, V{} + 1 / kExtremeStep), V{} + kExtremeStep);
    }
    double Step(int i) const { return Step(t[i], t[i + 1]); }
};

// The covariance of (level, slope) after an observation. Looking back along the walk, level and slope are
// never negatively correlated, so all four are non-negative.
template <class V>
struct Covariance {
    V level, both, slope, determinant;
};

template <class V>
struct Gains {
    V level, slope;
    V residual;  // what part of an innovation is left as a residual
};

template <class V>
void Predict(Covariance<V>& c, V h, const Problem& p) {
    const V vh = p.process * h;
    const V h2 = h * h;
    const V vh2 = vh * h;
    c.determinant = (c.determinant + vh2 * vh2 * (1.0 / 12)) +
                    (vh * c.level + (vh2 * c.both + (vh2 * h * (1.0 / 3)) * c.slope));
    c.level = (c.level + vh2 * h * (1.0 / 3)) + ((h + h) * c.both + h2 * c.slope);
    c.both = (c.both + vh2 * 0.5) + h * c.slope;
    c.slope = c.slope + vh;
}

template <class V>
Gains<V> Observe(Covariance<V>& c, const Problem& p) {
    const V inverse = 1.0 / (c.level + p.observation);
    const V left = p.observation * inverse;
    const Gains<V> gains{c.level * inverse, c.both * inverse, left};
    c.slope = (c.slope * p.observation + c.determinant) * inverse;
    c.level = (c.level * p.observation) * inverse;
    c.both = (c.both * p.observation) * inverse;
    c.determinant = c.determinant * left;
    return gains;
}

// The estimate of one channel (coordinate) of the values.
template <class V>
struct Estimate {
    V level, slope;

    // Takes up one value a step h further on; gives the residual seen so far.
    V Take(V value, V h, const Gains<V>& gains) {
        const V expected = level + h * slope;
        const V innovation = value - expected;
        level = expected + gains.level * innovation;
        slope = slope + gains.slope * innovation;
        return innovation * gains.residual;
    }
};

// The sum and the first moment about the present abscissa of the residuals further towards the middle.
template <class V>
struct Tail {
    V sum, moment;

    V Residual(V seen, V levelGain, V slopeGain) const {
        return (seen - slopeGain * moment) - levelGain * sum;
    }
    void Add(V residual, V stepOutwards) {
        sum = sum + residual;
        moment = moment + stepOutwards * sum;
    }
};

// C channels (1 or 2) over the same abscissas.
template <int C>
class Fit {
  public:
    Fit(const Problem& problem, std::array<const double*, C> y, std::array<double*, C> f, double* store)
        : p_(problem), y_(y), f_(f), store_(store), n_(problem.n), extra_(problem.n % 2) {}

    void Run() {
        Start();
        if (extra_) StepExtra();
        Forward();
        Join();
        Backward();
        if (extra_) StepBackExtra();
        Finish();
    }

  private:
    static constexpr int kStored = 2 + C;  // gains, and the residual seen of each channel

    int LastStep() const { return n_ / 2 - 1; }  // of both lanes together, counted from 2 (0 and 1 start)
    int Left(int step) const { return step + extra_; }
    int Right(int step) const { return n_ - 1 - step; }
    Pair At(const double* a, int step) const { return Pair{a[Left(step)], a[Right(step)]}; }
    // The entries of a step: two per stored quantity. Steps 0 and 1 store nothing; their room at the front
    // serves the extra step of the left lane.
    double* Entry(int step) const { return store_ + std::ptrdiff_t{2 * kStored} * step; }

    // The first two points of each end: a line through them, and what the noise makes of it.
    void Start() {
        const Pair h{p_.Step(0), p_.Step(n_ - 2)};
        const double w = p_.observation;
        const double v = p_.process;
        c_ = {Pair{} + w, w / h, (2 * w / h) / h + v * h / 3, (w / h) * (w / h) + w * v * h / 3};
        for (int k = 0; k < C; ++k) {
            const Pair first{y_[k][0], y_[k][n_ - 1]};
            const Pair second{y_[k][1], y_[k][n_ - 2]};
            estimate_[k] = {second, (second - first) / h};
        }
    }

    // With an odd number of points the left lane takes one more.
    void StepExtra() {
        Covariance<double> c{c_.level[0], c_.both[0], c_.slope[0], c_.determinant[0]};
        const double h = p_.Step(1);
        Predict(c, h, p_);
        const Gains<double> gains = Observe(c, p_);
        store_[0] = gains.level;
        store_[1] = gains.slope;
        for (int k = 0; k < C; ++k) {
            Estimate<double> e{estimate_[k].level[0], estimate_[k].slope[0]};
            store_[2 + k] = e.Take(y_[k][2], h, gains);
            estimate_[k].level[0] = e.level;
            estimate_[k].slope[0] = e.slope;
        }
        c_.level[0] = c.level;
        c_.both[0] = c.both;
        c_.slope[0] = c.slope;
        c_.determinant[0] = c.determinant;
    }

    void Forward() {
        Covariance<Pair> c = c_;
        std::array<Estimate<Pair>, C> estimate = estimate_;
        Pair previous = At(p_.t, 1);
        for (int step = 2; step <= LastStep(); ++step) {
            const Pair t = At(p_.t, step);
            const Pair h = p_.Step(previous, t);
            previous = t;
            Predict(c, h, p_);
            const Gains<Pair> gains = Observe(c, p_);
            double* entry = Entry(step);
            std::memcpy(entry, &gains, 2 * sizeof(Pair));
            for (int k = 0; k < C; ++k) {
                const Pair seen = estimate[k].Take(At(y_[k], step), h, gains);
                std::memcpy(entry + 4 + 2 * k, &seen, sizeof seen);
            }
        }
        c_ = c;
        estimate_ = estimate;
    }

    // Where the lanes meet, the left state carried over to the right one differs from it by d; the residuals
    // of either side weigh w * inverse(sum of covariances) * d.
    void Join() {
        const int right = Right(LastStep());
        const double h = p_.Step(right - 1);
        Covariance<double> a{c_.level[0], c_.both[0], c_.slope[0], c_.determinant[0]};
        Predict(a, h, p_);
        const double level = a.level + c_.level[1];
        const double both = a.both - c_.both[1];
        const double slope = a.slope + c_.slope[1];
        const double determinant = (a.determinant + c_.determinant[1]) +
                                   (a.level * c_.slope[1] + a.slope * c_.level[1] + 2 * a.both * c_.both[1]);
        const double scale = p_.observation / determinant;
        for (int k = 0; k < C; ++k) {
            const Estimate<Pair>& e = estimate_[k];
            const double dLevel = e.level[1] - (e.level[0] + h * e.slope[0]);
            const double dSlope = -e.slope[1] - e.slope[0];
            const double sum = (slope * dLevel - both * dSlope) * scale;
            const double moment = (level * dSlope - both * dLevel) * scale;
            tail_[k] = {Pair{sum, -sum}, Pair{moment + h * sum, moment}};
        }
    }

    void Backward() {
        std::array<Tail<Pair>, C> tail = tail_;
        Pair t = At(p_.t, LastStep());
        for (int step = LastStep(); step >= 2; --step) {
            const Pair next = At(p_.t, step - 1);
            const Pair h = p_.Step(next, t);
            t = next;
            const double* entry = Entry(step);
            Pair stored[kStored];
            std::memcpy(stored, entry, sizeof stored);
            for (int k = 0; k < C; ++k) {
                const Pair residual = tail[k].Residual(stored[2 + k], stored[0], stored[1]);
                tail[k].Add(residual, h);
                const Pair fitted = At(y_[k], step) - residual;
                f_[k][Left(step)] = fitted[0];
                f_[k][Right(step)] = fitted[1];
            }
        }
        tail_ = tail;
    }

    void StepBackExtra() {
        const double h = p_.Step(1);
        for (int k = 0; k < C; ++k) {
            Tail<double> tail{tail_[k].sum[0], tail_[k].moment[0]};
            const double residual = tail.Residual(store_[2 + k], store_[0], store_[1]);
            tail.Add(residual, h);
            f_[k][2] = y_[k][2] - residual;
            tail_[k].sum[0] = tail.sum;
            tail_[k].moment[0] = tail.moment;
        }
    }

    // Residuals of a smoothing spline are orthogonal to every line: their sum and their moment vanish, which
    // gives those of the two points at each end.
    void Finish() {
        const Pair h{p_.Step(0), p_.Step(n_ - 2)};
        for (int k = 0; k < C; ++k) {
            const Pair end = tail_[k].moment / h;
            const Pair second = -tail_[k].sum - end;
            f_[k][0] = y_[k][0] - end[0];
            f_[k][1] = y_[k][1] - second[0];
            f_[k][n_ - 2] = y_[k][n_ - 2] - second[1];
            f_[k][n_ - 1] = y_[k][n_ - 1] - end[1];
        }
    }

    Problem p_;
    std::array<const double*, C> y_;
    std::array<double*, C> f_;
    double* store_;
    int n_;
    int extra_;
    Covariance<Pair> c_;
    std::array<Estimate<Pair>, C> estimate_;
    std::array<Tail<Pair>, C> tail_;
};

Problem PoseProblem(const SplineWork& work, int n) {
    const double* t = work.abscissa;
    const double least = work.minimumSpacing;
    double span = std::fabs(t[n - 1] - t[0]);
    if (!(span > 0 && std::isfinite(span))) span = least * (n - 1);
    const double unit = std::max(span / (n - 1), least);
    // n / span may be infinite.
    const double fourth = std::pow(work.waveLength / kTwoPi, 4);
    const double stiffness = fourth > 0 ? fourth * (n / span) : 0.0;
    const double lambda = stiffness / unit / unit / unit;
    const double v = 1 / (lambda + 1);
    return {t, n, least, 1 / unit, v, std::isfinite(lambda) ? lambda * v : 1.0};
}

// Three points have one second derivative; its equation is solved as it stands.
void FitThree(const Problem& p, const double* y, double* f) {
    const double a = 1 / p.Step(0);
    const double b = 1 / p.Step(1);
    const double q[3] = {a, -(a + b), b};
    const double curvature = q[0] * (y[0] - y[1]) + q[2] * (y[2] - y[1]);
    const double diagonal =
        p.observation * (q[0] * q[0] + q[1] * q[1] + q[2] * q[2]) + p.process * (p.Step(0) + p.Step(1)) / 3;
    for (int i = 0; i < 3; ++i) f[i] = y[i] - p.observation * q[i] * (curvature / diagonal);
}

template <int C>
void Solve(SplineWork& work, std::array<const double*, C> y, std::array<double*, C> f) {
    const int n = std::min(work.used, work.capacity);
    if (n < 1 || work.solver == nullptr || y[C - 1] == nullptr || f[C - 1] == nullptr) return;
    const Problem problem = n < 3 ? Problem{} : PoseProblem(work, n);
    // Below this the fit does not differ from the values in any digit.
    constexpr double kNoStiffness = 1e-250;
    if (!(problem.observation > kNoStiffness)) {
        for (int k = 0; k < C; ++k) std::copy(y[k], y[k] + n, f[k]);
    } else if (n == 3) {
        for (int k = 0; k < C; ++k) FitThree(problem, y[k], f[k]);
    } else {
        Fit<C>(problem, y, f, work.solver).Run();
    }
}

}  // namespace

void SolveSmoothingSpline(SplineWork& work) { Solve<1>(work, {work.values}, {work.fitted}); }

void SolveSmoothingSpline2(SplineWork& work) {
    Solve<2>(work, {work.values, work.values2}, {work.fitted, work.fitted2});
}
