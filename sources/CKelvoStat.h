// Running count, mean, extremes and standard deviations of a stream of values. The sums are of offsets from
// the first value, which keeps them small for data far from zero. Before the first value everything reads as
// 0, and before the second the deviations do.
#pragma once

// The slots are fixed and have no destructor among them: never delete one through a pointer to this class
// that was made as a class derived from it.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

class CKelvoStat {
  public:
    CKelvoStat() { CKelvoStat::Reset(); }

    virtual void Reset();
    // True once at least two values were added. A value that is not finite makes the mean and the deviations
    // not finite until the next Reset(). After 2^31 - 1 values only the extremes follow further ones.
    virtual bool Add(double value);

    double GetMean() const { return reference + meanOffset; }
    double GetMin() const { return minimum; }
    double GetMax() const { return maximum; }
    int GetCount() const { return count; }
    // Of a sample (divisor n - 1) or of the population.
    double GetStdDev(bool sample) const { return sample ? sampleStdDev : stdDev; }
    // Half the width of the interval that holds 95 % of normally distributed values.
    double GetConfidence95() const { return sampleStdDev * 1.96; }

  private:
    double reference;   // the first value
    double meanOffset;  // mean of (value - reference)
    double variance;    // of the population
    double stdDev;      // of the population
    double sampleStdDev;
    int count;
    double sumOffset;   // of (value - reference)
    double sumSquares;  // of (value - reference)^2
    double minimum;
    double maximum;
};

#pragma GCC diagnostic pop
