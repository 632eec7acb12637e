#include "app/table/Layout.h"

#include <algorithm>
#include <map>

#include "app/table/Records.h"
#include "tavin/tavin.h"

namespace app {

namespace {

constexpr std::size_t kSampleRows = 1000;
constexpr char kDelimiters[] = {'\t', ';', '|', ',', kBlanks};

struct SampleRow {
    std::int64_t line;
    std::vector<std::string> cells;
};
using Sample = std::vector<SampleRow>;

Sample TakeSample(std::string_view text, std::size_t begin, char delimiter) {
    Sample sample;
    Records records(text, delimiter, begin);
    Record record;
    SampleRow row;
    while (sample.size() < kSampleRows &&
           records.Next(record, [&](int, std::string_view cell) { row.cells.emplace_back(cell); })) {
        row.line = record.line;
        if (record.kind == Record::Row) sample.push_back(std::move(row));
        row.cells.clear();
    }
    return sample;
}

// Tells what a cell holds.
class CellReader {
  public:
    CellReader(const ReadOptions& options, char decimalSign)
        : missing_(options.missing, decimalSign), decimalSign_(decimalSign) {
        if (options.timeFormat.find('%') != std::string::npos)
            custom_.emplace(TimeForm::Custom, options.timeFormat, decimalSign);
    }
    ColumnKind KindOf(std::string_view cell) const {
        double number = 0;
        ReadTime time;
        if (missing_.IsMissing(cell)) return ColumnKind::Empty;
        if (custom_ && custom_->Read(cell, time)) return ColumnKind::Time;
        if (ReadNumber(cell, decimalSign_, number))
            return missing_.IsMissing(number) ? ColumnKind::Empty : ColumnKind::Number;
        return ReadIsoTime(cell, time) ? ColumnKind::Time : ColumnKind::Text;
    }

