#include "app/table/Layout.h"

#include <algorithm>
#include <utility>

#include "app/table/EmptyTable.h"
#include "app/table/Headings.h"
#include "app/table/LayoutTrial.h"
#include "app/table/TimeColumns.h"
#include "tavin/tavin.h"

namespace app {

namespace {

std::string Excerpt(const std::string& text) {
    constexpr std::size_t kMost = 40;
    return text.size() <= kMost ? text : text.substr(0, kMost) + "...";
}

Failure NoTable(std::string_view text, const std::string& name, const Trial& trial) {
    std::int64_t line = 1;
    std::string seen = Excerpt(std::string(text.substr(0, text.find_first_of("\r\n"))));
    const auto row = std::find_if(trial.sample.begin(), trial.sample.end(),
                                  [](const auto& record) { return record.record.kind == Record::Row; });
    if (row != trial.sample.end()) {
        line = row->record.line;
        seen.clear();
        for (const auto& cell : row->cells) seen += (seen.empty() ? "" : " ") + cell;
    }
    return Refusal(
        name + ":" + std::to_string(line) +
            ": not a table with at least two columns of numbers or times (\"" + Excerpt(seen) + "\")",
        "name the delimiter with --delimiter, the line of the headings with --header-line or the form of the "
        "times with --time-format");
}

void SplitUnit(Column& column) {
    auto& name = column.name;
    if (name.size() < 3) return;
    const char close = name.back();
    if (close != ']' && close != ')') return;
    const auto open = name.rfind(close == ']' ? '[' : '(');
    if (open == std::string::npos || open == 0) return;
    constexpr std::size_t kLongest = 11;
    const std::string unit = name.substr(open + 1, name.size() - open - 2);
    // What is longer is a remark.
    if (close == ')' && (unit.size() > kLongest || unit.find_first_of(":,") != std::string::npos)) return;
    column.unit = unit;
    name.erase(open);
    name.erase(name.find_last_not_of(' ') + 1);
}

std::vector<Column> NamedColumns(const Trial& trial, const Headings& headings, const TextEncoding& encoding) {
    std::vector<Column> columns(trial.fields);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        Column& column = columns[i];
        column.field = static_cast<int>(i);
        if (i < headings.nameCells.size()) {
            column.name = encoding.Shown(headings.nameCells[i]);
            SplitUnit(column);
        }
        if (i < headings.unitCells.size()) column.unit = encoding.Shown(headings.unitCells[i]);
        const auto& unit = column.unit;
        if (unit.size() > 2 && (unit.front() == '[' || unit.front() == '('))
            column.unit = unit.substr(1, unit.size() - 2);
        if (column.name.empty()) column.name = std::to_string(i + 1);
    }
    return columns;
}

// The lines that the user skips, then the records of the sample above the data.
void PlaceTop(Layout& layout, std::string_view text, Start start, const Trial& trial,
              const Headings& headings) {
    for (std::size_t at = layout.begin; at < start.begin;) {
        layout.top.push_back({at, RecordRole::Comment});
        at = std::min(text.find('\n', at), start.begin - 1) + 1;
    }
    for (std::size_t i = 0; i < trial.data; ++i) {
        const Record& record = trial.sample[i].record;
        RecordRole role = RecordRole::Comment;
        if (i == headings.names)
            role = RecordRole::Header;
        else if (headings.names != Headings::kNone && i > headings.names && i <= headings.last &&
                 (record.kind == Record::Row || i == headings.units))
            role = RecordRole::Units;
        layout.top.push_back({record.begin, role});
    }
    layout.dataBegin = trial.sample[trial.data].record.begin;
    layout.dataLine = trial.sample[trial.data].record.line;
    layout.hasHeader = headings.names != Headings::kNone;
    layout.hasUnitsRow = headings.units != Headings::kNone;
    if (!layout.hasHeader) return;
    layout.headerLine = trial.sample[headings.names].record.line;
    const bool comment = trial.sample[headings.names].record.kind == Record::Comment;
    if (layout.headerLine > 1)
        layout.notes.push_back({ReadNote::Reading,
                                std::string("the headings are in ") + (comment ? "the comment of " : "") +
                                    "line " + std::to_string(layout.headerLine),
                                "--header-line N"});
    if (layout.hasUnitsRow)
        layout.notes.push_back(
            {ReadNote::Reading,
             "the units are in line " + std::to_string(trial.sample[headings.units].record.line), ""});
}

// Behind the lines that the user skips.
Start SkipLines(std::string_view text, std::size_t begin, std::int64_t lines) {
    Start start{begin, 1};
    const char lineBreak = text.find('\n') == std::string_view::npos ? '\r' : '\n';
    for (; start.line <= lines; ++start.line) {
        const auto end = text.find(lineBreak, start.begin);
        if (end == std::string_view::npos) break;
        start.begin = end + 1;
    }
    return start;
}

std::string Cut(std::string text, char c) {
    std::erase(text, c);
    return text;
}

// Where "1,234" can be a thousand or little more than one, and nothing in the table says which.
std::optional<Failure> DoubtOfSign(const std::string& name, Layout& layout, Trial& best, Trial& rival) {
    if (rival.score <= 0) return std::nullopt;
    const auto grouped = [](const Tally& tally) { return tally.grouped > 0; };
    const auto column = std::find_if(best.tallies.begin(), best.tallies.end(), grouped);
    if (column == best.tallies.end() || column->grouping != ',' || best.decimalSign != '.')
        return std::nullopt;
    const std::string cell = column->groupedCell;
    std::string decimal = cell;
    std::replace(decimal.begin(), decimal.end(), ',', '.');
    const std::string readings = "\"" + cell + "\" is " + Cut(cell, ',') +
                                 " with a comma between the thousands, or " + decimal +
                                 " with a decimal comma";
    // Who separates by semicolons needs the comma for decimals.
    if (best.delimiter == ';') {
        layout.notes.push_back({ReadNote::Doubt,
                                readings + "; taken as the decimal comma that semicolons are used with",
                                "--decimal point"});
        std::swap(best, rival);
        return std::nullopt;
    }
    const auto field = static_cast<std::size_t>(column - best.tallies.begin());
    std::int64_t line = best.sample[best.data].record.line;
    for (std::size_t r = best.data; r < best.sample.size(); ++r)
        if (best.Cell(r, field) == cell) {
            line = best.sample[r].record.line;
            break;
        }
    return Refusal(name + ":" + std::to_string(line) + ": " + readings,
                   "say which with --decimal point or --decimal comma");
}

void NoteGroupings(Layout& layout, const Trial& trial) {
    for (const auto& column : layout.columns) {
        if (column.grouping == 0) continue;
        const auto& cell = trial.tallies[static_cast<std::size_t>(column.field)].groupedCell;
        // One sign alone could be the decimal one, too.
        const bool alone = std::count(cell.begin(), cell.end(), column.grouping) == 1 &&
                           cell.find(layout.decimalSign) == std::string::npos;
        layout.notes.push_back(
            {alone ? ReadNote::Doubt : ReadNote::Reading,
             "\"" + cell + "\" in column \"" + column.name + "\" is read as " + Cut(cell, column.grouping),
             layout.decimalSign == '.' ? "--decimal comma" : "--decimal point"});
    }
}

}  // namespace

