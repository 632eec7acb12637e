// Where the ticks of an axis stand. Numbers only; the graph view paints them.
#pragma once

#include <functional>
#include <vector>

// A round number near the visible range: 1, 5 or 10 times a power of ten. 0 for a range that is not positive
// and finite.
double StartSpacing(double visibleRange);

// The distance of neighbouring ticks, in user units: refined from StartSpacing by alternating divisions by 2
// and 5 for as long as neighbours stay at least `minimumLength` logical units apart. `logicalLength` gives
// the logical length of a distance in user units. 0 when there is none; the axis then has no ticks.
double TickSpacing(double visibleRange, double minimumLength,
                   const std::function<double(double)>& logicalLength);

// How the tick before the first visible one is found from from / spacing.
enum class FirstTick { Truncated, Rounded };

// The ticks from `from` to `to`, a hundredth of the spacing beyond either end included. Values that are 0 but
// for accumulated rounding are exactly 0. Never more than kMostTicks.
std::vector<double> TickValues(double from, double to, double spacing, FirstTick rule);

constexpr int kMostTicks = 10000;
