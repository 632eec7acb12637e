// A table as it was read: the file's bytes, where its records begin, and the values of the columns asked for.
// Values of data row r stand at index r of every column; all other text stays in the bytes.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "app/table/Layout.h"

namespace app {

// What stands in place of a value. Cells that hold "inf" or "nan" never get into a column as values.
constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();
constexpr double kUnreadable = std::numeric_limits<double>::infinity();
constexpr bool HasValue(double value) { return value - value == 0; }

struct ValueColumn {
    Column column;
    std::vector<double> values;  // of a time column: seconds since 1970
    int decimals = 0;            // the most that a cell is written with
    std::int64_t missing = 0;
    std::int64_t unreadable = 0;
};

struct TimeNotes {
    bool zoned = false;  // some time names its zone: times are shown in UTC
    bool local = false;  // some time names none
    std::int64_t cut = 0;
};

// A row or cell that could not be read.
struct Fault {
    std::int64_t line;
    std::string reason;
};

// What the user should know about how a table was read.
struct ReadNote {
    enum Kind {
        Reading,  // a fact that explains the result: "headings in line 5"
        Doubt,    // it could also be read in another way
    };
    Kind kind = Reading;
    std::string text;
    std::string option;  // of the command line, that decides otherwise: "--time-format mdy"; empty: none
};

struct Table {
    std::string name;
    std::string bytes;
    Layout layout;
    std::vector<std::uint64_t> records;  // first byte, and the role in the top eight bits
    std::int64_t rows = 0;               // Data records

    Column x;
    std::vector<double> xNumbers;      // one of these two is filled
    std::vector<Microseconds> xTimes;  //
    int xDecimals = 0;
    std::vector<std::int64_t> shortRows;  // ascending: data rows that lack cells at their end
    TimeNotes times;
    std::vector<ValueColumn> columns;

    std::int64_t skippedRows = 0;
    std::int64_t unreadableCells = 0;
    std::vector<Fault> faults;  // the first kMostFaults of both

    static constexpr std::size_t kMostFaults = 1000;

    std::vector<ReadNote> notes;

    RecordRole Role(std::size_t record) const { return static_cast<RecordRole>(records[record] >> 56); }
    std::size_t Begin(std::size_t record) const { return records[record] & ((std::uint64_t{1} << 56) - 1); }
    std::string_view RecordText(std::size_t record) const {
        const std::size_t begin = Begin(record);
        const std::size_t end = record + 1 < records.size() ? Begin(record + 1) : bytes.size();
        return std::string_view(bytes).substr(begin, end - begin);
    }
    bool IsShort(std::int64_t row) const {
        return std::binary_search(shortRows.begin(), shortRows.end(), row);
    }
    bool HasTimes() const { return x.kind == ColumnKind::Time; }
};

}  // namespace app