Result<Layout> GuessLayout(std::string_view text, const std::string& name, const ReadOptions& options,
                           const TextEncoding& encoding) {
    Layout layout;
    if (text.substr(0, 3) == "\xEF\xBB\xBF") layout.begin = 3;
    const Start start = SkipLines(text, layout.begin, options.skip);
    Trial rival;
    Trial trial = BestTrial(text, start, options, rival);
    const std::int64_t headerLine = options.headerLine.value_or(0);
    const auto noHeadings = [&](const char* what) {
        return Refusal(
            name + ":" + std::to_string(headerLine) + ": " + what,
            "--header-line counts the lines of the file from 1; 0 says that no line names the columns");
    };
    if (trial.score <= 0 && headerLine > 0) return noHeadings("no table begins below this line");
    if (trial.score <= 0)
        if (const auto failure = EmptyTable(text, name, start, options)) return *failure;
    if (trial.score <= 0) return NoTable(text.substr(start.begin), name, trial);
    if (const auto failure = DoubtOfSign(name, layout, trial, rival)) return *failure;
    layout.delimiter = trial.delimiter;
    layout.decimalSign = trial.decimalSign;
    if (options.timeFormat.find('%') != std::string::npos) layout.customTime = options.timeFormat;
    const Headings headings = FindHeadings(text, trial, options);
    if (headerLine > 0 && headings.names == Headings::kNone)
        return noHeadings("there are no headings in this line");
    PlaceTop(layout, text, start, trial, headings);
    layout.columns = NamedColumns(trial, headings, encoding);
    FindTimes(layout, text, trial, options.timeFormat);
    for (auto& column : layout.columns) column.example = encoding.Shown(column.example);
    NoteGroupings(layout, trial);
    return layout;
}

Result<int> FindColumn(const Layout& layout, const std::string& wanted) {
    for (const auto& column : layout.columns)
        for (const auto& spelling :
             {column.name, column.name + " [" + column.unit + "]", column.name + " (" + column.unit + ")"})
            if (spelling == wanted) return column.field;
    double number = 0;
    if (ReadNumber(wanted, '.', number) && number >= 1 && number <= double(layout.columns.size()) &&
        number == static_cast<int>(number))
        return static_cast<int>(number) - 1;
    std::vector<std::string> known;
    std::string names;
    for (const auto& column : layout.columns) {
        names += (names.empty() ? "\"" : ", \"") + column.name + "\"";
        known.push_back(column.name);
    }
    const std::string nearest = NearestName(wanted, known);
    std::string message = "there is no column \"" + wanted + "\"";
    message += nearest.empty() ? "; the columns are " + names : "; did you mean \"" + nearest + "\"?";
    return UsageError(message);
}

const char* DelimiterName(char delimiter) {
    switch (delimiter) {
        case '\t':
            return "tab";
        case ';':
            return "semicolon";
        case '|':
            return "bar";
        case kBlanks:
            return "blanks";
        default:
            return "comma";
    }
}

}  // namespace app
