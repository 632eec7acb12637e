// The values of one column, a row each: 32-bit counts of a power of ten where every cell is such a number, as
// cells of measurements nearly always are, else doubles. Which of the two it is changes no value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <vector>

namespace app {

// What stands in place of a value. Cells that hold "inf" or "nan" never get into a column as values.
constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();
constexpr double kUnreadable = std::numeric_limits<double>::infinity();
constexpr bool HasValue(double value) { return value - value == 0; }

// 10^exponent for 0 to 22, where it is an exact double: m / 10^k is then the double nearest to the decimal m
// e-k as long as m is exact, too.
double ExactPowerOfTen(int exponent);

class Values {
  public:
    using Count = std::int32_t;
    static constexpr Count kMissingCount = std::numeric_limits<Count>::min();
    static constexpr Count kUnreadableCount = kMissingCount + 1;
    static constexpr Count kMostCount = std::numeric_limits<Count>::max() - 1;
    static constexpr std::int64_t kExactMantissa = std::int64_t{1} << 53;

    Values() = default;
    Values(std::vector<double> values) : doubles_(std::move(values)), areCounts_(false) {}

    std::size_t size() const { return areCounts_ ? counts_.size() : doubles_.size(); }
    bool empty() const { return size() == 0; }
    double operator[](std::size_t row) const { return areCounts_ ? Real(counts_[row]) : doubles_[row]; }
    double back() const { return (*this)[size() - 1]; }

    // Whether they are counts of 10^-Decimals().
    bool AreCounts() const { return areCounts_; }
    const std::vector<Count>& Counts() const { return counts_; }
    int Decimals() const { return decimals_; }

    void Reserve(std::size_t rows);
    // Empty, as one newly made; memory is kept.
    void Clear();
    // mantissa * 10^-decimals, of at most 22 decimals and a mantissa of at most kExactMantissa.
    void AddDecimal(std::int64_t mantissa, int decimals) {
        if (areCounts_ && decimals == decimals_ && mantissa <= kMostCount && mantissa >= -kMostCount)
            counts_.push_back(static_cast<Count>(mantissa));
        else
            AddOtherDecimal(mantissa, decimals);
    }
    // A number that is written with `decimals`, or one of the two that stand for no value.
    void Add(double value, int decimals);
    void Append(const Values& more);

    class Iterator {
      public:
        using iterator_category = std::input_iterator_tag;
        using value_type = double;
        using difference_type = std::ptrdiff_t;
        using pointer = const double*;
        using reference = double;
        Iterator(const Values& values, std::size_t row) : values_(&values), row_(row) {}
        double operator*() const { return (*values_)[row_]; }
        Iterator& operator++() {
            ++row_;
            return *this;
        }
        Iterator operator++(int) {
            Iterator before = *this;
            ++row_;
            return before;
        }
        bool operator==(const Iterator& other) const { return row_ == other.row_; }
        bool operator!=(const Iterator& other) const { return row_ != other.row_; }

      private:
        const Values* values_;
        std::size_t row_;
    };
    Iterator begin() const { return {*this, 0}; }
    Iterator end() const { return {*this, size()}; }

    // The least and the largest value, and how many rows have one; 0 and 0 where none has.
    struct Extent {
        double least = 0;
        double most = 0;
        std::int64_t count = 0;
    };
    Extent FindExtent() const;

  private:
    Extent ExtentFrom(std::size_t row) const;
    double Real(Count count) const {
        if (count <= kUnreadableCount) return count == kMissingCount ? kMissing : kUnreadable;
        return count / power_;
    }
    void AddOtherDecimal(std::int64_t mantissa, int decimals);
    // Counts in finer steps; false, and nothing is changed, where they do not fit.
    bool Refine(int decimals);
    void BecomeDoubles();

    std::vector<Count> counts_;
    std::vector<double> doubles_;
    bool areCounts_ = true;
    int decimals_ = 0;
    double power_ = 1;  // 10^decimals_
    // The extent of the first rows, those that came in wholes, so that it is found while they are at hand.
    Extent extent_;
    std::size_t extentRows_ = 0;
};

}  // namespace app
