// The language of selections: what is read, how it is written, and what is said about faults.
#include <gtest/gtest.h>

#include <array>

#include "selections/Selection.h"
#include "sources/PointStatus.h"

namespace selections {
namespace {

// "T5" is the time of 5 s, with a colon in it for the sake of ranges: "T:5".
// T:4 is a time, L:4 a local one.
std::optional<WrittenTime> TimeOf(std::string_view text) {
    if (text.size() != 3 || (text[0] != 'T' && text[0] != 'L') || text[1] != ':') return std::nullopt;
    return WrittenTime{(text[2] - '0') * 1000000, text[0] == 'L'};
}

TEST(SelectionText, ReadsAndWritesTheSame) {
    const struct {
        const char* read;
        const char* written;
    } cases[] = {
        {"all", "all"},
        {"NONE", "all"},
        {" range( 0 , 5 ) ", "range(0,5)"},
        {"range(,-1.5e3)", "range(,-1.5e3)"},
        {"hampel", "hampel(3,3)"},
        {"hampel()", "hampel(3,3)"},
        {"Hampel(5)", "hampel(5,3)"},
        {"flat(3 h)", "flat(3 h,0)"},
        {"spikes OR missing And not status(deleted,rejected)",
         "spikes or missing and not status(deleted,rejected)"},
        {"(spikes or missing) and reason(0x10,moved)", "(spikes or missing) and reason(0x10,moved)"},
        {"((spikes)) and (missing and invert)", "spikes and (missing and invert)"},
        {"not(not spikes)", "not not spikes"},
        {"not (spikes and missing)", "not (spikes and missing)"},
        {"spike(.5)grow(2)grow(1h)or grow(3)", "spike(.5) grow(2) grow(1h) or grow(3)"},
        {"(not spikes) grow(2)", "(not spikes) grow(2)"},
        {"x=T:1:T:2 and y=:5", "x=T:1:T:2 and y=:5"},
        {"(x=T:1:)or x= -1 : 7 grow(1)", "x=T:1: or x=-1:7 grow(1)"},
    };
    for (const auto& one : cases) {
        SelectionFault fault;
        const auto selection = Selection::Read(one.read, fault, TimeOf);
        ASSERT_TRUE(selection) << one.read << ": " << fault.position << ": " << fault.message;
        EXPECT_EQ(selection->Text(), one.written);
        const auto again = Selection::Read(selection->Text(), fault, TimeOf);
        ASSERT_TRUE(again) << one.written;
        EXPECT_EQ(again->Text(), one.written);
    }
}

TEST(SelectionText, SaysWhereItFailsAndWhatIsMissing) {
    const std::string deep(100000, '(');
    const struct {
        std::string text;
        std::size_t position;
        const char* message;
    } cases[] = {
        {"", 0, "expected a rule"},
        {"spikes and", 10, "expected a rule"},
        {"spikes missing", 7, "expected and, or"},
        {"spikes )", 7, "never opened"},
        {"not (spikes", 4, "not closed"},
        {"(spikes missing)", 8, "expected and, or, grow(...) or )"},
        {"range(0,5) and rnage(1,2)", 15, "there is no rule \"rnage\"; did you mean range?"},
        {"elephants", 0, "the rules are range, rate"},
        {"range(0)", 0, "range(LOW,HIGH) lacks a limit"},
        {"range(,)", 0, "needs a limit"},
        {"range(0,5,7)", 10, "too much"},
        {"spike", 0, "lacks a number in units of y"},
        {"spike(-1)", 6, "not negative"},
        {"spike(nan)", 6, "not negative"},
        {"rate(2/fortnight)", 5, "such as 0.5/h"},
        {"flat(0h)", 5, "a length above 0"},
        {"grow(1.5)", 5, "a number of points"},
        {"hampel(2.5)", 7, "a whole number"},
        {"status(rejcted)", 7, "deleted, rejected"},
        {"status()", 0, "lacks deleted"},
        {"x=1", 2, "FROM:TO"},
        {"x=:", 2, "FROM:TO"},
        {"y=T:1:", 2, "FROM:TO"},
        {"x", 1, "expected x=FROM:TO"},
        {"range(0,5", 9, "expected , or )"},
        {"%", 0, "but found \"%\""},
        {deep, 200, "too many"},
    };
    for (const auto& one : cases) {
        SelectionFault fault;
        EXPECT_FALSE(Selection::Read(one.text, fault, TimeOf)) << one.text;
        EXPECT_EQ(fault.position, one.position) << one.text.substr(0, 40) << ": " << fault.message;
        EXPECT_NE(fault.message.find(one.message), std::string::npos) << one.text << ": " << fault.message;
    }
}

TEST(SelectionText, MeansTimesAndNumbersAsTheAxisDoes) {
    const std::array<CPoint, 5> points = {CPoint{0, 0}, {10, 1}, {20, 2}, {30, 3}, {40, 4}};
    Samples samples;
    samples.points = points.data();
    samples.count = 5;
    samples.x = {10, 0};
    samples.xIsTime = true;
    // Stored 0 is at 3 s; plain numbers are milliseconds since 1970; the clock is a second behind, or two.
    const auto fromLocal = [](std::int64_t time, bool last) { return time + (last ? 2000000 : 1000000); };
    samples.time = {3000000, 0, 1e3, fromLocal};
    const struct {
        const char* text;
        long points;
    } cases[] = {{"x=T:4:T:5", 2}, {"x=4000:5000", 2}, {"x=T:4:4999", 1}, {"x=:T:3", 1},
                 {"x=L:4:", 3},    {"x=:L:4", 4},      {"gap(900ms)", 5}};
    SelectionFault fault;
    for (const auto& one : cases) {
        const auto selection = Selection::Read(one.text, fault, TimeOf);
        ASSERT_TRUE(selection) << one.text << fault.message;
        PlaceSet found;
        ASSERT_TRUE(selection->Find(samples, {}, found));
        EXPECT_EQ(found.Count(), one.points) << one.text;
        EXPECT_EQ(selection->Misfit(samples), "");
    }
    samples.xIsTime = false;
    EXPECT_NE(Selection::Read("not x=T:4:", fault, TimeOf)->Misfit(samples).find("\"T:4\" is a time"),
              std::string::npos);
    EXPECT_NE(Selection::Read("all or gap(1h)", fault)->Misfit(samples).find("\"1h\" has a unit"),
              std::string::npos);
    EXPECT_EQ(Selection::Read("x=0:1 or rate(2) or flat(2)", fault)->Misfit(samples), "");
}

// First and later points, those at one x, and those that take no part have no verdict from some tests.
TEST(SelectionText, TellsWhichPointsItsTestsJudge) {
    const std::array<CPoint, 5> points = {CPoint{0, 0}, {10, 1}, {10, 2}, {30, 3}, {40, 4}};
    const std::array<unsigned short, 5> status = {0, 0, 0, 0, PS_REJECTED};
    Samples samples;
    samples.points = points.data();
    samples.status = status.data();
    samples.count = 5;
    const struct {
        const char* text;
        std::string judged;
        std::vector<std::string> names;
    } cases[] = {
        {"rate(1)", "0101", {"rate_of_change_test_quality_flag"}},
        {"spike(1) and x=0:9", "0110", {"spike_test_quality_flag"}},
        {"rate(1) or spike(1) or hampel",
         "1111",
         {"rate_of_change_test_quality_flag", "spike_test_quality_flag"}},
        {"x=0:9 or spikes", "0000", {}},
    };
    for (const auto& one : cases) {
        SelectionFault fault;
        PlaceSet judged;
        const auto selection = Selection::Read(one.text, fault);
        ASSERT_TRUE(selection && selection->FindJudged(samples, judged));
        std::string text;
        for (long i = 0; i < 4; ++i) text += judged.Has(i) ? '1' : '0';
        EXPECT_EQ(text, one.judged) << one.text;
        EXPECT_FALSE(judged.Has(4));
        EXPECT_EQ(selection->StandardNames(), one.names);
    }
}

}  // namespace
}  // namespace selections
