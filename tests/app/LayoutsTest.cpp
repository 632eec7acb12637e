// Files in the layouts that loggers, agencies and office programs write, read without being told how.
#include <gtest/gtest.h>
#include <zlib.h>

#include "app/table/CellNumber.h"
#include "app/table/OpenTable.h"
#include "app/table/TextEncoding.h"
#include "tests/app/Files.h"

namespace app {
namespace {

struct FileCase {
    const char* about;
    std::string bytes;
    const char* x;  // of the first and the last row: ISO 8601, with Z where the zone is known, or numbers
    const char* columns;    // names and units of the value columns
    double y;               // the first value of the first of them; 0: none
    const char* note = "";  // a part of a note
    ReadOptions options = {};
    std::int64_t rows = 3;
};

std::string As(const char* encoding, const std::string& text) {
    std::string bytes;
    EXPECT_TRUE(TextConverter("UTF-8", encoding).Append(text, bytes));
    return bytes;
}

std::string Gzip(const std::string& text) {
    z_stream stream{};
    deflateInit2(&stream, 9, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
    std::string packed(text.size() + 100, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

const FileCase kFiles[] = {
    {"day.month.year, semicolons, decimal comma",
     "Zeit;Pegel [m]\n14.03.2024 08:00;1,25\n14.03.2024 08:10;1,5\n14.03.2024 08:20;2\n",
     "2024-03-14T08:00:00 2024-03-14T08:20:00", "Pegel<m>", 1.25},
    {"day/month/year that no month fits", "date,v\n13/02/2024,1\n14/02/2024,2\n15/02/2024,3\n",
     "2024-02-13T00:00:00 2024-02-15T00:00:00", "v", 1},
    {"month/day/year that no day fits, AM and PM",
     "date,v\n2/13/2024 11:30:00 PM,1\n2/14/2024 12:00:00 AM,2\n2/14/2024 12:30:00 PM,3\n",
     "2024-02-13T23:30:00 2024-02-14T12:30:00", "v", 1},
    {"both fit, days in a row",
     "date,v\n01/02/2024,1\n02/02/2024,2\n03/02/2024,3\n04/02/2024,4\n",
     "2024-02-01T00:00:00 2024-02-04T00:00:00",
     "v",
     1,
     "day first",
     {},
     4},
    {"both fit, the second way",
     "date,v\n02/01/2024,1\n02/02/2024,2\n02/03/2024,3\n02/04/2024,4\n",
     "2024-02-01T00:00:00 2024-02-04T00:00:00",
     "v",
     1,
     "month first",
     {},
     4},
    {"day, name of the month, year", "when,v\n14-Mar-2024 08:00,1\n14-MAR-2024 09:00,2\n1-Apr-24,3\n",
     "2024-03-14T08:00:00 2024-04-01T00:00:00", "v", 1},
    {"names of months in other languages",
     "Zeit;v\n14. M\xC3\xA4rz 2024 08:00 Uhr;1\n14-f\xC3\xA9vr.-2025 08:00;2\n1 de dezembro de 2025 "
     "08:00;3\n",
     "2024-03-14T08:00:00 2025-12-01T08:00:00", "v", 1},
    {"cut off, in Latin-1", "Zeit;v\n14.Mrz.2024;1\n14 ao\xFBt 2024;2\n14. joulukuuta 2024;3\n",
     "2024-03-14T00:00:00 2024-12-14T00:00:00", "v", 1},
    {"weekdays",
     "when;v\nThu, 14 Mar 2024 08:00:00 GMT;1\nFr 15.03.2024 08:00Z;2\nsam. 16/03/2024 08:00Z;3\n",
     "2024-03-14T08:00:00Z 2024-03-16T08:00:00Z", "v", 1},
    {"letters of zones", "t,v\n2024-03-14 08:00 CET,1\n2024-07-14 08:00 MESZ,2\n2024-07-14 08:00 EDT,3\n",
     "2024-03-14T07:00:00Z 2024-07-14T12:00:00Z", "v", 1},
    {"compact with T, Z and without seconds",
     "time,v\n20240314T080000Z,1\n20240314T0810Z,2\n20240314T082000Z,3\n",
     "2024-03-14T08:00:00Z 2024-03-14T08:20:00Z", "v", 1},
    {"compact digits", "timestamp,v\n202403140800,1\n202403140810,2\n202403140820,3\n",
     "2024-03-14T08:00:00 2024-03-14T08:20:00", "v", 1},
    {"fractions and offsets",
     "t,v\n2024-03-14 08:00:00.25+01:00,1\n2024-03-14 08:00:00.5+0100,2\n2024-03-14T07:00:01 UTC,3\n",
     "2024-03-14T07:00:00.25Z 2024-03-14T07:00:01Z", "v", 1},
    {"date and clock in two columns",
     "Date,Time,Level\n14.03.2024,08:00,1.5\n14.03.2024,08:10,2\n14.03.2024,08:20,3\n",
     "2024-03-14T08:00:00 2024-03-14T08:20:00", "Level", 1.5, "composed of Date + Time"},
    {"the clock before the date", "clock,day,v\n08:00,14.03.2024,1\n08:10,14.03.2024,2\n08:20,14.03.2024,3\n",
     "2024-03-14T08:00:00 2024-03-14T08:20:00", "v", 1},
    {"compact date and hhmm", "date;time;v\n20240314;0;1\n20240314;30;2\n20240314;1530;3\n",
     "2024-03-14T00:00:00 2024-03-14T15:30:00", "v", 1},
    {"year, month, day, hour, minute under comments, units below",
     "#YY  MM DD hh mm WDIR WSPD\n#yr  mo dy hr mn degT m/s\n2024 03 14 08 00 120 3.5\n2024 03 14 08 10 MM "
     "4.5\n2024 03 14 08 20 130 5.5\n",
     "2024-03-14T08:00:00 2024-03-14T08:20:00", "WDIR<degT>|WSPD<m/s>", 120},
    {"year, month, day without names", "1985,  1,  1,  1234\n1985,  1,  2,  1240\n1985,  1,  3,  1260\n",
     "1985-01-01T00:00:00 1985-01-03T00:00:00", "4", 1234},
    {"year, month, day, hour without names", "1985 1 1 22 12\n1985 1 1 23 13\n1985 1 2 0 14\n",
     "1985-01-01T22:00:00 1985-01-02T00:00:00", "5", 12},
    {"year and day of the year", "year,doy,v\n2024,60,1\n2024,60.5,2\n2024,61,3\n",
     "2024-02-29T00:00:00 2024-03-01T00:00:00", "v", 1},
    {"epoch seconds", "time,v\n1700000000,1\n1700000060,2\n1700000120,3\n",
     "2023-11-14T22:13:20 2023-11-14T22:15:20", "v", 1},
    {"epoch microseconds", "epoch,v\n1700000000000001,1\n1700000000000002,2\n1700000000000003,3\n",
     "2023-11-14T22:13:20.000001 2023-11-14T22:13:20.000003", "v", 1},
    {"preamble, headings in the last line above",
     "Station: "
     "Hamburg\nSensor,radar,\"7\"\n\nDatum;x\ntime,level\n2024-03-14,1\n2024-03-15,2\n2024-03-16,3\n",
     "2024-03-14T00:00:00 2024-03-16T00:00:00", "level", 1, "line 5"},
    {"four lines of a logger",
     "\"TOA5\",\"Pier\",\"CR1000\",\"1234\"\n\"TIMESTAMP\",\"RECORD\",\"Level\",\"Temp_Avg\"\n"
     "\"TS\",\"RN\",\"m\",\"Deg C\"\n\"\",\"\",\"Smp\",\"Avg\"\n\"2024-03-14 08:00:00\",0,1.5,12\n"
     "\"2024-03-14 08:10:00\",1,\"NAN\",12\n\"2024-03-14 08:20:00\",2,1.7,12\n",
     "2024-03-14T08:00:00 2024-03-14T08:20:00", "RECORD<RN>|Level<m>|Temp_Avg<Deg C>", 0,
     "units are in line 3"},
    {"a line of another width below the headings",
     "Site:              Newlyn\nDatum information: Chart Datum (ACD)\n  Cycle    Date      Time    ASLVZZ01 "
     "  Residual\n"
     " Number yyyy mm dd hh mi ssf         f          f\n     1) 1993/01/01 00:00:00     5.2520    -0.0500\n"
     "     2) 1993/01/01 01:00:00     5.1120    -0.0500\n     3) 1993/01/01 02:00:00     4.2520    -0.0500\n",
     "1993-01-01T00:00:00 1993-01-01T02:00:00", "ASLVZZ01|Residual", 5.252, "line 3"},
    {"tabs, comments and a line of formats",
     "# ---- WARNING ----\n# Data for 01646500\nagency_cd\tsite_no\tdatetime\ttz_cd\t00065\t00065_cd\n"
     "5s\t15s\t20d\t6s\t14n\t10s\nUSGS\t01646500\t2024-03-14 08:00\tEST\t3.45\tA\n"
     "USGS\t01646500\t2024-03-14 08:15\tEST\t3.46\tA\nUSGS\t01646500\t2024-03-14 08:30\tEST\t3.47\tA\n",
     "2024-03-14T08:00:00 2024-03-14T08:30:00",
     "site_no|00065",
     1646500,
     "line 3",
     {}},
    {"a data server's units row",
     "time,latitude,sea_level\nUTC,degrees_north,m\n2024-03-14T08:00:00Z,53.5,1.5\n"
     "2024-03-14T08:10:00Z,53.5,NaN\n2024-03-14T08:20:00Z,53.5,1.7\n",
     "2024-03-14T08:00:00Z 2024-03-14T08:20:00Z", "latitude<degrees_north>|sea_level<m>", 53.5},
    {"headings in single quotes", "'time','level'\n0.5,2\n1,3\n1.5,4\n", "0.5 1.5", "level", 2},
    {"headings that are numbers", "time,0.5,1.0\n2024-03-14,1,2\n2024-03-15,3,4\n2024-03-16,5,6\n",
     "2024-03-14T00:00:00 2024-03-16T00:00:00", "0.5|1.0", 1},
    {"points between thousands, decimal comma",
     "t;v\n2024-03-14;\"1.234,56\"\n2024-03-15;2.234,5\n2024-03-16;999,5\n",
     "2024-03-14T00:00:00 2024-03-16T00:00:00", "v", 1234.56, "read as 1234,56"},
    {"commas between thousands, decimal point",
     "t,v\n2024-03-14,\"1,234.5\"\n2024-03-15,\"2,234\"\n2024-03-16,7\n",
     "2024-03-14T00:00:00 2024-03-16T00:00:00", "v", 1234.5, "read as 1234.5"},
    {"another column has the decimal point",
     "t,v,w\n2024-03-14,\"1,234\",0.5\n2024-03-15,\"2,234\",1\n2024-03-16,7,2\n",
     "2024-03-14T00:00:00 2024-03-16T00:00:00", "v|w", 1234},
    {"three decimals behind a comma between semicolons",
     "t;v\n2024-03-14;1,234\n2024-03-15;2,345\n2024-03-16;3,456\n", "2024-03-14T00:00:00 2024-03-16T00:00:00",
     "v", 1.234, "--decimal point"},
    {"a mark for no value", "t,v\n2024-03-14,1\n2024-03-15,-999.9\n2024-03-16,2\n",
     "2024-03-14T00:00:00 2024-03-16T00:00:00", "v", 1, "--missing -999.9"},
    {"a value that others lie near", "t,v\n1,97\n2,98\n3,99\n", "1 3", "v", 97},
    {"UTF-16 with its mark", As("UTF-16LE", "\xEF\xBB\xBFt,H\xC3\xB6he\n1,2\n2,3\n3,4\n"), "1 3",
     "H\xC3\xB6he", 2, "UTF-16LE"},
    {"UTF-16 without", As("UTF-16BE", "t,H\xC3\xB6he\n1,2\n2,3\n3,4\n"), "1 3", "H\xC3\xB6he", 2, "UTF-16BE"},
    {"Latin-1", "t,H\xF6he [\xB0]\n1,2\n2,3\n3,4\n", "1 3", "H\xC3\xB6he<\xC2\xB0>", 2, "ISO-8859-1"},
    {"Windows-1252", "t,\x80\n1,2\n2,3\n3,4\n", "1 3", "\xE2\x82\xAC", 2, "windows-1252"},
    {"gzip", Gzip("t,v\n1,2\n2,3\n3,4\n") + Gzip("4,5\n"), "1 4", "v", 2, "gzip", {}, 4},
    {"a delimiter at the end of each row", "t,v\n1,2,\n2,3,\n3,4,\n", "1 3", "v", 2},
    {"asked for: lines to skip",
     "1,2,3\n4,5,6\nt,v,w\n1,2,3\n2,3,4\n3,4,5\n",
     "1 3",
     "v|w",
     2,
     "",
     {.skip = 2}},
    {"asked for: the line of headings", "9,8\n7,6\n1,2\n2,3\n3,4\n", "1 3", "6", 2, "", {.headerLine = 2}},
    {"asked for: no headings", "9,8\n7,6\n1,2\n", "1 9", "2", 8, "", {.headerLine = 0}},
    {"asked for: a composed time",
     "d,n,c,v\n14.3.2024,1,08:00,5\n14.3.2024,2,08:10,6\n14.3.2024,3,08:20,7\n",
     "2024-03-14T08:00:00 2024-03-14T08:20:00",
     "n|v",
     1,
     "d + c",
     {.x = "d+c"}},
    {"asked for: a pattern over two columns",
     "d,c,v\n74/2024,08h,5\n74/2024,09h,6\n75/2024,08h,7\n",
     "2024-03-14T08:00:00 2024-03-15T08:00:00",
     "v",
     5,
     "",
     {.timeFormat = "%j/%Y %Hh", .x = "d+c"}},
    {"asked for: twelve hours",
     "t,v\n03/14/24 12:05 PM,1\n03/14/24 01:05 PM,2\n03/15/24 12:05 AM,3\n03/15/24 13:05 PM,4\n",
     "2024-03-14T12:05:00 2024-03-15T00:05:00",
     "v",
     1,
     "",
     {.timeFormat = "%m/%d/%y %I:%M %p"}},
    {"asked for: a zone, over the hour that comes twice",
     "t,v\n2024-10-27 02:30,1\n2024-10-27 02:00,2\n2024-10-27 02:30,3\n",
     "2024-10-27T00:30:00Z 2024-10-27T01:30:00Z",
     "v",
     1,
     "twice",
     {.zone = "Europe/Berlin"}},
    {"asked for: a zone behind letters that leave it open",
     "t,v\n2024-03-14 08:00 CST,1\n2024-03-14 08:10 CST,2\n2024-03-14 08:20 CST,3\n",
     "2024-03-14T13:00:00Z 2024-03-14T13:20:00Z",
     "v",
     1,
     "",
     {.timeFormat = "%Y-%m-%d %H:%M %Z", .zone = "America/Chicago"}},
    {"asked for: a zone that is only a name for an offset",
     "t,v\n2024-07-14 08:00,1\n2024-07-14 08:10,2\n2024-07-14 08:20,3\n",
     "2024-07-13T22:00:00Z 2024-07-13T22:20:00Z",
     "v",
     1,
     "",
     {.zone = "AEST"}},
    {"asked for: an offset",
     "t,v\n2024-03-14 00:30,1\n2024-03-14 01:00,2\n2024-03-14 01:30,3\n",
     "2024-03-13T23:30:00Z 2024-03-14T00:30:00Z",
     "v",
     1,
     "",
     {.zone = "+01:00"}},
    {"times that go back",
     "t,v\n2024-10-27 02:00,1\n2024-10-27 02:30,2\n2024-10-27 02:00,3\n2024-10-27 02:30,4\n",
     "2024-10-27T02:00:00 2024-10-27T02:30:00",
     "v",
     1,
     "1 row of 4 stands behind later ones",
     {},
     4},
};

Result<Table> Open(const Folder& folder, const std::string& bytes, ReadOptions options) {
    folder.Write("file", bytes);
    options.path = folder.Path("file");
    return OpenTable(options);
}

std::string XText(const Table& table) {
    if (!table.HasTimes()) {
        const auto extent = table.xNumbers.FindExtent();
        return ShortNumber(extent.least) + " " + ShortNumber(extent.most);
    }
    const bool zoned = table.times.zoned;
    return IsoText(table.xTimes.front(), zoned) + " " + IsoText(table.xTimes.back(), zoned);
}

std::string ColumnsText(const Table& table) {
    std::string names;
    for (const ValueColumn& one : table.columns) {
        const Column& column = one.column;
        names +=
            (names.empty() ? "" : "|") + column.name + (column.unit.empty() ? "" : "<" + column.unit + ">");
    }
    return names;
}

std::string NotesText(const Table& table) {
    std::string notes;
    for (const auto& note : table.notes) notes += note.text + " " + note.option + "\n";
    return notes;
}

TEST(Layouts, OpenRightWithoutAnOption) {
    const Folder folder;
    for (const auto& one : kFiles) {
        SCOPED_TRACE(one.about);
        const auto table = Open(folder, one.bytes, one.options);
        EXPECT_TRUE(table) << table.Error().Text();
        if (!table) continue;
        EXPECT_EQ(table->rows, one.rows);
        EXPECT_EQ(XText(*table), one.x);
        EXPECT_EQ(ColumnsText(*table), one.columns);
        if (one.y != 0) {
            EXPECT_EQ(table->columns[0].values[0], one.y);
        }
        EXPECT_NE(NotesText(*table).find(one.note), std::string::npos) << NotesText(*table);
        EXPECT_EQ(NotesText(*table).find("looks like a mark") != std::string::npos,
                  std::string(one.note).find("--missing") != std::string::npos);
        EXPECT_EQ(table->unreadableCells,
                  one.about == std::string("year, month, day, hour, minute under comments, units below"));
    }
}

TEST(Layouts, AreRefusedWhereTwoReadingsAreAsGood) {
    const struct {
        const char* about;
        const char* bytes;
        std::vector<const char*> parts;  // of the message
        ReadOptions options = {};
    } cases[] = {
        {"day or month",
         "date,v\n01/02/2024 08:00,1\n01/02/2024 08:10,2\n01/02/2024 08:20,3\n",
         {"file:2: \"01/02/2024 08:00\" in column \"date\"", "2024-02-01", "2024-01-02", "--time-format dmy",
          "--time-format mdy"}},
        {"letters that name several zones",
         "t,v\n2024-03-14 08:00 CST,1\n2024-03-14 08:10 CST,2\n",
         {"file:2: \"2024-03-14 08:00 CST\" in column \"t\": CST is -06:00 in North America, +08:00 in China",
          "--zone", "%Z"}},
        {"some times with a zone, some without",
         "t,v\n2024-03-14 08:00Z,1\n2024-03-14 08:10,2\n",
         {"file:3: \"2024-03-14 08:10\" in column \"t\" names no zone"},
         {.zone = "Europe/Berlin"}},
        {"no numbers",
         "t,v,w\n1,,3\n2,b,4\n3,c,5\n",
         {"file:3: column \"v\" holds no numbers: \"b\""},
         {.y = {"v"}}},
        {"thousands or decimals",
         "t,v\n2024-03-14,\"1,234\"\n2024-03-15,\"2,345\"\n",
         {"file:2:", "1234 ", "1.234 ", "--decimal point", "--decimal comma"}},
        {"times in no known form, values behind them",
         "Zeit,level,temp\n14. Lenz 24 acht Uhr,1,2\n14. Lenz 24 neun Uhr,2,3\n",
         {"file:2: column \"Zeit\"", "14. Lenz", "--time-format", "-x"}},
        {"another form, no telling name, values behind it",
         "when,level,temp\nMo 14 III,1,2\nTu 15 III,2,3\n",
         {"file:2: column \"when\" looks like times", "\"Mo 14 III\""}},
        {"times over two lines", "time,v\n\"3/14\n8 h\",1\n\"3/15\n8 h\",2\n", {"file:2:", "\"3/14 8 h\""}},
        {"clocks without a date", "clock,v,w\n08:00,1,2\n08:10,2,3\n", {"column \"clock\"", "--time-column"}},
        {"JSON", "[{\"t\": 1, \"v\": 2}]\n", {"JSON"}},
        {"XML", "<?xml version=\"1.0\"?><a/>\n", {"XML"}},
        {"HTML", "\n<!DOCTYPE html><html>\n", {"HTML"}},
        {"PDF", "%PDF-1.7\n", {"PDF"}},
        {"a spreadsheet", "PK\3\4....[Content_Types].xml xl/workbook.xml", {"spreadsheet", "CSV"}},
        {"a broken gzip file", "\x1F\x8B\x08\x01", {"damaged"}},
        {"a zone that is none",
         "t,v\n2024-03-14,1\n2024-03-15,2\n",
         {"Europe/Berlni"},
         {.zone = "Europe/Berlni"}},
        {"a field that is none",
         "t,v\n2024-03-14,1\n2024-03-15,2\n",
         {"%1", "%Y"},
         {.timeFormat = "%1111111111d"}},
        {"a form without a year", "t,v\n03-14,1\n03-15,2\n", {"year"}, {.timeFormat = "%m-%d"}},
        {"a line without headings", "t,v\n1,2\n2,3\n", {"file:9:", "--header-line"}, {.headerLine = 9}},
    };
    const Folder folder;
    for (const auto& one : cases) {
        SCOPED_TRACE(one.about);
        const auto table = Open(folder, one.bytes, one.options);
        ASSERT_FALSE(table);
        for (const char* part : one.parts)
            EXPECT_NE(table.Error().Text().find(part), std::string::npos) << table.Error().Text();
        EXPECT_EQ(table.Error().message.find('\n'), std::string::npos);
    }
}

// What stands above the headings comes out as it was, the headings get the status column, also in the
// encoding of the file.
TEST(Layouts, KeepTheirLinesAndEncodingWhenCleaned) {
    const Folder folder;
    const struct {
        const char* about;
        std::string bytes;
        std::string cleaned;
    } cases[] = {
        {"preamble and logger lines", "TOA5,Pier,1\nTIME,Level\nTS,m\n,Smp\n2024-03-14,1\n2024-03-15,2\n",
         "TOA5,Pier,1\nTIME,Level,Level_status\nTS,m,\n,Smp,\n2024-03-14,2,moved+edited\n2024-03-15,3,moved+"
         "edited\n"},
        {"headings in a comment", "# pier\n#t v\n1 2\n2 3\n",
         "# pier\n#t v v_status\n1 3 moved+edited\n2 4 moved+edited\n"},
        {"Latin-1", "t,H\xF6he\n1,2\n2,3\n",
         "t,H\xF6he,H\xF6he_status\n1,3,moved+edited\n2,4,moved+edited\n"},
        {"UTF-16", As("UTF-16LE", "\xEF\xBB\xBFt,H\xC3\xB6he\r\n1,2\r\n2,3\r\n"),
         As("UTF-16LE",
            "\xEF\xBB\xBFt,H\xC3\xB6he,H\xC3\xB6he_status\r\n1,3,moved+edited\r\n2,4,moved+edited\r\n")}};
    for (const auto& one : cases) {
        SCOPED_TRACE(one.about);
        folder.Write("in", one.bytes);
        const auto run = folder.Run("clean in --translate 1 -o out");
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(folder.Read("out"), one.cleaned);
    }
}

}  // namespace
}  // namespace app