  private:
    MissingValues missing_;
    char decimalSign_;
    std::optional<TimeReader> custom_;
};

struct Tally {
    int numbers = 0;
    int times = 0;
    int texts = 0;
    ColumnKind Kind() const {
        if (numbers + times + texts == 0) return ColumnKind::Empty;
        if (texts > numbers + times) return ColumnKind::Text;
        return times >= numbers ? ColumnKind::Time : ColumnKind::Number;
    }
    bool HasValues() const { return Kind() == ColumnKind::Number || Kind() == ColumnKind::Time; }
    void Add(ColumnKind kind) {
        numbers += kind == ColumnKind::Number;
        times += kind == ColumnKind::Time;
        texts += kind == ColumnKind::Text;
    }
};

// A sample as one choice of delimiter and decimal sign reads it.
struct Trial {
    char delimiter = ',';
    char decimalSign = '.';
    Sample sample;
    std::size_t fields = 0;  // of most rows
    std::vector<Tally> tallies;
    std::size_t headings = 0;  // rows of names and units before the data
    double score = 0;
};

std::size_t UsualFieldCount(const Sample& sample) {
    std::map<std::size_t, int> counts;
    for (const auto& row : sample) ++counts[row.cells.size()];
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == counts.end() ? 0 : most->first;
}

// Whether row `index` names columns: words where the rows below have values.
bool IsHeading(const Trial& trial, std::size_t index, const CellReader& reader) {
    if (index + 1 >= trial.sample.size()) return false;
    const auto& cells = trial.sample[index].cells;
    bool words = false;
    for (std::size_t i = 0; i < cells.size() && i < trial.tallies.size(); ++i) {
        if (!trial.tallies[i].HasValues()) continue;
        const ColumnKind kind = reader.KindOf(cells[i]);
        if (kind == ColumnKind::Number || kind == ColumnKind::Time) return false;
        words |= kind == ColumnKind::Text;
    }
    return words;
}

// How much of the sample is a regular table of values, 0 to 1.1; 0 without two columns.
double Score(const Trial& trial) {
    if (trial.fields < 2) return 0;
    std::size_t regular = 0;
    for (const auto& row : trial.sample) regular += row.cells.size() == trial.fields;
    double readable = 0;
    double cells = 0;
    int columnsWithValues = 0;
    for (const auto& tally : trial.tallies) {
        readable += tally.numbers + tally.times;
        cells += tally.numbers + tally.times + tally.texts;
        columnsWithValues += tally.HasValues();
    }
    if (columnsWithValues < 2) return 0;
    return static_cast<double>(regular) / static_cast<double>(trial.sample.size()) * (0.1 + readable / cells);
}

Trial Try(std::string_view text, std::size_t begin, char delimiter, char decimalSign,
          const ReadOptions& options) {
    Trial trial{delimiter, decimalSign, TakeSample(text, begin, delimiter), 0, {}, 0, 0};
    const CellReader reader(options, decimalSign);
    trial.fields = UsualFieldCount(trial.sample);
    trial.tallies.resize(trial.fields);
    for (const auto& row : trial.sample)
        for (std::size_t i = 0; i < row.cells.size() && i < trial.fields; ++i)
            trial.tallies[i].Add(reader.KindOf(row.cells[i]));
    // A short table's headings would outvote its values: they are judged again without them.
    const std::size_t most = options.header && !*options.header ? 0 : 2;
    for (std::size_t rows = std::min(most, trial.sample.size()); rows > 0; --rows) {
        std::vector<Tally> below(trial.fields);
        for (std::size_t r = rows; r < trial.sample.size(); ++r)
            for (std::size_t i = 0; i < trial.sample[r].cells.size() && i < trial.fields; ++i)
                below[i].Add(reader.KindOf(trial.sample[r].cells[i]));
        std::swap(trial.tallies, below);
        bool all = true;
        for (std::size_t r = 0; r < rows; ++r) all &= IsHeading(trial, r, reader);
        all |= rows == 1 && options.header;
        if (all) {
            trial.headings = rows;
            break;
        }
        std::swap(trial.tallies, below);
    }
    trial.score = Score(trial);
    return trial;
}

Trial BestTrial(std::string_view text, std::size_t begin, const ReadOptions& options) {
    Trial best;
    for (const char delimiter : kDelimiters) {
        if (options.delimiter && *options.delimiter != delimiter) continue;
        // A decimal comma may stand between commas, in quotes.
        for (const char sign : {'.', ','}) {
            if (options.decimalSign && *options.decimalSign != sign) continue;
            Trial trial = Try(text, begin, delimiter, sign, options);
            if (trial.score > best.score || best.sample.empty()) best = std::move(trial);
        }
    }
    return best;
}

std::string Excerpt(const std::string& text) {
    constexpr std::size_t kMost = 40;
    return text.size() <= kMost ? text : text.substr(0, kMost) + "...";
}

Failure NoTable(std::string_view text, const std::string& name, const Trial& trial) {
    std::int64_t line = 1;
    std::string seen = Excerpt(std::string(text.substr(0, text.find_first_of("\r\n"))));
    if (!trial.sample.empty()) {
        line = trial.sample.front().line;
        seen.clear();
        for (const auto& cell : trial.sample.front().cells) seen += (seen.empty() ? "" : " ") + cell;
    }
    return Refusal(name + ":" + std::to_string(line) +
                       ": not a table with at least two columns of numbers or times (\"" + Excerpt(seen) +
                       "\")",
                   "name the delimiter with --delimiter or the form of the times with --time-format");
}

void SplitUnit(Column& column) {
    auto& name = column.name;
    if (name.size() < 3) return;
    const char close = name.back();
    if (close != ']' && close != ')') return;
    const auto open = name.rfind(close == ']' ? '[' : '(');
    if (open == std::string::npos || open == 0) return;
    column.unit = name.substr(open + 1, name.size() - open - 2);
    name.erase(open);
    name.erase(name.find_last_not_of(' ') + 1);
}

bool SoundsLikeTime(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
    for (const char* word : {"time", "date", "epoch", "unix", "stamp"})
        if (name.find(word) != std::string::npos) return true;
    return name == "ts" || name == "t";
}

// Numbers between 1985 and 2100, when read as seconds or milliseconds since 1970, in a column that is named
// like a time or is the first of a table without names.
TimeForm EpochForm(const Trial& trial, const Column& column, bool named) {
    if (named ? !SoundsLikeTime(column.name) : column.field != 0) return TimeForm::None;
    double least = 1e300;
    double most = -1e300;
    for (std::size_t r = trial.headings; r < trial.sample.size(); ++r) {
        const auto& cells = trial.sample[r].cells;
        double value = 0;
        if (static_cast<std::size_t>(column.field) >= cells.size()) continue;
        if (!ReadNumber(cells[static_cast<std::size_t>(column.field)], trial.decimalSign, value)) continue;
        least = std::min(least, value);
        most = std::max(most, value);
    }
    constexpr double k1985 = 473385600;
    constexpr double k2100 = 4102444800;
    if (least >= k1985 && most <= k2100) return TimeForm::EpochSeconds;
    if (least >= k1985 * 1000 && most <= k2100 * 1000) return TimeForm::EpochMilliseconds;
    return TimeForm::None;
}

// A form given by name holds for every column that can be one, so that any of them may be the x column.
TimeForm FormOf(const Trial& trial, const Column& column, bool named, const std::string& asked) {
    if (asked == "number" && column.kind == ColumnKind::Number) return TimeForm::None;
    if (column.kind == ColumnKind::Time)
        return asked.find('%') != std::string::npos ? TimeForm::Custom : TimeForm::Iso;
    if (column.kind != ColumnKind::Number || asked.find('%') != std::string::npos || asked == "iso")
        return TimeForm::None;
    return EpochForm(trial, column, named);
}

std::vector<Column> MakeColumns(const Trial& trial, const std::string& timeFormat) {
    std::vector<Column> columns(trial.fields);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        Column& column = columns[i];
        column.field = static_cast<int>(i);
        column.kind = trial.tallies[i].Kind();
        const auto cell = [&](std::size_t row) {
            const auto& cells = trial.sample[row].cells;
            return i < cells.size() ? cells[i] : std::string();
        };
        if (trial.headings > 0) {
            column.name = cell(0);
            for (char& c : column.name)
                if (static_cast<unsigned char>(c) < ' ') c = ' ';
            SplitUnit(column);
        }
        if (trial.headings > 1 && !cell(1).empty()) column.unit = cell(1);
        const auto& unit = column.unit;
        if (unit.size() > 2 && (unit.front() == '[' || unit.front() == '('))
            column.unit = unit.substr(1, unit.size() - 2);
        if (column.name.empty()) column.name = std::to_string(i + 1);
        column.timeForm = FormOf(trial, column, trial.headings > 0, timeFormat);
        if (column.timeForm != TimeForm::None) column.kind = ColumnKind::Time;
    }
    return columns;
}

// The records up to the last of the headings.
void PlaceTop(Layout& layout, std::string_view text, int headings) {
    layout.dataBegin = layout.begin;
    Records records(text, layout.delimiter, layout.begin);
    Record record;
    for (int left = headings; left > 0 && records.Next(record, [](int, std::string_view) {});) {
        RecordRole role = RecordRole::Comment;
        if (record.kind != Record::Comment)
            role = left-- == headings ? RecordRole::Header : RecordRole::Units;
        layout.top.push_back({record.begin, role});
        layout.dataBegin = record.end;
        const auto bytes = text.substr(record.begin, record.end - record.begin);
        layout.dataLine =
            record.line + std::max<std::ptrdiff_t>(1, std::count(bytes.begin(), bytes.end(), '\n'));
    }
}

}  // namespace

