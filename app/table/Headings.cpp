#include "app/table/Headings.h"

#include <algorithm>
#include <iterator>

namespace app {

namespace {

using Cells = std::vector<std::string>;

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

constexpr const char* kUnits[] = {"s",
                                  "sec",
                                  "ms",
                                  "us",
                                  "min",
                                  "h",
                                  "hr",
                                  "hour",
                                  "hours",
                                  "d",
                                  "day",
                                  "days",
                                  "m",
                                  "mm",
                                  "cm",
                                  "km",
                                  "nm",
                                  "ft",
                                  "in",
                                  "deg",
                                  "degt",
                                  "degc",
                                  "degf",
                                  "degk",
                                  "c",
                                  "f",
                                  "k",
                                  "\xC2\xB0"
                                  "c",
                                  "\xB0"
                                  "c",
                                  "pa",
                                  "hpa",
                                  "kpa",
                                  "mbar",
                                  "bar",
                                  "dbar",
                                  "psi",
                                  "v",
                                  "mv",
                                  "a",
                                  "ma",
                                  "w",
                                  "kw",
                                  "kwh",
                                  "%",
                                  "ppm",
                                  "ppb",
                                  "psu",
                                  "pss",
                                  "ntu",
                                  "utc",
                                  "gmt",
                                  "ts",
                                  "rn",
                                  "date",
                                  "time",
                                  "mn",
                                  "yr",
                                  "mo",
                                  "dy",
                                  "hz",
                                  "khz",
                                  "rad",
                                  "lux",
                                  "nmi",
                                  "mi",
                                  "degrees",
                                  "degree",
                                  "kg",
                                  "g",
                                  "l",
                                  "counts",
                                  "count",
                                  "none",
                                  "unitless",
                                  "-",
                                  "1",
                                  "degree_c"};
constexpr const char* kProcessings[] = {"smp", "avg", "min",    "max",     "tot",  "std",
                                        "med", "wvc", "sample", "average", "total"};

template <std::size_t N>
bool IsOneOf(const char* const (&words)[N], const std::string& text) {
    return std::any_of(std::begin(words), std::end(words), [&](const char* word) { return text == word; });
}

bool IsUnit(const std::string& cell) {
    const std::string text = Lower(cell);
    if (IsOneOf(kUnits, text) || text.compare(0, 8, "degrees_") == 0 || text.compare(0, 7, "degree_") == 0)
        return true;
    const bool bracketed = text.size() > 1 && ((text.front() == '[' && text.back() == ']') ||
                                               (text.front() == '(' && text.back() == ')'));
    // m/s, m3/s, m s-1, W/m^2
    return bracketed || (text.size() <= 10 &&
                         (text.find('/') != std::string::npos || text.find("-1") != std::string::npos ||
                          text.find('^') != std::string::npos));
}

// 5s, 20d, 14n: a width and a letter for each column.
bool IsFormat(const std::string& cell) {
    return cell.size() > 1 && cell.size() < 5 &&
           std::string_view("sdnSDN").find(cell.back()) != std::string_view::npos &&
           std::all_of(cell.begin(), cell.end() - 1, [](unsigned char c) { return std::isdigit(c); });
}

// How many cells there are, and for how many of them the test holds.
template <class Test>
bool Mostly(const Cells& cells, const Test& test, double share) {
    int filled = 0;
    int held = 0;
    for (const auto& cell : cells) {
        if (cell.empty()) continue;
        ++filled;
        held += test(cell);
    }
    return filled > 0 && held >= share * filled;
}

// The cells of a comment line without its sign.
Cells CommentCells(std::string_view line, char delimiter) {
    line = line.substr(0, LengthWithoutBreak(line));
    line.remove_prefix(std::min(line.find_first_not_of("#%/ \t"), line.size()));
    Cells cells;
    Records records(line, delimiter);
    Record record;
    records.Next(record, [&](int, std::string_view cell) { cells.emplace_back(cell); });
    return cells;
}

struct Line {
    std::size_t index;
    Cells cells;
};

bool Fits(const Cells& cells, const Trial& trial) {
    const std::size_t fields = trial.fields;
    if (cells.size() == fields) return true;
    // A delimiter at the end of the rows makes an empty column that has no name.
    return cells.size() + 1 == fields &&
           trial.tallies[fields - 1].Values() + trial.tallies[fields - 1].texts == 0;
}

// The last lines of the data's width above it that stand together, from the lowest up; comments right above.
std::vector<Line> LinesAbove(std::string_view text, const Trial& trial, bool comments) {
    std::vector<Line> lines;
    for (std::size_t i = trial.data; i-- > 0;) {
        const auto& record = trial.sample[i].record;
        const auto bytes = text.substr(record.begin, record.end - record.begin);
        const bool blank = bytes.find_first_not_of(" \t\r\n") == std::string_view::npos;
        if (blank || (!comments && record.kind == Record::Comment)) {
            if (lines.empty()) continue;
            break;
        }
        if (comments && record.kind != Record::Comment) break;
        Cells cells = comments ? CommentCells(bytes, trial.delimiter) : trial.sample[i].cells;
        // Between the headings and the data a line of another width may stand.
        if (!Fits(cells, trial) && lines.empty() && !comments) continue;
        if (!Fits(cells, trial)) break;
        lines.push_back({i, std::move(cells)});
    }
    return lines;
}

void StripQuotes(Cells& cells) {
    const auto quoted = [](const auto& cell) {
        return cell.size() > 1 && cell.front() == '\'' && cell.back() == '\'';
    };
    if (!Mostly(cells, quoted, 1)) return;
    for (auto& cell : cells)
        if (quoted(cell)) cell = cell.substr(1, cell.size() - 2);
}

Headings Named(std::vector<Line> lines) {
    Headings headings;
    if (lines.empty()) return headings;
    headings.last = lines.front().index;
    std::size_t at = 0;
    while (at + 1 < lines.size() && LooksLikeDescription(lines[at].cells)) ++at;
    if (at + 1 < lines.size() && LooksLikeUnits(lines[at].cells)) {
        headings.units = lines[at].index;
        headings.unitCells = std::move(lines[at].cells);
        ++at;
    }
    headings.names = lines[at].index;
    headings.nameCells = std::move(lines[at].cells);
    StripQuotes(headings.nameCells);
    StripQuotes(headings.unitCells);
    return headings;
}

// The names in the line asked for, and units right below.
Headings AtLine(std::string_view text, const Trial& trial, std::int64_t line) {
    std::vector<Line> lines;
    for (std::size_t i = trial.data; i-- > 0;) {
        const auto& [record, cells] = trial.sample[i];
        if (record.line < line) break;
        const auto bytes = text.substr(record.begin, record.end - record.begin);
        Cells read = record.kind == Record::Comment ? CommentCells(bytes, trial.delimiter) : cells;
        if (record.line == line || Fits(read, trial)) lines.push_back({i, std::move(read)});
    }
    if (lines.empty() || trial.sample[lines.back().index].record.line != line) return {};
    while (lines.size() > 1 && !LooksLikeDescription(lines.front().cells) &&
           !LooksLikeUnits(lines.front().cells))
        lines.erase(lines.begin());
    Headings headings = Named({lines.back()});
    headings.last = lines.front().index;
    for (auto& one : lines)
        if (one.index != headings.names && headings.units == Headings::kNone && LooksLikeUnits(one.cells)) {
            headings.units = one.index;
            headings.unitCells = std::move(one.cells);
        }
    return headings;
}

}  // namespace

bool LooksLikeUnits(const Cells& cells) { return Mostly(cells, IsUnit, 0.6); }
bool LooksLikeDescription(const Cells& cells) {
    return Mostly(cells, IsFormat, 1) ||
           Mostly(
               cells, [](const auto& cell) { return IsOneOf(kProcessings, Lower(cell)); }, 1);
}

Headings FindHeadings(std::string_view text, const Trial& trial, const ReadOptions& options) {
    if (options.headerLine)
        return *options.headerLine > 0 ? AtLine(text, trial, *options.headerLine) : Headings();
    auto lines = LinesAbove(text, trial, false);
    if (lines.empty()) lines = LinesAbove(text, trial, true);
    return Named(std::move(lines));
}

}  // namespace app
