// Random and damaged texts: whatever a file holds, it is refused, or read and written back byte for byte.
#include <gtest/gtest.h>

#include <random>

#include "app/table/Records.h"
#include "app/table/TableReader.h"
#include "app/table/TableWriter.h"
#include "tests/app/Files.h"

namespace app {
namespace {

using Random = std::mt19937_64;

std::size_t Below(Random& random, std::size_t n) {
    return std::uniform_int_distribution<std::size_t>(0, n - 1)(random);
}

std::string Damaged(std::string text, Random& random) {
    static const std::string kLetters = "\",;\t \n\r#-.+|\xFF";
    static const std::string kWords[] = {
        "\"\"", "\r\n", "e9", "1e308", "NaN", "2024-02-30T00:00Z", "99999999999999999999"};
    const auto piece = [&random] {
        const std::size_t i = Below(random, kLetters.size() + std::size(kWords));
        return i < kLetters.size() ? kLetters.substr(i, 1) : kWords[i - kLetters.size()];
    };
    for (std::size_t i = 0, n = 1 + Below(random, 6); i < n; ++i) {
        const std::size_t at = Below(random, text.size());
        switch (Below(random, 3)) {
            case 0:
                text.insert(at, piece());
                break;
            case 1:
                text.erase(at, 1 + Below(random, 8));
                break;
            default:
                text[at] = piece()[0];
        }
        if (text.empty()) text = ",";
    }
    return text;
}

const std::string kSeeds[] = {
    "t,v\n2024-01-01T00:00Z,1.5\n2024-01-01T00:10Z,2.25\n2024-01-01T00:20Z,-3\n2024-01-01T00:30Z,NaN\n",
    "a;b;c\r\ns;m;\r\n1;2,5;\"x;\"\"y\"\"\"\r\n2;3,5;z\r\n3;;z\r\n",
    "  1   2.5  3\n  2\t3.5  4\n 10   4.5  5\n",
    "# c\n1|2\n3|4\n\n5|6",
    "timestamp\tvalue\n1700000000\t1e3\n1700000060\t1.5e-3\n1700000120\t7\n",
};

// The text of a table that was written without an edit, its status cells taken away again.
std::string WithoutStatus(const Table& table, const std::string& written) {
    std::string text(table.bytes.View().substr(0, table.layout.begin));
    std::size_t at = table.layout.begin;
    RecordIndex::Walk walk(table.records, table.layout.begin);
    while (walk.Next()) {
        const auto record = table.bytes.View().substr(walk.Begin(), walk.End() - walk.Begin());
        const std::size_t length = LengthWithoutBreak(record);
        const auto role = walk.Role();
        text += written.substr(at, length);
        at += length;
        if (role == RecordRole::Comment || role == RecordRole::Skipped) {
            text += written.substr(at, record.size() - length);
            at += record.size() - length;
            continue;
        }
        const std::string_view lineBreak = record.substr(length);
        const auto end = lineBreak.empty() ? written.size() : written.find(lineBreak, at);
        if (end == std::string::npos) return text + "<no line break>";
        text += lineBreak;
        at = end + lineBreak.size();
    }
    return text + written.substr(std::min(at, written.size()));
}

TEST(Fuzz, DamagedTablesAreRefusedOrComeBack) {
    Random random(20240301);
    const Folder folder;
    int read = 0;
    for (int i = 0; i < 1500; ++i) {
        const std::string text = Damaged(kSeeds[Below(random, std::size(kSeeds))], random);
        SCOPED_TRACE(testing::Message() << i << ": " << testing::PrintToString(text));
        const auto layout = GuessLayout(text, "t", {});
        if (!layout) continue;
        const auto choice = ChooseColumns(*layout, {});
        if (!choice) continue;
        const auto table = ReadTable(text, "t", *layout, *choice, {});
        if (!table) continue;
        ++read;
        const XAxis axis = MakeXAxis(*table);
        std::vector<Series> series;
        for (std::size_t c = 0; c < table->columns.size(); ++c)
            series.push_back(MakeSeries(*table, axis, c, {}));
        OutputFile output;
        WriteCounts counts;
        ASSERT_TRUE(output.Open(folder.Path("out")) && WriteTable(output, *table, series, {}, counts) &&
                    output.Commit());
        ASSERT_EQ(WithoutStatus(*table, folder.Read("out")), text);
        ASSERT_EQ(counts.edited, 0);
    }
    EXPECT_GT(read, 500);
}

std::string Trimmed(const std::string& text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

// The scan for a field's place in the bytes agrees with the tokeniser about which fields there are.
TEST(Fuzz, FieldsAreFoundWhereTheTokeniserFindsThem) {
    Random random(7);
    const std::string kLetters = "ab1,,;; \t\"\"\n\r";
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (std::size_t n = 1 + Below(random, 14); n > 0; --n)
            text += kLetters[Below(random, kLetters.size())];
        for (const char delimiter : {',', ';', '\t', kBlanks}) {
            Records records(text, delimiter);
            Record record;
            std::vector<std::string> fields;
            while (records.Next(record, [&](int, std::string_view field) { fields.emplace_back(field); })) {
                const auto bytes = std::string_view(text).substr(record.begin, record.end - record.begin);
                for (std::size_t f = 0; record.kind == Record::Row && f < fields.size(); ++f) {
                    Span span;
                    ASSERT_TRUE(FindField(bytes, delimiter, static_cast<int>(f), span))
                        << testing::PrintToString(text) << " '" << delimiter << "' field " << f;
                    std::string found(bytes.substr(span.begin, span.end - span.begin));
                    if (span.begin > 0 && bytes[span.begin - 1] == '"')
                        for (auto at = found.find("\"\""); at != std::string::npos;
                             at = found.find("\"\"", at + 1))
                            found.erase(at, 1);
                    std::replace(found.begin(), found.end(), '\r', ' ');
                    std::replace(fields[f].begin(), fields[f].end(), '\r', ' ');
                    if (delimiter == kBlanks) std::replace(found.begin(), found.end(), '\t', ' ');
                    ASSERT_EQ(Trimmed(found), Trimmed(fields[f]))
                        << testing::PrintToString(text) << " '" << delimiter << "' field " << f;
                }
                Span span;
                ASSERT_FALSE(record.kind == Record::Row && FindField(bytes, delimiter, record.fields, span))
                    << testing::PrintToString(text) << " '" << delimiter << "'";
                fields.clear();
            }
        }
    }
}

}  // namespace
}  // namespace app
