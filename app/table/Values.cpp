#include "app/table/Values.h"

#include <algorithm>
#include <cmath>

namespace app {

namespace {

constexpr int kMostDecimals = 9;  // of counts: ten to the ninth is the largest power that fits

constexpr std::int64_t IntegerPowerOfTen(int exponent) {
    std::int64_t power = 1;
    for (int i = 0; i < exponent; ++i) power *= 10;
    return power;
}

bool IsValue(Values::Count count) { return count > Values::kUnreadableCount; }

Values::Extent Joined(const Values::Extent& a, const Values::Extent& b) {
    if (a.count == 0 || b.count == 0) return a.count ? a : b;
    return {std::min(a.least, b.least), std::max(a.most, b.most), a.count + b.count};
}

}  // namespace

double ExactPowerOfTen(int exponent) {
    static constexpr double kPowers[] = {1,    1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    return kPowers[exponent];
}

void Values::Reserve(std::size_t rows) {
    if (areCounts_)
        counts_.reserve(rows);
    else
        doubles_.reserve(rows);
}

void Values::Clear() {
    counts_.clear();
    doubles_.clear();
    areCounts_ = true;
    decimals_ = 0;
    power_ = 1;
    extent_ = {};
    extentRows_ = 0;
}

bool Values::Refine(int decimals) {
    if (decimals > kMostDecimals) return false;
    const std::int64_t factor = IntegerPowerOfTen(decimals - decimals_);
    const auto most = kMostCount / factor;
    const auto fits = [&](Count count) { return !IsValue(count) || (count <= most && count >= -most); };
    if (!std::all_of(counts_.begin(), counts_.end(), fits)) return false;
    for (Count& count : counts_)
        if (IsValue(count)) count = static_cast<Count>(count * factor);
    decimals_ = decimals;
    power_ = ExactPowerOfTen(decimals);
    return true;
}

void Values::BecomeDoubles() {
    if (!areCounts_) return;
    doubles_.reserve(counts_.capacity());
    for (const Count count : counts_) doubles_.push_back(Real(count));
    counts_ = {};
    areCounts_ = false;
}

void Values::AddOtherDecimal(std::int64_t mantissa, int decimals) {
    if (areCounts_ && (decimals <= decimals_ || Refine(decimals))) {
        const std::int64_t factor = IntegerPowerOfTen(decimals_ - decimals);
        const std::int64_t most = kMostCount / factor;
        if (mantissa <= most && mantissa >= -most) {
            counts_.push_back(static_cast<Count>(mantissa * factor));
            return;
        }
    }
    BecomeDoubles();
    doubles_.push_back(double(mantissa) / ExactPowerOfTen(decimals));
}

void Values::Add(double value, int decimals) {
    if (areCounts_ && !HasValue(value))
        return counts_.push_back(value != value ? kMissingCount : kUnreadableCount);
    if (areCounts_ && decimals <= kMostDecimals) {
        const double counts = value * ExactPowerOfTen(decimals);
        if (std::fabs(counts) <= kMostCount) {
            const std::int64_t mantissa = std::llround(counts);
            // The double may have come from more digits than its text seems to have.
            if (double(mantissa) / ExactPowerOfTen(decimals) == value) return AddDecimal(mantissa, decimals);
        }
    }
    BecomeDoubles();
    doubles_.push_back(value + 0.0);  // -0 is 0, as among counts
}

void Values::Append(const Values& more) {
    if (extentRows_ == size()) {
        extent_ = Joined(extent_, more.FindExtent());
        extentRows_ += more.size();
    }
    const bool same = areCounts_ && more.areCounts_ && more.decimals_ <= decimals_;
    if (areCounts_ && more.areCounts_ && (same || Refine(more.decimals_))) {
        const std::size_t before = counts_.size();
        counts_.insert(counts_.end(), more.counts_.begin(), more.counts_.end());
        const std::int64_t factor = IntegerPowerOfTen(decimals_ - more.decimals_);
        if (factor == 1) return;
        const auto most = kMostCount / factor;
        const auto fits = [&](Count count) { return !IsValue(count) || (count <= most && count >= -most); };
        if (std::all_of(more.counts_.begin(), more.counts_.end(), fits)) {
            for (std::size_t i = before; i < counts_.size(); ++i)
                if (IsValue(counts_[i])) counts_[i] = static_cast<Count>(counts_[i] * factor);
            return;
        }
        counts_.resize(before);
    }
    BecomeDoubles();
    for (const double value : more) doubles_.push_back(value);
}

Values::Extent Values::FindExtent() const { return Joined(extent_, ExtentFrom(extentRows_)); }

Values::Extent Values::ExtentFrom(std::size_t row) const {
    Extent extent;
    if (areCounts_) {
        Count least = kMostCount;
        Count most = -kMostCount;
        for (; row < counts_.size(); ++row) {
            const Count count = counts_[row];
            extent.count += IsValue(count);
            least = std::min(least, IsValue(count) ? count : least);
            most = std::max(most, count);
        }
        if (extent.count == 0) return {};
        extent.least = Real(least);
        extent.most = Real(most);
        return extent;
    }
    for (; row < doubles_.size(); ++row)
        if (HasValue(doubles_[row])) extent = Joined(extent, {doubles_[row], doubles_[row], 1});
    return extent;
}

}  // namespace app
