// A table as it was read: the file's bytes, where its records begin, and the values of the columns asked for.
// Values of data row r stand at index r of every column; all other text stays in the bytes.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "app/table/Bytes.h"
#include "app/table/Layout.h"
#include "app/table/RecordIndex.h"
#include "app/table/StatusText.h"
#include "app/table/Values.h"

namespace app {

struct ValueColumn {
    Column column;
    Values values;
    int decimals = 0;  // the most that a cell is written with
    std::int64_t missing = 0;
    std::int64_t unreadable = 0;
    StatusFields statusFields = {};           // that an earlier cleaning left
    std::vector<unsigned short> status = {};  // and the status word of each row, where there is one
    bool foreignStatus = false;               // the column holds something else after all
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

// A file, for reports.
struct InputDigest {
    std::size_t size = 0;
    std::string sha256;  // empty where the table's bytes are the file's
};

// What has been read of a table's rows, or of those of a stretch of it.
struct Rows {
    RecordIndex records;
    std::int64_t lines = 0;
    std::int64_t rows = 0;  // Data records

    Values xNumbers;                   // one of these two is filled
    std::vector<Microseconds> xTimes;  //
    int xDecimals = 0;
    std::vector<std::int64_t> shortRows;  // ascending: data rows that lack cells at their end
    TimeNotes times;
    std::vector<ValueColumn> columns;

    std::int64_t skippedRows = 0;
    std::int64_t unreadableCells = 0;
    std::vector<Fault> faults;  // the first kMostFaults of both
    bool notText = false;       // the line behind the last one holds a byte of value 0

    static constexpr std::size_t kMostFaults = 1000;

    // Without rows again, of the same columns.
    void Clear();
    void Reserve(std::size_t expectedRows, bool hasTimes);
    // The rows of the stretch that follows.
    void Append(const Rows& more);
    bool IsShort(std::int64_t row) const {
        return std::binary_search(shortRows.begin(), shortRows.end(), row);
    }
};

struct Table : Rows {
    std::string name;
    Bytes bytes;
    Layout layout;
    std::vector<ReadNote> notes;
    TextEncoding encoding = TextEncoding();  // of the file
    InputDigest input = {};
    std::string zone = {};  // of times that name none, in the file and in options; empty: UTC
    Column x;

    bool HasTimes() const { return x.kind == ColumnKind::Time; }
};

// A cell as it stands in the file, for messages: this looks at the text from its start.
struct CellPlace {
    std::int64_t line = 0;
    std::string text;
};
CellPlace FindCell(const Table& table, std::int64_t row, int field);

}  // namespace app
