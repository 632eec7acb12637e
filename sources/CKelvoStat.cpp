#include "sources/CKelvoStat.h"

#include <cmath>
#include <limits>

void CKelvoStat::Reset() {
    reference = meanOffset = variance = stdDev = sampleStdDev = 0;
    count = 0;
    sumOffset = sumSquares = minimum = maximum = 0;
}

bool CKelvoStat::Add(double value) {
    if (count == 0) reference = minimum = maximum = value;
    if (value > maximum) {
        maximum = value;
    } else if (value < minimum) {
        minimum = value;
    }
    if (count == std::numeric_limits<int>::max()) return true;
    ++count;
    const double offset = value - reference;
    sumOffset += offset;
    sumSquares += offset * offset;
    meanOffset = sumOffset / count;
    if (count < 2) return false;
    // Rounding can make a difference of nearly equal sums negative.
    variance = std::fabs(sumSquares / count - meanOffset * meanOffset);
    stdDev = std::sqrt(variance);
    sampleStdDev = std::sqrt(std::fabs(sumSquares - meanOffset * sumOffset) / (count - 1));
    return true;
}
