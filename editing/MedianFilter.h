// Median-filter spike detection.
#pragma once

// Fills medians[i] and flags[i] (1 = outlier).
void MedianFilterSpikeTest(const int* samples, unsigned char* flags, int* medians, int n, int half,
                           int distance);
int WindowMedian(const int* samples, int n);
