// Rules that compare a point with the valid ones beside it.
#include "selections/Counts.h"
#include "selections/Rule.h"

namespace selections {

void FindRate(const Question& question, PlaceSet& found) {
    const Argument& rate = question.arguments[0];
    const ValidPoints& valid = question.valid;
    const double unit = rate.secondsPerUnit > 0 ? rate.secondsPerUnit : 1;
    // |dy| / yScale > rate * (dx / xScale) / unit, with whole numbers multiplied before anything is divided.
    const double byDistance = rate.number * question.samples.y.scale / (question.samples.x.scale * unit);
    AddValid(valid, found, [&](long k) {
        if (k == 0) return false;
        const auto dx = std::int64_t{valid.X(k)} - valid.X(k - 1);
        const auto dy = std::abs(std::int64_t{valid.Y(k)} - valid.Y(k - 1));
        return dx != 0 && IsMore(double(dy), byDistance * double(dx));
    });
}

void FindSpike(const Question& question, PlaceSet& found) {
    const ValidPoints& valid = question.valid;
    const long last = valid.Count() - 1;
    const std::int64_t most = CountsWithin(2 * question.arguments[0].number, question.samples.y.scale);
    AddValid(valid, found, [&](long k) {
        if (k == 0 || k == last) return false;
        const auto around = std::int64_t{valid.Y(k - 1)} + valid.Y(k + 1);
        return std::abs(2 * std::int64_t{valid.Y(k)} - around) > most;
    });
}

void FindGap(const Question& question, PlaceSet& found) {
    const ValidPoints& valid = question.valid;
    const std::int64_t most = CountsWithin(RealLength(question.arguments[0]), question.samples.x.scale);
    for (long k = 1; k < valid.Count(); ++k) {
        if (std::int64_t{valid.X(k)} - valid.X(k - 1) <= most) continue;
        found.Add(valid.Index(k - 1));
        found.Add(valid.Index(k));
    }
}

}  // namespace selections
