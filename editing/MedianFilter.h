// Median-filter spike detection: a sample is an outlier when it lies farther than a distance from the median
// of a window of its neighbours.
#pragma once

// For every i the window is samples[i - half] ... samples[i + half], clipped at both ends of the series;
// medians[i] becomes its WindowMedian and flags[i] becomes 1 when samples[i] lies farther than `distance`
// (stored units, strictly) from it, else 0. A negative half counts as 0, a negative distance flags every
// sample; no sum overflows. `medians` and `flags` have room for n values and overlap nothing; without samples
// nothing is written.
//
// The time per sample grows with the logarithm of the window at most, whatever the data. Work memory is about
// 28 bytes for each sample of three windows; without it the result is the same, in time proportional to the
// window for each sample.
void MedianFilterSpikeTest(const int* samples, unsigned char* flags, int* medians, int n, int half,
                           int distance);

// The first sample, in window order, that has at least n / 2 samples (itself included) at or below it and at
// least n / 2 at or above it. With an odd n that need not be the true median: of 5, 1, 3 it is 5. 0 without
// samples. Uses no memory.
int WindowMedian(const int* samples, int n);
