#include "selections/Rule.h"

#include "sources/PointStatus.h"

namespace selections {

namespace {

using enum ParameterKind;

void FindAll(const Question& question, PlaceSet& found) { found.AddRun(0, question.samples.PlaceCount()); }

void FindSelected(const Question& question, PlaceSet& found) { found.Unite(question.operand); }

void FindUnselected(const Question& question, PlaceSet& found) {
    found.Unite(question.operand);
    found.Complement();
}

void FindMarked(const Question& question, PlaceSet& found) {
    found.AddWhere(question.samples.count, [&](long i) { return question.samples.HasFlag(i, PS_SPIKE); });
}

constexpr Rule kRules[] = {
    {"range",
     "range(LOW,HIGH)",
     {{Low}, {High}},
     false,
     FindRange,
     Judges::Every,
     "gross_range_test_quality_flag",
     "values below LOW or above HIGH; either may be left out"},
    {"rate",
     "rate(V/h)",
     {{Rate}},
     false,
     FindRate,
     Judges::LaterOfPairs,
     "rate_of_change_test_quality_flag",
     "|change| / distance in x to the point before > V: the later point; points at one x are not tested. "
     "The unit may be s, min, h or d; without one it is that of x"},
    {"flat",
     "flat(3h,TOL)",
     {{Length}, {Threshold, "0"}},
     false,
     FindFlat,
     Judges::Every,
     "flat_line_test_quality_flag",
     "runs of at least that length whose largest value less the least is TOL (else 0) or less"},
    {"spike",
     "spike(V)",
     {{Threshold}},
     false,
     FindSpike,
     Judges::Inner,
     "spike_test_quality_flag",
     "|value - mean of the two neighbours| > V; first and last point are not tested"},
    {"step",
     "step(V,6h)",
     {{Threshold}, {Length}},
     false,
     FindStep,
     Judges::LaterOfPairs,
     "rate_of_change_test_quality_flag",
     "|mean of the window behind - mean of the window before| > V: the first point after the step, which is "
     "where the difference is greatest within a window's length"},
    {"gap",
     "gap(1h)",
     {{Length}},
     false,
     FindGap,
     Judges::Every,
     "gap_test_quality_flag",
     "the two points at the ends of a gap longer than that"},
    {"hampel",
     "hampel(K,N)",
     {{Count, "3"}, {Factor, "3"}},
     false,
     FindHampel,
     Judges::Every,
     "spike_test_quality_flag",
     "|value - median| > N * S, S = 1.4826 * the median distance from the median, of the point and K points "
     "(else 3) on each side, fewer at the ends; N is 3 if not given. Where S is 0 it counts as the least "
     "difference that the column stores"},
    {"missing", "missing", {}, false, FindMissing, Judges::None, "", "cells without a value"},
    {"status",
     "status(FLAG,...)",
     {{Flag}},
     true,
     FindStatus,
     Judges::None,
     "",
     "points with a flag: deleted, rejected, spike, moved, smoothed, interpolated, edited"},
    {"reason",
     "reason(CODE,...)",
     {{Code}},
     true,
     FindReason,
     Judges::None,
     "",
     "points with a rejection code: spike, moved or a number"},
    {"x",
     "x=FROM:TO",
     {{XBound}, {XBound}},
     false,
     FindX,
     Judges::None,
     "",
     "by x, both ends included, either may be left out"},
    {"y", "y=MIN:MAX", {{YBound}, {YBound}}, false, FindY, Judges::Every, "", "by value, in the same way"},
    {"spikes", "spikes", {}, false, FindMarked, Judges::None, "", "the points that are marked as spikes"},
    {"selected", "selected", {}, false, FindSelected, Judges::None, "", "the points selected so far"},
    {"invert", "invert", {}, false, FindUnselected, Judges::None, "", "the points not selected so far"},
    {"grow",
     "... grow(2|1h)",
     {{LengthOrCount}},
     false,
     FindGrown,
     Judges::None,
     "",
     "what stands before it, or what is selected so far, and so many points or all within that length on "
     "either side"},
    {"all", "all", {}, false, FindAll, Judges::None, "", "every point"},
};

}  // namespace

std::span<const Rule> Rules() { return kRules; }

const Rule* RuleNamed(std::string_view name) {
    for (const auto& rule : kRules)
        if (name == rule.name) return &rule;
    return nullptr;
}

}  // namespace selections
