// What kind of table a text is: its delimiter and decimal sign, header, units, and what each column holds.
// Everything is guessed from the first rows unless the caller says it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/table/NumberText.h"
#include "app/table/Result.h"
#include "app/table/TimeText.h"

namespace app {

struct LayoutOptions {
    std::optional<char> delimiter;
    std::optional<char> decimalSign;
    std::optional<bool> header;        // whether the first row names the columns
    std::string timeFormat;            // iso, epoch, epoch-ms, number or a form with % fields; empty: guess
    std::vector<std::string> missing;  // further names for no value
};

enum class ColumnKind { Empty, Number, Time, Text };

struct Column {
    std::string name;  // without its unit; "1", "2"... where the table has no header
    std::string unit;
    int field = 0;  // 0 is the first
    ColumnKind kind = ColumnKind::Empty;
    TimeForm timeForm = TimeForm::None;
};

struct Layout {
    std::size_t begin = 0;  // behind the byte-order mark
    char delimiter = ',';
    char decimalSign = '.';
    bool hasHeader = false;
    bool hasUnitsRow = false;
    std::string customTime;
    std::vector<Column> columns;
};

// Fails with one message that names the line when `text` is no table of at least two columns with numbers or
// times. `name` is the file's, for messages.
Result<Layout> GuessLayout(std::string_view text, const std::string& name, const LayoutOptions& options);

// The column called `wanted` (its name, its name with the unit, or its number from 1), or a usage error that
// suggests the nearest name.
Result<int> FindColumn(const Layout& layout, const std::string& wanted);
// "comma", "tab", ... for messages and reports.
const char* DelimiterName(char delimiter);

}  // namespace app
