#include "app/batch/Findings.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace app {

namespace {

// What is far, as a multiple of what is in the middle.
constexpr double kFarTimes = 18;
constexpr double kStepTimes = 6;
constexpr std::int64_t kLeastFlat = 24;  // values
constexpr std::size_t kMostSteps = 3;
constexpr std::size_t kStepWindow = 24;  // samples
constexpr std::int64_t kMostSamples = 100000;

bool IsSentinel(const Findings& findings, double value) {
    return std::any_of(findings.sentinels.begin(), findings.sentinels.end(),
                       [&](const auto& sentinel) { return sentinel.value == value; });
}

// visit(row, value) for the values that are there and stand for themselves.
template <class Visit>
void ForEachValue(const ValueColumn& column, const Findings& findings, Visit visit) {
    const auto rows = static_cast<std::int64_t>(column.values.size());
    for (std::int64_t row = 0; row < rows; ++row) {
        const double value = column.values[static_cast<std::size_t>(row)];
        if (HasValue(value) && !IsSentinel(findings, value)) visit(row, value);
    }
}

// One end of the values: the outermost one, how often it occurs, and the next one.
struct End {
    double value = 0;
    double next = 0;
    std::int64_t count = 0;
};

// Keeps the end up to date; `outer` compares so that the outermost value comes first.
template <class Outer>
void TakeIntoEnd(End& end, double value, Outer outer) {
    const bool nextIsKnown = end.next != end.value;
    if (nextIsKnown && outer(end.next, value)) return;
    if (end.count == 0) {
        end = {value, value, 1};
    } else if (value == end.value) {
        ++end.count;
    } else if (outer(value, end.value)) {
        end = {value, end.value, 1};
    } else if (!nextIsKnown || outer(value, end.next)) {
        end.next = value;
    }
}

struct Extremes {
    End least;
    End most;
};

Extremes FindExtremes(const ValueColumn& column, const Findings& findings) {
    Extremes found;
    const auto below = [](double a, double b) { return a < b; };
    const auto above = [](double a, double b) { return a > b; };
    ForEachValue(column, findings, [&](std::int64_t, double value) {
        TakeIntoEnd(found.least, value, below);
        TakeIntoEnd(found.most, value, above);
    });
    return found;
}

// Nines alone as in -9999, -999.9 or 99.99, the ends of 16 bits, numbers beyond all measurements.
bool LooksLikeSentinel(double value) {
    const double size = std::fabs(value);
    if (size >= 1e19 || size == 32768 || size == 32767) return true;
    std::string digits = ShortNumber(size);
    if (digits.size() > 3 && digits.ends_with(".0")) digits.resize(digits.size() - 2);
    std::erase(digits, '.');
    return digits.size() >= 2 && digits.find_first_not_of('9') == std::string::npos;
}

void FindSentinels(const ValueColumn& column, Findings& findings) {
    while (findings.sentinels.size() < 4) {
        const auto [least, most] = FindExtremes(column, findings);
        if (least.count == 0 || least.value == most.value) return;
        // The others lie closer together than any of them to the sentinel.
        const bool isLow =
            LooksLikeSentinel(least.value) && least.next - least.value > most.value - least.next;
        const bool isHigh = LooksLikeSentinel(most.value) && most.value - most.next > most.next - least.value;
        if (!isLow && !isHigh) return;
        const End& end = isLow ? least : most;
        findings.sentinels.push_back({end.value, end.count});
    }
}

double MiddleOf(std::vector<double>& values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Rounded up to two digits, for people.
double TwoDigits(double value) {
    if (value <= 0) return 0;
    const double unit = std::pow(10, std::floor(std::log10(value)) - 1);
    const double digits = std::ceil(value / unit);
    return unit < 1 ? digits / std::round(1 / unit) : digits * unit;
}

// Where most values are as the one before, a stretch without change is nothing special.
void FindFlat(const ValueColumn& column, Findings& findings) {
    Findings::Flat run{};
    Findings::Flat longest{};
    std::int64_t runs = 0;
    std::int64_t values = 0;
    ForEachValue(column, findings, [&](std::int64_t row, double value) {
        if (values++ == 0 || value != run.value) {
            if (run.values > longest.values) longest = run;
            run = {row, row, 0, value};
            ++runs;
        }
        ++run.values;
        run.lastRow = row;
    });
    if (run.values > longest.values) longest = run;
    if (longest.values >= kLeastFlat && runs > values / 2) findings.longestFlat = longest;
}

// How far a value stands out from both the one before and the one behind; 0 where it lies between them.
double Prominence(double before, double value, double behind) {
    const double up = value - before;
    const double down = value - behind;
    return (up > 0) == (down > 0) ? std::min(std::fabs(up), std::fabs(down)) : 0;
}

template <class Visit>
void ForEachProminence(const ValueColumn& column, const Findings& findings, Visit visit) {
    double before = 0;
    double last = 0;
    std::int64_t seen = 0;
    ForEachValue(column, findings, [&](std::int64_t, double value) {
        if (++seen >= 3) visit(Prominence(before, last, value));
        before = last;
        last = value;
    });
}

// About `most` places of a column, spread evenly.
template <class Visit>
void ForSomeRows(std::int64_t rows, std::int64_t most, Visit visit) {
    const std::int64_t step = std::max<std::int64_t>(1, rows / most);
    for (std::int64_t row = 0; row < rows; row += step) visit(row);
}

void FindSpikes(const ValueColumn& column, Findings& findings) {
    std::vector<double> usual;
    const auto rows = static_cast<std::int64_t>(column.values.size());
    const auto at = [&](std::int64_t row) { return column.values[static_cast<std::size_t>(row)]; };
    ForSomeRows(rows - 2, kMostSamples, [&](std::int64_t row) {
        const double distance = std::fabs(at(row + 1) - (at(row) + at(row + 2)) / 2);
        if (HasValue(distance)) usual.push_back(distance);
    });
    const double limit = TwoDigits(kFarTimes * MiddleOf(usual));
    if (limit <= 0) return;
    std::int64_t far = 0;
    std::int64_t all = 0;
    ForEachProminence(column, findings, [&](double prominence) {
        ++all;
        far += prominence > limit;
    });
    if (far == 0 || far > all / 50) return;  // what is so frequent is how the values are
    findings.spikes = far;
    findings.spikeDistance = limit;
}

struct Sample {
    std::int64_t row;
    double value;
};

std::vector<Sample> SomeValues(const ValueColumn& column, const Findings& findings) {
    std::vector<Sample> samples;
    ForSomeRows(static_cast<std::int64_t>(column.values.size()), kMostSamples, [&](std::int64_t row) {
        const double value = column.values[static_cast<std::size_t>(row)];
        if (HasValue(value) && !IsSentinel(findings, value)) samples.push_back({row, value});
    });
    return samples;
}

// A step is where the means of the windows on both sides differ far more than they usually do, most of it
// between two values.
void FindSteps(const ValueColumn& column, Findings& findings) {
    const std::vector<Sample> samples = SomeValues(column, findings);
    if (samples.size() < 4 * kStepWindow) return;
    std::vector<double> sums(samples.size() + 1);
    for (std::size_t i = 0; i < samples.size(); ++i) sums[i + 1] = sums[i] + samples[i].value;
    const auto mean = [&](std::size_t from, std::size_t to) {
        return (sums[to] - sums[from]) / double(to - from);
    };
    const auto difference = [&](std::size_t i) {
        return mean(i, i + kStepWindow) - mean(i - kStepWindow, i);
    };
    const auto jump = [&](std::size_t i) { return mean(i, i + 3) - mean(i - 3, i); };
    std::vector<double> usual;
    for (std::size_t i = kStepWindow; i + kStepWindow <= samples.size(); ++i)
        usual.push_back(std::fabs(difference(i)));
    const double limit = kStepTimes * MiddleOf(usual);
    if (limit <= 0) return;
    for (std::size_t i = kStepWindow; i + kStepWindow <= samples.size(); ++i) {
        const double size = difference(i);
        if (std::fabs(size) <= limit || jump(i) / size < 0.7) continue;
        const std::size_t behind = std::min(i + kStepWindow, samples.size() - kStepWindow);
        std::size_t peak = i;
        for (std::size_t k = i; k <= behind; ++k)
            if (std::fabs(difference(k)) > std::fabs(difference(peak))) peak = k;
        findings.steps.push_back({samples[peak].row, difference(peak)});
        i = peak + kStepWindow;
    }
    std::sort(findings.steps.begin(), findings.steps.end(),
              [](const auto& a, const auto& b) { return std::fabs(a.size) > std::fabs(b.size); });
    if (findings.steps.size() > kMostSteps) findings.steps.resize(kMostSteps);
}

}  // namespace

Findings FindFaults(const ValueColumn& column) {
    Findings findings;
    FindSentinels(column, findings);
    FindFlat(column, findings);
    FindSpikes(column, findings);
    FindSteps(column, findings);
    return findings;
}

}  // namespace app
