// Which points are meant: a rule, or rules combined, as they were written. A selection knows no series; asked
// about one, it tells the places that it comes to there, so that it can be kept, shown and carried to other
// data.
//
// The language ("not" binds closer than "and", that closer than "or"; letters of either case):
//
//     range(0,5)
//     spike(0.3) or rate(2/h) and not missing
//     not (flat(3h) and x=2024-01-01:)
//     (spike(0.3) or missing) grow(2)          grow stands behind what it grows and binds closest
//
//     range(LOW,HIGH)   values below LOW or above HIGH; either may be left out
//     rate(V/h)         |dy| / dx to the point before > V: the later point; points at one x are not
//                       tested. The unit of time may be s, min, h or d; without one it is that of x
//     flat(3h,TOL)      runs of at least that length whose largest value less the least is TOL (else 0)
//                       or less
//     spike(V)          |y - mean of the two neighbours| > V; first and last point are not tested
//     step(V,6h)        |mean over [x, x + 6h) - mean over [x - 6h, x)| > V, where it is the greatest
//                       in its direction within that length: the point at x, the first after the step
//     gap(1h)           both points at the ends of a gap longer than that
//     hampel(K,N)       |y - m| > N * S, m the median of the point and K points on each side (else 3;
//                       fewer at the ends of the series), S = 1.4826 * the median of their distances
//                       from m, or one stored count where that is 0; N is 3 if not given
//     missing           places without a value
//     status(FLAG,...)  points with one of the flags; deleted ones too
//     reason(CODE,...)  points with one of the rejection codes
//     x=FROM:TO         both ends included, either may be left out
//     y=MIN:MAX         in the same way
//     spikes            what spike detection has marked
//     selected, invert  what is selected so far, what is not
//     ... grow(2)       what stands before it (else what is selected so far) and so many points on
//                       either side
//     ... grow(1h)      the same with all points within that length
//     all               everything
//
// Limits belong to the good side and thresholds are strict. Missing, deleted and rejected points take no
// part in range, rate, flat, spike, step, gap and hampel, break no window of theirs and are not what grow
// adds; x= and y= pass over deleted points. range, rate, flat, spike and gap are the gross range, rate of
// change, flat line, spike and gap tests of QARTOD (Quality Assurance / Quality Control of Real-Time
// Oceanographic Data); hampel is the Hampel filter. The time is in proportion to the points, whatever the
// windows; only that of hampel grows with them, as the logarithm of their size.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "selections/PlaceSet.h"
#include "selections/SelectionSamples.h"

namespace selections {

struct Rule;
struct Argument;

// Why a text is no selection, and the byte of it where that shows.
struct SelectionFault {
    std::size_t position = 0;
    std::string message;
};

// Reads a time.
using TimeFromText = std::optional<WrittenTime> (*)(std::string_view);

class Selection {
  public:
    // Everything.
    Selection();
    ~Selection();
    Selection(const Selection&);
    Selection(Selection&&) noexcept;
    Selection& operator=(const Selection&);
    Selection& operator=(Selection&&) noexcept;

    // Without `readTime` no text is a time.
    static std::optional<Selection> Read(std::string_view text, SelectionFault& fault,
                                         TimeFromText readTime = nullptr);
    // A text that reads back as this selection.
    std::string Text() const;
    // Whether it needs the rejection codes of the points.
    bool AsksForReasons() const;
    // "all", which means that nothing is selected in particular.
    bool IsAll() const;
    // What does not suit the samples, for people: a time or a unit of time where x is no time, rejection
    // codes where there are none. "" when all does.
    std::string Misfit(const Samples& samples) const;
    // The places meant. `selectedSoFar` has the samples' places, or none at all. False without memory;
    // `found` is then as it was.
    bool Find(const Samples& samples, const PlaceSet& selectedSoFar, PlaceSet& found) const;
    // The points that the tests in it had an opinion about, in the same way.
    bool FindJudged(const Samples& samples, PlaceSet& found) const;
    // The flag variables of the tests in it, by their names in the CF conventions; each once.
    std::vector<std::string> StandardNames() const;

    struct Term;

  private:
    explicit Selection(std::vector<Term> root);
    std::vector<Term> root_;  // one term
};

// The rules for a manual: how each is written and what it means.
struct RuleText {
    std::string form;
    std::string meaning;
};
std::vector<RuleText> RuleTexts();

}  // namespace selections
