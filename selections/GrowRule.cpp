// Growing what is selected by valid points beside it.
#include <algorithm>

#include "selections/Counts.h"
#include "selections/Rule.h"

namespace selections {

namespace {

// Adds runs of valid points whose begins and ends never fall, each point once.
class RunAdder {
  public:
    RunAdder(const ValidPoints& valid, PlaceSet& found) : valid_(valid), found_(found) {}
    void Add(long begin, long end) {
        begin = std::max(begin, done_);
        end = std::min(end, valid_.Count());
        if (begin >= end) return;
        done_ = end;
        if (valid_.AreAll()) return found_.AddRun(begin, end);
        for (long k = begin; k < end; ++k) found_.Add(valid_.Index(k));
    }

  private:
    const ValidPoints& valid_;
    PlaceSet& found_;
    long done_ = 0;
};

// The valid point at or next behind an index; the indices asked for never fall.
class NextValid {
  public:
    explicit NextValid(const ValidPoints& valid) : valid_(valid) {}
    long At(long index) {
        if (valid_.AreAll()) return index;
        while (next_ < valid_.Count() && valid_.Index(next_) < index) ++next_;
        return next_;
    }

  private:
    const ValidPoints& valid_;
    long next_ = 0;
};

void GrowByPoints(const Question& question, long points, PlaceSet& found) {
    const Samples& samples = question.samples;
    const ValidPoints& valid = question.valid;
    RunAdder ofPoints(valid, found);
    RunAdder ofEmpty(valid, found);
    NextValid atPoint(valid);
    NextValid behindEmpty(valid);
    question.operand.ForEach([&](long place) {
        if (place < samples.count) {
            const long k = atPoint.At(place);
            const bool isValid = k < valid.Count() && valid.Index(k) == place;
            ofPoints.Add(k - points, k + points + (isValid ? 1 : 0));
        } else {
            const auto& empty = samples.empty[static_cast<std::size_t>(place - samples.count)];
            const long k = behindEmpty.At(empty.pointsBefore);
            ofEmpty.Add(k - points, k + points);
        }
    });
}

void GrowByLength(const Question& question, std::int64_t length, PlaceSet& found) {
    const Samples& samples = question.samples;
    const ValidPoints& valid = question.valid;
    const auto grow = [&](RunAdder& adder, long& begin, long& end, std::int64_t x) {
        while (begin < valid.Count() && valid.X(begin) < x - length) ++begin;
        end = std::max(begin, end);
        while (end < valid.Count() && valid.X(end) <= x + length) ++end;
        adder.Add(begin, end);
    };
    RunAdder ofPoints(valid, found);
    RunAdder ofEmpty(valid, found);
    long begins[2] = {0, 0};
    long ends[2] = {0, 0};
    question.operand.ForEach([&](long place) {
        if (place < samples.count)
            grow(ofPoints, begins[0], ends[0], samples.points[place].x);
        else
            grow(ofEmpty, begins[1], ends[1],
                 samples.empty[static_cast<std::size_t>(place - samples.count)].x);
    });
}

}  // namespace

void FindGrown(const Question& question, PlaceSet& found) {
    found.Unite(question.operand);
    const Argument& by = question.arguments[0];
    if (by.secondsPerUnit > 0)
        GrowByLength(question, CountsWithin(RealLength(by), question.samples.x.scale), found);
    else
        GrowByPoints(question, static_cast<long>(by.number), found);
}

}  // namespace selections
