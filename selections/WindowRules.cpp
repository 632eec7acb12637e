// Rules that look at stretches of x.
#include <cmath>

#include "selections/Counts.h"
#include "selections/MonotoneQueue.h"
#include "selections/Rule.h"

namespace selections {

namespace {

__extension__ using WideInteger = __int128;

void AddValidRun(const ValidPoints& valid, PlaceSet& found, long begin, long end) {
    if (valid.AreAll()) return found.AddRun(begin, end);
    for (long k = begin; k < end; ++k) found.Add(valid.Index(k));
}

// A valid point before which the windows' means differ by more than the threshold.
struct Change {
    long point;
    double difference;
};

// Sums over both windows of the point that the walk has come to. The one before it holds the points up to the
// window's length before its x, the one behind it starts with it and ends short of that length, so that both
// hold as many points of an even spacing.
class StepWalk {
  public:
    StepWalk(const ValidPoints& valid, double lengthStored, std::int64_t before, std::int64_t behind)
        : valid_(valid), length_(lengthStored), before_(before), behind_(behind) {}

    void MoveTo(long point) {
        for (; point_ < point; ++point_) Shift(point_);
        const std::int64_t x = valid_.X(point);
        for (; first_ < point && x - valid_.X(first_) > before_; ++first_) sumBefore_ -= valid_.Y(first_);
        for (; end_ < valid_.Count() && valid_.X(end_) - x <= behind_; ++end_) sumBehind_ += valid_.Y(end_);
    }
    bool HasBoth() const { return first_ < point_ && end_ > point_; }
    // The difference of the means, and whether it is more than the threshold.
    bool IsMoreThan(double thresholdStored, double& difference) const {
        const std::int64_t before = point_ - first_;
        const std::int64_t behind = end_ - point_;
        const auto exact = WideInteger(sumBehind_) * before - WideInteger(sumBefore_) * behind;
        const double counts = double(before) * double(behind);
        difference = double(exact) / counts;
        return IsMore(std::fabs(double(exact)), thresholdStored * counts);
    }
    double Length() const { return length_; }

  private:
    void Shift(long point) {
        sumBefore_ += valid_.Y(point);
        if (end_ > point)
            sumBehind_ -= valid_.Y(point);
        else
            end_ = point + 1;
    }

    const ValidPoints& valid_;
    double length_;
    std::int64_t before_;
    std::int64_t behind_;
    long first_ = 0;  // of the window before
    long point_ = 0;
    long end_ = 0;  // of the window behind
    std::int64_t sumBefore_ = 0;
    std::int64_t sumBehind_ = 0;
};

// Of changes in one direction those that are the greatest within a window's length, the first of equal ones.
void AddPeaks(const ValidPoints& valid, const std::vector<Change>& changes, double length, PlaceSet& found) {
    MonotoneQueue greatest;
    const auto x = [&](long c) { return double(valid.X(changes[static_cast<std::size_t>(c)].point)); };
    const auto size = [&](long c) { return std::fabs(changes[static_cast<std::size_t>(c)].difference); };
    const auto count = static_cast<long>(changes.size());
    long next = 0;
    long first = 0;
    for (long c = 0; c < count; ++c) {
        for (; next < count && x(next) - x(c) < length; ++next)
            greatest.Push(next, [&](long before) { return size(before) < size(next); });
        while (x(c) - x(first) >= length) ++first;
        greatest.DropBefore(first);
        if (greatest.Front() == c) found.Add(valid.Index(changes[static_cast<std::size_t>(c)].point));
    }
}

}  // namespace

void FindFlat(const Question& question, PlaceSet& found) {
    const ValidPoints& valid = question.valid;
    const std::int64_t least = CountsReaching(RealLength(question.arguments[0]), question.samples.x.scale);
    const std::int64_t most = CountsWithin(question.arguments[1].number, question.samples.y.scale);
    MonotoneQueue lowest;
    MonotoneQueue highest;
    long begin = 0;
    long marked = 0;
    for (long k = 0; k < valid.Count(); ++k) {
        const std::int64_t y = valid.Y(k);
        lowest.Push(k, [&](long before) { return valid.Y(before) >= y; });
        highest.Push(k, [&](long before) { return valid.Y(before) <= y; });
        while (std::int64_t{valid.Y(highest.Front())} - valid.Y(lowest.Front()) > most) {
            begin = std::min(highest.Front(), lowest.Front()) + 1;
            lowest.DropBefore(begin);
            highest.DropBefore(begin);
        }
        if (std::int64_t{valid.X(k)} - valid.X(begin) < least) continue;
        AddValidRun(valid, found, std::max(begin, marked), k + 1);
        marked = k + 1;
    }
}

void FindStep(const Question& question, PlaceSet& found) {
    const ValidPoints& valid = question.valid;
    const double length = RealLength(question.arguments[1]);
    const double scale = question.samples.x.scale;
    const double threshold = question.arguments[0].number * question.samples.y.scale;
    StepWalk walk(valid, length * scale, CountsWithin(length, scale), CountsReaching(length, scale) - 1);
    std::vector<Change> up;
    std::vector<Change> down;
    for (long k = 1; k < valid.Count(); ++k) {
        walk.MoveTo(k);
        Change change{k, 0};
        if (valid.X(k) == valid.X(k - 1) || !walk.HasBoth()) continue;
        if (!walk.IsMoreThan(threshold, change.difference)) continue;
        (change.difference > 0 ? up : down).push_back(change);
    }
    AddPeaks(valid, up, walk.Length(), found);
    AddPeaks(valid, down, walk.Length(), found);
}

}  // namespace selections
