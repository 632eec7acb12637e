#include "app/table/AxisScale.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "app/table/CellNumber.h"
#include "app/table/Table.h"
#include "tavin/tavin.h"

namespace app {

namespace {

// Powers of ten up to this one are exact doubles, so that m / 10^k is the double nearest to the decimal m
// e-k.
constexpr int kMostDecimals = 22;
constexpr int kLeastDecimals = -308;
constexpr double kHalfRange = 1073741824.0;          // half of what 32 bits hold on either side of zero
constexpr double kFullRange = 2147483646.0;          // of stored values that start at zero
constexpr double kExactCounts = 9007199254740992.0;  // 2^53: counts beyond are not all doubles

double PowerOfTen(int exponent) {
    return exponent <= kMostDecimals ? ExactPowerOfTen(exponent) : std::pow(10.0, exponent);
}

double AwayFromZero(double value) {
    // The way of most values, through integers, needs no call.
    if (std::fabs(value) < kExactCounts / 4)
        return double(static_cast<std::int64_t>(value > 0 ? value + 0.5 : value - 0.5));
    return value > 0 ? std::floor(value + 0.5) : std::ceil(value - 0.5);
}

double Scaled(double value, int decimals) {
    return decimals >= 0 ? value * PowerOfTen(decimals) : value / PowerOfTen(-decimals);
}

constexpr int kTimeDecimalsLeast = -9;  // counts of 10^9 s: enough for all years

// Scales of values have fewer decimals than that and no use for the result.
Microseconds MicrosecondsPerCount(int decimals) {
    Microseconds unit = 1;
    for (int d = std::max(decimals, kTimeDecimalsLeast); d < 6; ++d) unit *= 10;
    return unit;
}

}  // namespace

AxisScale::AxisScale(int decimals, std::int64_t origin, Microseconds timeOrigin)
    : decimals_(decimals),
      power_(PowerOfTen(std::abs(decimals))),
      origin_(origin),
      timeOrigin_(timeOrigin),
      unit_(MicrosecondsPerCount(decimals)) {}

double AxisScale::Scale() const { return decimals_ >= 0 ? power_ : 1 / power_; }

double AxisScale::Counts(double real) const {
    return AwayFromZero(decimals_ >= 0 ? real * power_ : real / power_);
}

std::int32_t AxisScale::Stored(double real) const { return RoundHalfAway(Counts(real) - double(origin_)); }

double AxisScale::Real(std::int32_t stored) const {
    const auto counts = double(origin_ + stored);
    return decimals_ >= 0 ? counts / power_ : counts * power_;
}

std::int32_t AxisScale::StoredTime(Microseconds time) const {
    const Microseconds shifted = time - timeOrigin_;
    const Microseconds half = shifted > 0 ? unit_ / 2 : -(unit_ / 2);
    return SaturateToInt32((shifted + half) / unit_);
}

Microseconds AxisScale::RealTime(std::int32_t stored) const { return timeOrigin_ + stored * unit_; }

AxisScale ScaleForValues(const Values& values, int writtenDecimals, bool zeroOrigin) {
    const auto extent = values.FindExtent();
    return ScaleForRange(extent.least, extent.most, writtenDecimals, zeroOrigin);
}

AxisScale ScaleForRange(double least, double most, int writtenDecimals, bool zeroOrigin) {
    const double largest = std::max(std::fabs(least), std::fabs(most));
    // Half of each first, so that the span of the widest doubles stays finite.
    const double middle = least / 2 + most / 2;
    const double halfSpan = most / 2 - least / 2;
    const auto fits = [](double counts) { return counts <= kHalfRange; };
    for (int decimals = std::min(writtenDecimals, kMostDecimals); decimals > kLeastDecimals; --decimals) {
        if (fits(Scaled(largest, decimals))) return {decimals, 0};
        const bool exact = Scaled(largest, decimals) < kExactCounts;
        if (zeroOrigin || !exact || !fits(Scaled(halfSpan, decimals))) continue;
        return {decimals, static_cast<std::int64_t>(AwayFromZero(Scaled(middle, decimals)))};
    }
    return {kLeastDecimals, 0};
}

std::optional<std::int64_t> ExactFactor(const AxisScale& scale, const Values& values) {
    if (!values.AreCounts() || scale.Decimals() < values.Decimals()) return std::nullopt;
    const double factor = Scaled(1, scale.Decimals() - values.Decimals());
    const auto extent = values.FindExtent();
    constexpr double kExact = kExactCounts / 8;  // so far the conversion through doubles rounds to the same
    for (const double edge : {extent.least, extent.most}) {
        const double counts = Scaled(edge, scale.Decimals());
        const double stored = counts - double(scale.Origin());
        if (std::fabs(counts) > kExact || std::fabs(stored) > kFullRange) return std::nullopt;
    }
    return static_cast<std::int64_t>(factor);
}

AxisScale ScaleForTimes(const std::vector<Microseconds>& times) {
    if (times.empty()) return {};
    const auto [least, most] = std::minmax_element(times.begin(), times.end());
    // The coarsest unit up to a second in which every distance from the first time is whole.
    int decimals = 0;
    for (const Microseconds time : times) {
        if ((time - *least) % kSecond == 0) continue;
        while (decimals < 6 && (time - *least) % MicrosecondsPerCount(decimals) != 0) ++decimals;
    }
    const auto span = double(*most - *least);
    while (decimals > kTimeDecimalsLeast && span / double(MicrosecondsPerCount(decimals)) > kFullRange)
        --decimals;
    return {decimals, 0, *least};
}

Exactness Examine(const AxisScale& scale, const Values& values) {
    Exactness exactness;
    if (ExactFactor(scale, values)) return {values.FindExtent().count, 0, 0};
    for (const double value : values) {
        if (!HasValue(value)) continue;
        ++exactness.values;
        const double back = scale.Real(scale.Stored(value));
        if (back == value) continue;
        ++exactness.inexact;
        exactness.largestError = std::max(exactness.largestError, std::fabs(back - value));
    }
    return exactness;
}

Exactness Examine(const AxisScale& scale, const std::vector<Microseconds>& times) {
    Exactness exactness;
    for (const Microseconds time : times) {
        ++exactness.values;
        const Microseconds error = std::abs(scale.RealTime(scale.StoredTime(time)) - time);
        if (error == 0) continue;
        ++exactness.inexact;
        exactness.largestError = std::max(exactness.largestError, double(error) / kSecond);
    }
    return exactness;
}

std::string ExactnessText(const Exactness& exactness, const AxisScale& scale, const std::string& unit) {
    if (exactness.inexact == 0) return "exact";
    const std::string place =
        scale.Decimals() >= 0
            ? Counted(scale.Decimals(), "decimal")
            : "steps of " + ShortNumber(PowerOfTen(-scale.Decimals())) + (unit.empty() ? "" : " " + unit);
    char error[32];
    std::snprintf(error, sizeof error, "%.2g", exactness.largestError);
    return Grouped(exactness.inexact) + " of " + Counted(exactness.values, "value") + " rounded to " + place +
           ", by " + error + (unit.empty() ? "" : " " + unit) + " at most";
}

}  // namespace app
