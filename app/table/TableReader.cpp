#include "app/table/TableReader.h"

#include <algorithm>

#include "app/table/Records.h"

namespace app {

namespace {

constexpr std::size_t kRecordsBetweenAdvances = 1 << 16;

std::string Quoted(std::string_view text) {
    constexpr std::size_t kMost = 40;
    std::string quoted(1, '"');
    quoted += text.substr(0, kMost);
    for (char& c : quoted)
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    return quoted + (text.size() > kMost ? "...\"" : "\"");
}

std::string Named(const Column& column) { return "column \"" + column.name + "\""; }

// Takes the fields of one row after the other and appends whole rows to the table.
class RowReader {
  public:
    RowReader(Table& table, const Choice& choice, const ReadOptions& options)
        : table_(table),
          missing_(options.missing, table.layout.decimalSign),
          time_(choice.x.timeForm, table.layout.customTime, table.layout.decimalSign, choice.x.parts),
          sign_(table.layout.decimalSign),
          xGrouping_(choice.x.grouping),
          slots_(table.layout.columns.size(), kNobody),
          pending_(choice.columns.size()) {
        slots_[static_cast<std::size_t>(choice.x.field)] = kX;
        for (std::size_t i = 0; i < choice.x.parts.size(); ++i)
            slots_[static_cast<std::size_t>(choice.x.parts[i].field)] = kFirstPart - static_cast<int>(i);
        xCells_.resize(choice.x.parts.size());
        for (std::size_t i = 0; i < choice.columns.size(); ++i) {
            slots_[static_cast<std::size_t>(choice.columns[i].field)] = static_cast<int>(i);
            groupings_.push_back(choice.columns[i].grouping);
            table.columns.push_back({choice.columns[i], {}, 0, 0, 0});
        }
        isTime_ = choice.x.kind == ColumnKind::Time;
    }

    void BeginRow() {
        found_ = 0;
        xState_ = Missing;
        badCells_ = 0;
    }

    void Field(int index, std::string_view text) {
        if (static_cast<std::size_t>(index) >= slots_.size()) return;
        const int slot = slots_[static_cast<std::size_t>(index)];
        if (slot == kNobody) return;
        ++found_;
        if (slot == kX)
            TakeX(text);
        else if (slot <= kFirstPart)
            xCells_[static_cast<std::size_t>(kFirstPart - slot)] = text;
        else
            TakeY(static_cast<std::size_t>(slot), text);
    }

    // Appends the row; false, and a fault is noted, when it has no place in the series.
    bool EndRow(const Record& record) {
        if (record.kind == Record::Broken) return Skip(record.line, record.fault);
        if (static_cast<std::size_t>(record.fields) > slots_.size())
            return Skip(record.line, Counted(record.fields, "field") + " where there are " +
                                         Counted(static_cast<std::int64_t>(slots_.size()), "column"));
        if (found_ < pending_.size() + std::max<std::size_t>(1, xCells_.size()))
            return Skip(record.line, "only " + Counted(record.fields, "field") + " where there are " +
                                         Counted(static_cast<std::int64_t>(slots_.size()), "column"));
        if (!xCells_.empty()) TakeParts();
        if (xState_ == Missing) return Skip(record.line, "no value in " + Named(table_.x));
        if (xState_ == Unreadable)
            return Skip(record.line,
                        Quoted(xText_) + " in " + Named(table_.x) +
                            (isTime_ ? " is not a time of the column's form" : " is not a number"));
        Append(record);
        return true;
    }

  private:
    static constexpr int kNobody = -1;
    static constexpr int kX = -2;
    static constexpr int kFirstPart = -3;  // of the columns that x is composed of; the next is one less
    enum XState { Missing, Unreadable, Read };
    struct Cell {
        double value;
        int decimals;
    };

    void TakeX(std::string_view text) {
        if (isTime_) {
            time = {};
            xState_ = time_.Read(text, time) ? Read : Unreadable;
        } else {
            const bool number =
                ReadNumber(text, sign_, x_) || (xGrouping_ && ReadGrouped(text, sign_, xGrouping_, x_));
            xState_ = !number ? Unreadable : missing_.IsMissing(x_) ? Missing : Read;
            if (number) xDecimals_ = DecimalsOf(text, sign_);
        }
        if (xState_ != Unreadable) return;
        if (missing_.IsMissing(text)) xState_ = Missing;
        xText_ = text;
    }

    void TakeParts() {
        time = {};
        const auto missing = [&](const auto& cell) { return missing_.IsMissing(cell); };
        xState_ = time_.ReadParts(xCells_, time)                         ? Read
                  : std::any_of(xCells_.begin(), xCells_.end(), missing) ? Missing
                                                                         : Unreadable;
        if (xState_ == Read) return;
        xText_.clear();
        for (const auto& cell : xCells_) xText_.append(xText_.empty() ? "" : " ").append(cell);
    }

