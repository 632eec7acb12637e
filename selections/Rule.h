// The rules of the selection language as a table: what each is called, what it takes, what it finds. Parser,
// printer, checks and manual walk the table; a new rule is one row and its function.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "selections/PlaceSet.h"
#include "selections/SelectionSamples.h"

namespace selections {

enum class ParameterKind {
    None,
    Low,            // a limit in units of y; empty: none
    High,           //
    Threshold,      // in units of y, not negative
    Factor,         // a number above 0
    Rate,           // units of y by unit of x, or by a unit of time as in 0.5/h; not negative
    Length,         // along x, above 0; may have a unit of time as in 3h
    LengthOrCount,  // a length with a unit of time, or a number of points
    Count,          // of points, above 0
    XBound,         // a number or a time; empty: none
    YBound,         //
    Flag,           // the name of a flag
    Code            // a rejection code: a number or a name
};

struct Argument {
    std::string text;           // as it is written
    double number = 0;          // in the unit; of a flag or a code its bits
    double secondsPerUnit = 0;  // 0: it has no unit of time
    std::optional<WrittenTime> time;
    bool isOpen = false;  // a limit that is not there
};

struct Parameter {
    ParameterKind kind = ParameterKind::None;
    const char* fallback = nullptr;  // null: it has to be given
};

// What a rule is asked.
struct Question {
    const Samples& samples;
    const ValidPoints& valid;
    const std::vector<Argument>& arguments;
    const PlaceSet& operand;  // what stands before the rule, or the selection so far
};

// Which valid points a test has an opinion about.
enum class Judges { None, Every, LaterOfPairs, Inner };

struct Rule {
    const char* name;
    const char* form;  // for people
    Parameter parameters[2];
    bool repeats;  // the first parameter may be given again and again
    void (*find)(const Question&, PlaceSet& found);
    Judges judges;
    const char* standardName;  // of the flag variable of such a test, in the CF conventions' table
    const char* meaning;
};

std::span<const Rule> Rules();
const Rule* RuleNamed(std::string_view name);

// The length in real units of x: seconds on an axis of times.
inline double RealLength(const Argument& length) {
    return length.secondsPerUnit > 0 ? length.number * length.secondsPerUnit : length.number;
}

// The rules' functions. `found` is empty when they begin.
void FindRange(const Question&, PlaceSet& found);
void FindRate(const Question&, PlaceSet& found);
void FindFlat(const Question&, PlaceSet& found);
void FindSpike(const Question&, PlaceSet& found);
void FindStep(const Question&, PlaceSet& found);
void FindGap(const Question&, PlaceSet& found);
void FindHampel(const Question&, PlaceSet& found);
void FindMissing(const Question&, PlaceSet& found);
void FindStatus(const Question&, PlaceSet& found);
void FindReason(const Question&, PlaceSet& found);
void FindX(const Question&, PlaceSet& found);
void FindY(const Question&, PlaceSet& found);
void FindGrown(const Question&, PlaceSet& found);

// Adds the valid points k for which test(k) holds.
template <class Test>
void AddValid(const ValidPoints& valid, PlaceSet& found, Test test) {
    if (valid.AreAll()) return found.AddWhere(valid.Count(), test);
    for (long k = 0; k < valid.Count(); ++k)
        if (test(k)) found.Add(valid.Index(k));
}

}  // namespace selections
