// What is read in the quick way equals what the tokeniser and the general readers make of it.
#include <csv.h>
#include <gtest/gtest.h>

#include <random>

#include "app/table/OpenTable.h"
#include "app/table/Records.h"
#include "tests/app/Files.h"

namespace app {
namespace {

using Random = std::mt19937_64;

template <class T, std::size_t n>
const T& Any(const T (&choices)[n], Random& random) {
    return choices[random() % n];
}

Result<Table> Read(std::string text, const ReadOptions& options) {
    const InputText input{"t", Bytes(std::move(text))};
    const auto plan = PlanReading(input, options);
    if (!plan) return plan.Error();
    return ReadTable(Bytes(std::string(input.bytes.View())), "t", plan->layout, plan->choice, options);
}

// libcsv's rows of a text, a field per line.
std::string Tokenised(const std::string& text, char delimiter) {
    std::string fields;
    csv_parser parser;
    csv_init(&parser, 0);
    csv_set_delim(&parser, static_cast<unsigned char>(delimiter));
    const auto field = [](void* bytes, std::size_t length, void* to) {
        static_cast<std::string*>(to)->append(static_cast<const char*>(bytes), length).append("\n");
    };
    const auto row = [](int, void* to) { static_cast<std::string*>(to)->append("--\n"); };
    csv_parse(&parser, text.data(), text.size(), field, row, &fields);
    csv_fini(&parser, field, row, &fields);
    csv_free(&parser);
    return fields;
}

TEST(PlainRows, AreSplitAsTheTokeniserDoes) {
    Random random(3);
    const char kLetters[] = "a1.,,;\t\t  \n-";
    for (int i = 0; i < 20000; ++i) {
        std::string text = "x";
        for (std::size_t n = 1 + random() % 20; n > 0; --n)
            text += kLetters[random() % (sizeof kLetters - 1)];
        for (const char delimiter : {',', ';', '\t'}) {
            Records records(text, delimiter);
            Record record;
            std::string fields;
            std::string row;
            while (
                records.Next(record, [&](int, std::string_view field) { row.append(field).append("\n"); })) {
                if (record.kind == Record::Row) fields += row + "--\n";
                row.clear();
            }
            // A line of blanks is none of the tokeniser's rows, but one of tabs as delimiters is.
            if (delimiter == '\t' && text.find("\n") != std::string::npos) continue;
            ASSERT_EQ(fields, Tokenised(text, delimiter)) << testing::PrintToString(text) << delimiter;
        }
    }
}

// A quote in the last column sends a row to the tokeniser, and changes nothing in the others.
TEST(PlainRows, HoldTheValuesOfTheGeneralWay) {
    const char* const kCells[] = {"1.5",
                                  "-0.25",
                                  "+3",
                                  "",
                                  "7 ",
                                  "1e3",
                                  "NaN",
                                  "abc",
                                  ".5",
                                  "5.",
                                  "-",
                                  "--1",
                                  "1.2.3",
                                  "0x10",
                                  "1 2",
                                  "-9999.0",
                                  "1,5",
                                  "1;5",
                                  "0",
                                  "-0.0",
                                  "+-1",
                                  "4294967296",
                                  "2147483647",
                                  "-2147483648.5",
                                  "12345678901234567890",
                                  "0.1234567890123456789",
                                  "74.93588199999998",
                                  "00000000000000001.5",
                                  "9007199254740993",
                                  "123456789012345678",
                                  "1.50000000000",
                                  "\x7F"};
    Random random(5);
    for (const char delimiter : {',', ';', '\t', kBlanks})
        for (const char sign : {'.', ','}) {
            std::string plain;
            std::string quoted;
            for (int row = 0; row < 4000; ++row) {
                std::string cells = row % 7 ? std::to_string(row) : std::string(Any(kCells, random));
                for (int i = 0; i < 2; ++i) cells += delimiter + std::string(Any(kCells, random));
                const char* const end = random() % 3 ? "\n" : "\r\n";
                plain += cells + delimiter + "z" + end;
                quoted += cells + delimiter + "\"z\"" + end;
            }
            ReadOptions options{.delimiter = delimiter, .decimalSign = sign, .headerLine = 0};
            options.missing = {"-9999"};
            options.x = "1";
            options.y = {"2", "3"};
            const auto a = Read(plain, options);
            const auto b = Read(quoted, options);
            ASSERT_EQ(bool(a), bool(b)) << delimiter << sign;
            if (!a) continue;
            EXPECT_EQ(a->rows, b->rows);
            EXPECT_EQ(a->skippedRows, b->skippedRows);
            EXPECT_EQ(a->unreadableCells, b->unreadableCells);
            for (std::size_t c = 0; c < 2; ++c) {
                EXPECT_EQ(a->columns[c].decimals, b->columns[c].decimals);
                EXPECT_EQ(a->columns[c].missing, b->columns[c].missing);
                for (std::size_t r = 0; r < a->columns[c].values.size(); ++r)
                    ASSERT_EQ(testing::PrintToString(a->columns[c].values[r]),
                              testing::PrintToString(b->columns[c].values[r]))
                        << delimiter << sign << " row " << r;
            }
        }
}

TEST(PlainRows, AreTheSameHoweverTheTextIsDivided) {
    // More than three megabytes, so that stretches begin everywhere: in rows, in quoted line breaks, and in
    // one record that is longer than a stretch.
    Random random(9);
    std::string text = "x,y,note\n";
    std::int64_t rows = 0;
    std::int64_t lines = 1;
    std::int64_t sum = 0;
    std::vector<std::int64_t> faults;
    const auto add = [&](const std::string& note, int lineBreaks) {
        text += std::to_string(rows) + "," + std::to_string(rows % 1000) + ".5," + note + "\n";
        sum += rows++ % 1000;
        lines += 1 + lineBreaks;
    };
    while (text.size() < 3500000) {
        if (rows == 60000) add('"' + std::string(1500000, 'a') + '"', 0);
        if (random() % 20 == 0)
            add("\"a\n1,2,3\n\n# b\"", 3);
        else
            add("plain", 0);
        if (random() % 5000 == 0) {
            text += "bad,1,x\n";
            faults.push_back(++lines);
        }
    }
    const auto table = Read(text, {});
    ASSERT_TRUE(table) << table.Error().message;
    EXPECT_EQ(table->rows, rows);
    EXPECT_EQ(table->lines, lines);
    std::int64_t read = 0;
    for (const double value : table->columns[0].values) read += static_cast<std::int64_t>(value);
    EXPECT_EQ(read, sum);
    std::vector<std::int64_t> found;
    for (const auto& fault : table->faults) found.push_back(fault.line);
    EXPECT_EQ(found, faults);
    RecordIndex::Walk walk(table->records, 0);
    while (walk.Next()) ASSERT_EQ(text[walk.End() - 1], '\n');
    EXPECT_EQ(walk.End(), text.size());
}

TEST(Bytes, TellWhenTheirFileChanges) {
    const Folder folder;
    const std::string path = folder.Path("in.csv");
    const auto rewrite = [&](const std::string& text) { folder.Write("in.csv", text); };
    const std::string before(100000, '7');
    const struct {
        const char* about;
        std::string after;
        Bytes::Change change;
    } cases[] = {{"longer", before + "8", Bytes::Change::Grown},
                 {"shorter", "7", Bytes::Change::Rewritten},
                 {"longer and different", std::string(100001, '8'), Bytes::Change::Rewritten}};
    for (const auto& one : cases) {
        SCOPED_TRACE(one.about);
        rewrite(before);
        const auto bytes = LoadText({path});
        ASSERT_TRUE(bytes);
        EXPECT_EQ(bytes->bytes.Changed(), Bytes::Change::None);
        rewrite(one.after);
        // Reading on past a file's new end must not end the program.
        const char last = bytes->bytes.View().back();
        EXPECT_EQ(last, one.after.size() == 1 ? '\0' : one.after[0]);
        EXPECT_EQ(bytes->bytes.Changed(), one.change);
    }
}

TEST(Input, RefusesWhatIsNoTextBeforeItsEnd) {
    const Folder folder;
    std::string text = "x,y\n";
    while (text.size() < 1500000) text += "1,2\n";
    folder.Write("zero.csv", text + std::string("3,\0\n", 4));
    const RefusedRun cases[] = {{"info /dev/zero", 1, "/dev/zero:1: not a text file"},
                                {"info - </dev/zero", 1, "standard input:1: not a text file"},
                                {"info zero.csv", 1, "zero.csv:375001: not a text file: a byte of value 0"}};
    for (const auto& one : cases) ExpectRefused(folder, one, 1);
}

}  // namespace
}  // namespace app