    void TakeY(std::size_t slot, std::string_view text) {
        Cell& cell = pending_[slot];
        if (ReadNumber(text, sign_, cell.value) ||
            (groupings_[slot] && ReadGrouped(text, sign_, groupings_[slot], cell.value))) {
            cell.decimals = DecimalsOf(text, sign_);
            if (missing_.IsMissing(cell.value)) cell.value = kMissing;
            return;
        }
        cell.value = missing_.IsMissing(text) ? kMissing : kUnreadable;
        if (HasValue(cell.value) || cell.value != kUnreadable) return;
        if (badCells_++ == 0) badCell_ = Quoted(text) + " in " + Named(table_.columns[slot].column);
    }

    void Append(const Record& record) {
        if (isTime_) {
            table_.xTimes.push_back(time.at);
            (time.hasZone ? table_.times.zoned : table_.times.local) = true;
            table_.times.cut += time.cut;
        } else {
            table_.xNumbers.push_back(x_);
            table_.xDecimals = std::max(table_.xDecimals, xDecimals_);
        }
        for (std::size_t i = 0; i < pending_.size(); ++i) {
            ValueColumn& column = table_.columns[i];
            const Cell& cell = pending_[i];
            column.values.push_back(cell.value);
            if (HasValue(cell.value))
                column.decimals = std::max(column.decimals, cell.decimals);
            else
                ++(cell.value == kUnreadable ? column.unreadable : column.missing);
        }
        if (static_cast<std::size_t>(record.fields) < slots_.size()) table_.shortRows.push_back(table_.rows);
        ++table_.rows;
        if (badCells_ == 0) return;
        table_.unreadableCells += badCells_;
        Note(record.line, badCell_ + " is not a number");
    }

    bool Skip(std::int64_t line, std::string reason) {
        ++table_.skippedRows;
        Note(line, std::move(reason));
        return false;
    }
    void Note(std::int64_t line, std::string reason) {
        if (table_.faults.size() < Table::kMostFaults) table_.faults.push_back({line, std::move(reason)});
    }

    Table& table_;
    MissingValues missing_;
    TimeReader time_;
    char sign_;
    char xGrouping_;
    std::vector<char> groupings_;  // of the value columns
    std::vector<int> slots_;       // per field: kNobody, kX or the index of a value column
    bool isTime_ = false;

    // the row being read
    std::vector<Cell> pending_;
    std::size_t found_ = 0;
    XState xState_ = Missing;
    double x_ = 0;
    int xDecimals_ = 0;
    ReadTime time;
    std::string xText_;
    std::vector<std::string> xCells_;  // where x is composed of several columns
    int badCells_ = 0;
    std::string badCell_;
};

// Makes room for as many rows as the file may have, judged by its first ones.
void Reserve(Table& table) {
    constexpr std::size_t kSample = std::size_t{1} << 16;
    const auto sample = std::string_view(table.bytes).substr(0, kSample);
    const auto lines = static_cast<std::size_t>(std::count(sample.begin(), sample.end(), '\n'));
    if (lines < 2) return;
    const std::size_t rows = table.bytes.size() / (sample.size() / lines) * 17 / 16 + 16;
    table.records.reserve(rows);
    if (table.HasTimes())
        table.xTimes.reserve(rows);
    else
        table.xNumbers.reserve(rows);
    for (auto& column : table.columns) column.values.reserve(rows);
}

// False: stopped.
bool ReadRows(Table& table, RowReader& reader, const Advance& advance) {
    const auto add = [&](std::size_t begin, RecordRole role) {
        table.records.push_back(begin | std::uint64_t{static_cast<std::uint8_t>(role)} << 56);
    };
    for (const auto& line : table.layout.top) add(line.begin, line.role);
    Records records(table.bytes, table.layout.delimiter, table.layout.dataBegin, table.layout.dataLine);
    Record record;
    reader.BeginRow();
    while (records.Next(record, [&](int index, std::string_view text) { reader.Field(index, text); })) {
        RecordRole role = RecordRole::Comment;
        if (record.kind != Record::Comment) {
            role = reader.EndRow(record) ? RecordRole::Data : RecordRole::Skipped;
            reader.BeginRow();
        }
        add(record.begin, role);
        if (!advance || table.records.size() % kRecordsBetweenAdvances != 0) continue;
        const double part = static_cast<double>(record.end) / static_cast<double>(table.bytes.size());
        if (advance({part, table.rows, &table}) == Go::Stop) return false;
    }
    return true;
}

}  // namespace

Result<Table> ReadTable(std::string bytes, const std::string& name, const Layout& layout,
                        const Choice& choice, const ReadOptions& options, const Advance& advance) {
    Table table;
    table.name = name;
    table.bytes = std::move(bytes);
    table.layout = layout;
    table.x = choice.x;
    RowReader reader(table, choice, options);
    Reserve(table);
    if (!ReadRows(table, reader, advance)) return Failure{kStopped, name + ": reading was stopped"};
    if (table.rows > 0) return table;
    const Fault fault = table.faults.empty() ? Fault{1, "no rows"} : table.faults.front();
    return Refusal(name + ":" + std::to_string(fault.line) + ": no row can be read: " + fault.reason);
}

}  // namespace app
