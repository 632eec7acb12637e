#include "views/AxisTicks.h"

#include <algorithm>
#include <cmath>

#include "platform/core/Rounding.h"

namespace {

// Divides by `divisor`, then by 7 - divisor, and so on, while the neighbours stay far enough apart.
double Refine(double spacing, int divisor, double minimumLength,
              const std::function<double(double)>& logicalLength) {
    while (spacing > 0.0) {
        const double finer = spacing / divisor;
        if (!(logicalLength(finer) >= minimumLength)) break;
        spacing = finer;
        divisor = 7 - divisor;
    }
    return spacing;
}

double RoundedHalfAway(double value) { return std::trunc(value > 0 ? value + 0.5 : value - 0.5); }

}  // namespace

double StartSpacing(double visibleRange) {
    if (!(visibleRange > 0.0) || !std::isfinite(visibleRange)) return 0.0;
    const double exponent = std::trunc(std::log10(visibleRange));
    const double base = std::pow(10.0, visibleRange >= 1.0 ? exponent : exponent - 1.0);
    const int multiple = RoundHalfAway(visibleRange / base);
    static constexpr int kRound[] = {0, 1, 10, 5, 5, 5, 5, 5, 10, 10, 10};
    return (multiple >= 0 && multiple <= 10 ? kRound[multiple] : multiple) * base;
}

double TickSpacing(double visibleRange, double minimumLength,
                   const std::function<double(double)>& logicalLength) {
    const double start = StartSpacing(visibleRange);
    return std::min(Refine(start, 2, minimumLength, logicalLength),
                    Refine(start, 5, minimumLength, logicalLength));
}

std::vector<double> TickValues(double from, double to, double spacing, FirstTick rule) {
    std::vector<double> values;
    if (!(spacing > 0.0) || !std::isfinite(from) || !std::isfinite(to)) return values;
    const double tolerance = spacing / 100.0;
    const double steps = from / spacing;
    const double before =
        (rule == FirstTick::Truncated ? std::trunc(steps) : RoundedHalfAway(steps)) * spacing;
    // The tick before lies at most one spacing outside; a multiple of the spacing, not a running sum, reaches
    // the rest.
    for (int k = 0; k <= kMostTicks; ++k) {
        const double value = before + k * spacing;
        if (!(value < to + tolerance)) break;
        if (value < from - tolerance) continue;
        values.push_back(std::abs(value) < spacing / 2.0 ? 0.0 : value);
    }
    return values;
}
