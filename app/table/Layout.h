// What kind of table a text is: its delimiter and decimal sign, header, units, and what each column holds.
// Everything is guessed from the first rows unless the caller says it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/table/CellNumber.h"
#include "app/table/ReadOptions.h"
#include "app/table/RecordIndex.h"
#include "app/table/Result.h"
#include "app/table/TextEncoding.h"
#include "app/table/TimeText.h"

namespace app {

enum class ColumnKind { Empty, Number, Time, Text };

struct Column {
    std::string name;  // without its unit; "1", "2"... where the table has no header
    std::string unit;
    int field = 0;  // 0 is the first
    ColumnKind kind = ColumnKind::Empty;
    TimeForm timeForm = TimeForm::None;
    std::vector<TimePart> parts = {};  // of a time that several columns hold; `field` is then the first one's
    std::optional<TimeRole> role = {};  // of a column of clocks
    bool dayOrderOpen = false;          // day or month may come first, and every row fits both
    bool mayBeTime = false;             // text with digits that is another in other rows
    std::string example = {};           // the first filled cell, for messages
    std::int64_t exampleLine = 0;       // and its line
    char grouping = 0;                  // between the thousands of its numbers; 0: there are none
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

// A record above the data; all of them together are the bytes from the mark to the data.
struct TopRecord {
    std::size_t begin = 0;
    RecordRole role = RecordRole::Comment;
};

struct Layout {
    std::size_t begin = 0;  // behind the byte-order mark
    std::vector<TopRecord> top;
    std::size_t dataBegin = 0;
    std::int64_t dataLine = 1;
    char delimiter = ',';
    char decimalSign = '.';
    bool hasHeader = false;
    bool hasUnitsRow = false;
    std::int64_t headerLine = 0;
    std::string customTime;
    std::vector<Column> columns;
    std::optional<Column> composed;  // the time that several of the columns hold
    std::vector<ReadNote> notes;
};

// Fails with one message that names the line when `text` is no table of at least two columns with numbers or
// times. `name` is the file's, for messages.
Result<Layout> GuessLayout(std::string_view text, const std::string& name, const ReadOptions& options,
                           const TextEncoding& encoding = TextEncoding());

// The column called `wanted` (its name, its name with the unit, or its number from 1), or a usage error that
// suggests the nearest name.
Result<int> FindColumn(const Layout& layout, const std::string& wanted);
// "comma", "tab", ... for messages and reports.
const char* DelimiterName(char delimiter);

}  // namespace app
