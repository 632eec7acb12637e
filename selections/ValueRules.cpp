// Rules that look at one place at a time.
#include "selections/Counts.h"
#include "selections/Rule.h"
#include "sources/PointStatus.h"

namespace selections {

namespace {

struct Limits {
    std::int64_t least = std::numeric_limits<std::int64_t>::min();
    std::int64_t most = std::numeric_limits<std::int64_t>::max();
    bool Hold(std::int64_t stored) const { return stored >= least && stored <= most; }
};

// The stored y between two real limits, both included.
Limits StoredLimits(const AxisUnits& units, const Argument& low, const Argument& high) {
    Limits limits;
    const auto origin = static_cast<std::int64_t>(units.origin);
    if (!low.isOpen) limits.least = CountsReaching(low.number, units.scale) - origin;
    if (!high.isOpen) limits.most = CountsWithin(high.number, units.scale) - origin;
    return limits;
}

// A bound in seconds from stored 0. `isLast`: nothing that may be meant lies behind it.
double SecondsOf(const TimeUnits& units, const Argument& bound, bool isLast) {
    if (!bound.time)
        return (double(units.numberOrigin - units.timeOfZero) + bound.number * units.microsecondsPerNumber) /
               1e6;
    const auto [at, isLocal] = *bound.time;
    const std::int64_t time = isLocal && units.fromLocal ? units.fromLocal(at, isLast) : at;
    return double(time - units.timeOfZero) / 1e6;
}

unsigned short FlagsOf(const std::vector<Argument>& arguments) {
    unsigned flags = 0;
    for (const auto& argument : arguments) flags |= static_cast<unsigned>(argument.number);
    return static_cast<unsigned short>(flags);
}

}  // namespace

void FindRange(const Question& question, PlaceSet& found) {
    const Limits good = StoredLimits(question.samples.y, question.arguments[0], question.arguments[1]);
    const ValidPoints& valid = question.valid;
    AddValid(valid, found, [&](long k) { return !good.Hold(valid.Y(k)); });
}

void FindY(const Question& question, PlaceSet& found) {
    const Samples& samples = question.samples;
    const Limits limits = StoredLimits(samples.y, question.arguments[0], question.arguments[1]);
    found.AddWhere(samples.count, [&](long i) {
        return limits.Hold(samples.points[i].y) && !samples.HasFlag(i, PS_DELETED);
    });
}

void FindX(const Question& question, PlaceSet& found) {
    const Samples& samples = question.samples;
    const Argument& from = question.arguments[0];
    const Argument& to = question.arguments[1];
    Limits limits;
    if (samples.xIsTime) {
        if (!from.isOpen)
            limits.least = CountsReaching(SecondsOf(samples.time, from, false), samples.x.scale);
        if (!to.isOpen) limits.most = CountsWithin(SecondsOf(samples.time, to, true), samples.x.scale);
    } else {
        limits = StoredLimits(samples.x, from, to);
    }
    found.AddWhere(samples.count, [&](long i) {
        return limits.Hold(samples.points[i].x) && !samples.HasFlag(i, PS_DELETED);
    });
    for (std::size_t e = 0; e < samples.empty.size(); ++e)
        if (limits.Hold(samples.empty[e].x)) found.Add(samples.count + static_cast<long>(e));
}

void FindMissing(const Question& question, PlaceSet& found) {
    found.AddRun(question.samples.count, question.samples.PlaceCount());
}

void FindStatus(const Question& question, PlaceSet& found) {
    const unsigned short flags = FlagsOf(question.arguments);
    found.AddWhere(question.samples.count, [&](long i) { return question.samples.HasFlag(i, flags); });
}

// A point may have several codes: a code is there when all its bits are.
void FindReason(const Question& question, PlaceSet& found) {
    const int* rejection = question.samples.rejection;
    if (!rejection) return;
    for (const auto& argument : question.arguments) {
        const auto code = static_cast<unsigned>(argument.number);
        found.AddWhere(question.samples.count,
                       [&](long i) { return (static_cast<unsigned>(rejection[i]) & code) == code; });
    }
}

}  // namespace selections