Result<Layout> GuessLayout(std::string_view text, const std::string& name, const ReadOptions& options) {
    Layout layout;
    if (text.substr(0, 3) == "\xEF\xBB\xBF") layout.begin = 3;
    const Trial trial = BestTrial(text, layout.begin, options);
    if (trial.score <= 0) return NoTable(text.substr(layout.begin), name, trial);
    layout.delimiter = trial.delimiter;
    layout.decimalSign = trial.decimalSign;
    layout.hasHeader = trial.headings > 0;
    layout.hasUnitsRow = trial.headings > 1;
    if (options.timeFormat.find('%') != std::string::npos) layout.customTime = options.timeFormat;
    layout.columns = MakeColumns(trial, options.timeFormat);
    PlaceTop(layout, text, static_cast<int>(trial.headings));
    return layout;
}

Result<int> FindColumn(const Layout& layout, const std::string& wanted) {
    for (const auto& column : layout.columns)
        for (const auto& spelling :
             {column.name, column.name + " [" + column.unit + "]", column.name + " (" + column.unit + ")"})
            if (spelling == wanted) return column.field;
    double number = 0;
    if (ReadNumber(wanted, '.', number) && number >= 1 &&
        number <= static_cast<double>(layout.columns.size()) && number == static_cast<int>(number))
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
