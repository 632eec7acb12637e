#include "app/live/LineReader.h"

#include <gtest/gtest.h>

#include <random>

#include "app/table/OpenTable.h"
#include "platform/feeds/FeedSink.h"
#include "tests/core/TestFolder.h"

namespace app {
namespace {

constexpr Microseconds kNow = 1764000000 * kSecond;  // 2025-11-24T16:00:00Z

// Reads `text` in pieces of whole lines and then waits no longer.
struct Reading {
    explicit Reading(const std::string& text, const ReadOptions& options = {}, std::size_t piece = 1 << 20)
        : reader("feed", options) {
        reader.SetOnRow(
            [this](std::string_view line, Microseconds) { recorded += std::string(line) + "\n"; });
        Add(text, piece);
        reader.End(kNow + kSecond, rows);
    }
    void Add(const std::string& text, std::size_t piece = 1 << 20) {
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find('\n', std::min(text.size() - 1, at + piece - 1)) + 1;
            std::string lines = text.substr(at, end - at);
            lines.append(FeedSink::kReach, '7');
            reader.Read(std::string_view(lines).substr(0, end - at), kNow, rows);
            at = end;
        }
    }
    std::string Cells() const {
        std::string text;
        for (std::size_t i = 0; i < rows.cells.size(); ++i)
            text += (i == 0           ? ""
                     : i % rows.width ? " "
                                      : "|") +
                    (HasValue(rows.cells[i])
                         ? NumberText(rows.cells[i], rows.cells[i] == std::floor(rows.cells[i]) ? 0 : 2)
                         : std::string("none"));
        return text;
    }
    LineReader reader;
    LiveRows rows;
    std::string recorded;
};

// What arrives is a table of the usual forms, a column of numbers, or something that only looks like one.
TEST(LineReader, FindsOutWhatTheLinesHold) {
    const struct {
        const char* text;
        const char* cells;
        const char* heading;
    } cases[] = {
        {"time,level [m]\n2025-11-24T00:00:00Z,1.5\n2025-11-24T00:00:01Z,2\n",
         "1763942400000000 1.50|1763942401000000 2", "time,level [m]\n"},
        {"1.5\n2.5\n", "1764000000000000 1.50|1764000000000001 2.50", "time,value\n"},
        {"level\n1.5\n\n# remark\n2.5\n", "1764000000000000 1.50|1764000000000001 2.50", "time,level\n"},
        {"1.5;2;on\n2.5;;off\n", "1764000000000000 1.50 2|1764000000000001 2.50 none",
         "time;channel 1;channel 2;channel 3\n"},
        {"a [m] b\n1 2\n3 4\n", "1764000000000000 1 2|1764000000000001 3 4", nullptr},
        {"1764000000.5,7\n1764000001.5,8\n", "1764000000500000 7|1764000001500000 8", ""},
        // The twelfth of November is nearer to the twenty-fourth than the eleventh of December.
        {"12/11/2025 08:00,7\n12/11/2025 08:01,8\n", "1762934400000000 7|1762934460000000 8", ""},
    };
    for (const auto& one : cases) {
        const Reading reading(one.text);
        EXPECT_EQ(reading.Cells(), one.cells) << one.text << reading.reader.Counts().fault;
        EXPECT_EQ(reading.reader.Counts().lost, 0u) << one.text;
        if (!one.heading || !reading.reader.Shape()) continue;
        EXPECT_EQ(reading.reader.Shape()->Heading(), one.heading);
    }
}

TEST(LineReader, ReadsOneColumnWithDecimalCommas) {
    ReadOptions options;
    options.decimalSign = ',';
    const Reading reading("0,5\n12,25\n", options);
    EXPECT_EQ(reading.Cells(), "1764000000000000 0.50|1764000000000001 12.25");
    EXPECT_EQ(reading.reader.Shape()->Heading(), "time;value\n");
}

TEST(LineReader, CountsWhatCannotBeRead) {
    Reading reading("x,y\n1,2\n2,3\nx,y\nnonsense\n3\n1,2,3\n\"open\n4,bad\n5,NaN\n,6\n7,8\n",
                    {{}, {}, {}, {}, 0, {}, {}, {}, {}, "x"});
    EXPECT_EQ(reading.Cells(), "1 2|2 3|4 none|5 none|7 8");
    EXPECT_EQ(reading.recorded, "1,2\n2,3\n4,bad\n5,NaN\n7,8\n");
    const LineCounts& counts = reading.reader.Counts();
    EXPECT_EQ(counts.rows, 5u);
    EXPECT_EQ(counts.lost, 5u);
    EXPECT_EQ(counts.badCells, 1u);
    reading.Add(std::string("8,\0009\n", 5) + "9,1\n");
    EXPECT_EQ(counts.lost, 6u);
    EXPECT_EQ(reading.rows.cells.back(), 1);
}

// Lines that are no table cost neither memory nor the rows behind them for ever.
TEST(LineReader, GivesUpOnWhatIsNoTableAndTriesAgain) {
    LineReader reader("feed", {});
    LiveRows rows;
    std::string junk;
    for (int i = 0; i < 100000; ++i) junk += "what is this\n";
    const std::size_t size = junk.size();
    junk.append(FeedSink::kReach, ' ');
    reader.Read(std::string_view(junk).substr(0, size), kNow, rows);
    EXPECT_EQ(reader.Counts().lost, 100000u);
    EXPECT_NE(reader.Counts().fault, "");
    std::string good = "1,2\n2,3\n";
    good.append(FeedSink::kReach, ' ');
    reader.Read(std::string_view(good).substr(0, 8), kNow + 2 * kSecond, rows);
    EXPECT_EQ(rows.Count(), 0u);
    reader.Tick(kNow + 4 * kSecond, rows);
    EXPECT_EQ(rows.Count(), 2u);
}

// The same rows as the reader of files, whatever the pieces are.
TEST(LineReader, ReadsAsFilesAreRead) {
    std::mt19937 random(7);
    const char* const cells[] = {"1.5", "-2",      "+3.25", "1e3",          "",
                                 " 7 ", "\"8.5\"", "x",     "12345678.125", "NaN"};
    for (int round = 0; round < 20; ++round) {
        std::string text = "t,a,b\n";
        for (int row = 0; row < 500; ++row) {
            text += std::to_string(row * (random() % 3)) + ".25";
            for (int column = 0; column < 2; ++column)
                text += std::string(",") +
                        (random() % 4 ? std::to_string(random() % 1000) + ".5" : cells[random() % 10]);
            text += random() % 20 ? "\n" : random() % 2 ? "\r\n" : ",1\n";
        }
        const TestFolder folder;
        folder.Write("all.csv", text);
        ReadOptions options;
        options.path = folder.Path("all.csv");
        options.x = "t";
        const auto table = OpenTable(options);
        ASSERT_TRUE(table) << table.Error().message;
        const Reading reading(text, options, 1 + random() % 4000);
        ASSERT_EQ(reading.rows.Count(), static_cast<std::size_t>(table->rows));
        EXPECT_EQ(reading.reader.Counts().lost, static_cast<std::uint64_t>(table->skippedRows));
        for (std::size_t row = 0; row < reading.rows.Count(); ++row) {
            const double* const read = reading.rows.cells.data() + row * 3;
            ASSERT_EQ(read[0], table->xNumbers[row]);
            for (std::size_t column = 0; column < 2; ++column) {
                const double wanted = table->columns[column].values[row];
                ASSERT_TRUE(HasValue(wanted) ? read[column + 1] == wanted : std::isnan(read[column + 1]));
            }
        }
    }
}

}  // namespace
}  // namespace app
