// The two ways in which MedianFilterSpikeTest finds the medians of all windows, apart for the sake of tests.
//
// In a window of n samples, m = n / 2, a sample has m samples at or below it when it is not below the m-th
// smallest, and m at or above it when it is not above the m-th largest. The median asked for is therefore the
// first sample in window order that lies between these two, and as the two are at most two places apart in
// sorted order, it has one of at most three values.
#pragma once

// The widest half window that SmallWindowMedians takes.
constexpr int kLargestSmallHalf = 20;

// Fills medians[half] ... medians[n - half - 1], those of the windows that are not clipped. False, and
// nothing written, when half is not in 2 ... kLargestSmallHalf, when there are fewer than eight such windows,
// or when the processor lacks the vector instructions.
bool SmallWindowMedians(const int* samples, int* medians, int n, int half);

// Fills all n medians, for 2 <= half < n. False without work memory; what is in `medians` is then
// undetermined.
bool LargeWindowMedians(const int* samples, int* medians, int n, int half) noexcept;
