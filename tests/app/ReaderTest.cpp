#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "app/table/OpenTable.h"
#include "tests/app/Files.h"

namespace app {
namespace {

constexpr double kNone = -1e99;  // a value that is missing or unreadable

struct Expected {
    char delimiter = ',';
    char decimalSign = '.';
    bool header = false;
    bool units = false;
    std::string names;  // joined by |
    std::vector<double> x;
    std::vector<double> y;
    std::int64_t skipped = 0;
};

struct Case {
    const char* about;
    std::string text;
    Expected expected;
    ReadOptions options = {};
};

std::string Names(const Layout& layout) {
    std::string names;
    for (const auto& column : layout.columns)
        names +=
            (names.empty() ? "" : "|") + column.name + (column.unit.empty() ? "" : "<" + column.unit + ">");
    return names;
}

Result<Table> Read(const std::string& text, const ReadOptions& options = {}) {
    const auto layout = GuessLayout(text, "t.csv", options);
    if (!layout) return layout.Error();
    const auto choice = ChooseColumns(*layout, options);
    if (!choice) return choice.Error();
    return ReadTable(text, "t.csv", *layout, *choice, options);
}

std::vector<double> XOf(const Table& table) {
    if (!table.HasTimes()) return {table.xNumbers.begin(), table.xNumbers.end()};
    std::vector<double> seconds;
    for (const Microseconds time : table.xTimes) seconds.push_back(static_cast<double>(time) / kSecond);
    return seconds;
}

std::vector<double> YOf(const Table& table) {
    const Values& read = table.columns.at(0).values;
    std::vector<double> values(read.begin(), read.end());
    for (double& value : values)
        if (!HasValue(value)) value = kNone;
    return values;
}

ReadOptions With(const char* timeFormat, std::vector<std::string> missing = {}) {
    ReadOptions options;
    options.timeFormat = timeFormat;
    options.missing = std::move(missing);
    return options;
}

const Case kCases[] = {
    {"comma, header", "a,b\n1,2\n3,4\n", {',', '.', true, false, "a|b", {1, 3}, {2, 4}}},
    {"no header", "1,2\n3,4\n", {',', '.', false, false, "1|2", {1, 3}, {2, 4}}},
    {"semicolon, decimal comma",
     "a;b\n1,5;2,25\n3;4,5\n",
     {';', ',', true, false, "a|b", {1.5, 3}, {2.25, 4.5}}},
    {"tab, decimal comma", "1,5\t2,5\n2,5\t3,5\n", {'\t', ',', false, false, "1|2", {1.5, 2.5}, {2.5, 3.5}}},
    {"bar", "a|b\n1|2\n", {'|', '.', true, false, "a|b", {1}, {2}}},
    {"blanks in columns",
     "  a   b\n  1 \t 2.5\n 10   3.5\n",
     {' ', '.', true, false, "a|b", {1, 10}, {2.5, 3.5}}},
    {"blank after comma", "1, 2\n3, 4\n", {',', '.', false, false, "1|2", {1, 3}, {2, 4}}},
    {"quotes, quoted decimal comma",
     "\"a\",\"b\"\r\n\"1,5\",\"2,5\"\r\n\"2,5\",\"3,5\"\r\n",
     {',', ',', true, false, "a|b", {1.5, 2.5}, {2.5, 3.5}}},
    {"byte-order mark, CRLF, no last line break",
     "\xEF\xBB\xBF"
     "a,b\r\n1,2\r\n3,4",
     {',', '.', true, false, "a|b", {1, 3}, {2, 4}}},
    {"carriage returns only", "a,b\r1,2\r3,4\r", {',', '.', true, false, "a|b", {1, 3}, {2, 4}}},
    {"comments and blank lines",
     "# one\n\na,b\n1,2\n# two, three\n3,4\n\n",
     {',', '.', true, false, "a|b", {1, 3}, {2, 4}}},
    {"units row", "t,level\ns,m\n1,2\n3,4\n", {',', '.', true, true, "t<s>|level<m>", {1, 3}, {2, 4}}},
    {"units in brackets",
     "t [s],level (m)\n1,2\n3,4\n",
     {',', '.', true, false, "t<s>|level<m>", {1, 3}, {2, 4}}},
    {"missing values",
     "a,b\n1,\n2,NaN\n3,na\n4,5\n,6\n",
     {',', '.', true, false, "a|b", {1, 2, 3, 4}, {kNone, kNone, kNone, 5}, 1}},
    {"named missing value",
     "a,b\n1,-9999\n2,-9999.0\n3,4\n",
     {',', '.', true, false, "a|b", {1, 2, 3}, {kNone, kNone, 4}},
     With("", {"-9999"})},
    {"ragged and unreadable rows",
     "a,b,c\n1,2,x\n2,3\n4\n5,6,x,7\nfoo,1,x\n7,bar,x\n",
     {',', '.', true, false, "a|b|c", {1, 2, 7}, {2, 3, kNone}, 3}},
    {"a quote that never closes",
     "a,b\n1,2\n2,\"3\n4,5\n",
     {',', '.', true, false, "a|b", {1, 4}, {2, 5}, 1}},
    {"a line break in quotes",
     "a,b,c\n1,2,\"x\ny\"\n3,4,z\n",
     {',', '.', true, false, "a|b|c", {1, 3}, {2, 4}}},
    {"ISO 8601 times",
     "t,v\n1970-01-02,1\n1970-01-01 00:01,2\n1970-01-01T00:00:02.5,3\n",
     {',', '.', true, false, "t|v", {86400, 60, 2.5}, {1, 2, 3}}},
    {"zones",
     "t,v\n1970-01-01T02:00+01:00,1\n1970-01-01T00:00:01Z,2\n1969-12-31 23:00:00-0200,3\n",
     {',', '.', true, false, "t|v", {3600, 1, 3600}, {1, 2, 3}}},
    {"no such day",
     "t,v\n2023-02-28,1\n2023-02-29,2\n",
     {',', '.', true, false, "t|v", {1677542400}, {1}, 1}},
    {"epoch milliseconds",
     "timestamp;v\n1700000000123;1\n1700000001123;2\n",
     {';', '.', true, false, "timestamp|v", {1700000000.123, 1700000001.123}, {1, 2}}},
    {"numbers that only look like times",
     "count,v\n1700000000,1\n1700000001,2\n",
     {',', '.', true, false, "count|v", {1700000000, 1700000001}, {1, 2}}},
    {"own time format",
     "t;v\n02.01.1970 00:00;1,5\n01.01.1970 00:01;2\n",
     {';', ',', true, false, "t|v", {86400, 60}, {1.5, 2}},
     With("%d.%m.%Y %H:%M")},
    {"exponents, signs", "1e3,+2\n-1.5E-1,.5\n", {',', '.', false, false, "1|2", {1000, -0.15}, {2, 0.5}}},
    {"words that parsers take for numbers",
     "a,b\n1,2\n2,inf\n3,1e999\n4,0x10\n5,1\n6,1\n",
     {',', '.', true, false, "a|b", {1, 2, 3, 4, 5, 6}, {2, kNone, kNone, kNone, 1, 1}}},
};

TEST(TableReader, ReadsTablesAsTheyCome) {
    for (const auto& one : kCases) {
        SCOPED_TRACE(one.about);
        const auto table = Read(one.text, one.options);
        ASSERT_TRUE(table) << table.Error().message;
        EXPECT_EQ(table->layout.delimiter, one.expected.delimiter);
        EXPECT_EQ(table->layout.decimalSign, one.expected.decimalSign);
        EXPECT_EQ(table->layout.hasHeader, one.expected.header);
        EXPECT_EQ(table->layout.hasUnitsRow, one.expected.units);
        EXPECT_EQ(Names(table->layout), one.expected.names);
        EXPECT_EQ(XOf(*table), one.expected.x);
        EXPECT_EQ(YOf(*table), one.expected.y);
        EXPECT_EQ(table->skippedRows, one.expected.skipped);
    }
}

TEST(TableReader, SaysWhereAndWhyRowsAreSkipped) {
    const auto table = Read("# c\nt,v\n1,2\n\"2\n\",3\nx y,4\n5\n6,7,8\n");
    ASSERT_TRUE(table);
    std::string text;
    for (const auto& fault : table->faults) text += std::to_string(fault.line) + ": " + fault.reason + "\n";
    EXPECT_EQ(text,
              "4: \"2 \" in column \"t\" is not a number\n"
              "6: \"x y\" in column \"t\" is not a number\n"
              "7: only 1 field where there are 2 columns\n"
              "8: 3 fields where there are 2 columns\n");
}

TEST(TableReader, RefusesWhatIsNoTableWithOneMessage) {
    const struct {
        const char* text;
        const char* start;
        int exitCode = kRefused;
    } cases[] = {{"Dear Sir or Madam,\nthis is a letter.\n", "t.csv:1: not a table"},
                 {"a,b\nc,d\ne,f\n", "t.csv:1: not a table"},
                 {"1\n2\n3\n", "t.csv:1: not a table"},
                 {"1,a\n", "t.csv:1: not a table"},
                 {"# only\n# comments\n", "t.csv:1: there are remarks and no rows", kEmpty},
                 {"Pier 3\ntime;level\n",
                  "t.csv:2: there are headings and no rows below them: \"time\", \"level\"", kEmpty},
                 {"A,1\nTIME,Level,T\nTS,m,C\n,Smp,Avg\n", "t.csv:2: there are headings", kEmpty}};
    for (const auto& one : cases) {
        const auto table = Read(one.text);
        ASSERT_FALSE(table) << one.text;
        EXPECT_EQ(table.Error().message.find(one.start), 0u) << table.Error().message;
        EXPECT_EQ(table.Error().exitCode, one.exitCode);
        EXPECT_EQ(table.Error().message.find('\n'), std::string::npos);
    }
}

// A quote that is opened by mistake does not swallow rows up to the next one far below.
TEST(TableReader, EndsARecordWhoseQuoteIsNotClosedSoon) {
    std::string text = "a,b,c\n";
    for (int i = 1; i < 500; ++i) text += std::to_string(i) + (i == 100 ? ",2,\"x\n" : ",2,y\n");
    const auto table = Read(text + "500,2,y\"\n");
    ASSERT_TRUE(table);
    EXPECT_EQ(table->skippedRows, 1);
    EXPECT_EQ(table->rows, 499);
}

TEST(OpenTable, KeepsWholeLinesOfAnyLineBreakAndStopsWhenAsked) {
    const Folder folder;
    std::string text = "a,b\r";
    for (int i = 0; i < 200000; ++i) text += std::to_string(i) + ",1\r";
    folder.Write("returns.csv", text);
    const auto sample = LoadText({folder.Path("returns.csv")}, 1000);
    ASSERT_TRUE(sample);
    EXPECT_TRUE(sample->bytes.size() > 900 && sample->bytes.size() <= 1001 &&
                sample->bytes.View().back() == '\r');
    EXPECT_TRUE(PlanReading(*sample, {}));
    std::int64_t rows = 0;
    const auto stopped = OpenTable({folder.Path("returns.csv")}, [&](const Stage& stage) {
        rows = stage.rows;
        return Go::Stop;
    });
    EXPECT_EQ(stopped.Error().exitCode, kStopped);
    EXPECT_TRUE(rows > 0 && rows < 200000) << rows;
}

TEST(Columns, AreFoundByNameUnitAndNumberAndSuggested) {
    const auto layout = GuessLayout("Time [s],Level [m],Temp\n1,2,3\n2,3,4\n", "t.csv", {});
    ASSERT_TRUE(layout);
    EXPECT_EQ(*FindColumn(*layout, "Level"), 1);
    EXPECT_EQ(*FindColumn(*layout, "Level [m]"), 1);
    EXPECT_EQ(*FindColumn(*layout, "3"), 2);
    EXPECT_NE(FindColumn(*layout, "lvel").Error().message.find("did you mean \"Level\"?"), std::string::npos);
    EXPECT_NE(FindColumn(*layout, "pressure").Error().message.find("\"Time\", \"Level\", \"Temp\""),
              std::string::npos);
    EXPECT_FALSE(FindColumn(*layout, "4"));
    EXPECT_EQ(ChooseColumns(*layout, {.x = "1", .y = {"Time"}}).Error().exitCode, kWrongUsage);
}

}  // namespace
}  // namespace app
