#include "app/table/RowReader.h"

#include <algorithm>

#include "app/table/QartodFlag.h"
#include "app/table/StatusText.h"

namespace app {

namespace {

std::string Quoted(std::string_view text) {
    constexpr std::size_t kMost = 40;
    std::string quoted(1, '"');
    quoted += text.substr(0, kMost);
    for (char& c : quoted)
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    return quoted + (text.size() > kMost ? "...\"" : "\"");
}

std::string Named(const Column& column) { return "column \"" + column.name + "\""; }

std::string Columns(std::size_t count) {
    return " where there are " + Counted(static_cast<std::int64_t>(count), "column");
}

}  // namespace

RowReader::RowReader(const Layout& layout, const Choice& choice, const ReadOptions& options)
    : layout_(layout),
      choice_(choice),
      missing_(options.missing, layout.decimalSign),
      namesMissing_(!options.missing.empty()),
      time_(choice.x.timeForm, layout.customTime, layout.decimalSign, choice.x.parts),
      sign_(layout.decimalSign),
      plainSign_(layout.decimalSign == layout.delimiter ? -1
                                                        : static_cast<unsigned char>(layout.decimalSign)),
      delimiter_(layout.delimiter),
      slots_(layout.columns.size(), kNobody),
      hasX_(choice.x.field >= 0),
      isTime_(choice.x.kind == ColumnKind::Time),
      pending_(choice.columns.size()),
      status_(choice.columns.size()),
      xCells_(choice.x.parts.size()) {
    if (hasX_) slots_[static_cast<std::size_t>(choice.x.field)] = kX;
    for (std::size_t i = 0; i < choice.x.parts.size(); ++i)
        slots_[static_cast<std::size_t>(choice.x.parts[i].field)] = kFirstPart - static_cast<int>(i);
    for (std::size_t i = 0; i < choice.columns.size(); ++i) {
        slots_[static_cast<std::size_t>(choice.columns[i].field)] = static_cast<int>(i);
        const int statusField = FindStatusFields(layout, choice, choice.columns[i]).Telling();
        if (statusField >= 0)
            slots_[static_cast<std::size_t>(statusField)] = kFirstStatus - static_cast<int>(i);
    }
}

Rows RowReader::NoRows() const {
    Rows rows;
    for (const auto& column : choice_.columns)
        rows.columns.push_back({column, {}, 0, 0, 0, FindStatusFields(layout_, choice_, column)});
    return rows;
}

void RowReader::BeginRow() {
    found_ = 0;
    xState_ = Missing;
    badCells_ = 0;
    std::fill(status_.begin(), status_.end(), static_cast<unsigned short>(0));
}

void RowReader::Field(int index, std::string_view text) {
    if (static_cast<std::size_t>(index) >= slots_.size()) return;
    const int slot = slots_[static_cast<std::size_t>(index)];
    if (slot == kNobody) return;
    if (slot <= kFirstStatus) return TakeStatus(static_cast<std::size_t>(kFirstStatus - slot), text);
    ++found_;
    if (slot == kX)
        TakeX(text);
    else if (slot <= kFirstPart)
        xCells_[static_cast<std::size_t>(kFirstPart - slot)] = text;
    else
        TakeY(static_cast<std::size_t>(slot), text);
}

bool RowReader::EndRow(const Record& record) {
    if (record.kind == Record::Broken) return Skip(record.line, record.fault);
    const auto fields = static_cast<std::size_t>(record.fields);
    if (fields > slots_.size())
        return Skip(record.line, Counted(record.fields, "field") + Columns(slots_.size()));
    if (found_ < pending_.size() + std::max<std::size_t>(hasX_, xCells_.size()))
        return Skip(record.line, "only " + Counted(record.fields, "field") + Columns(slots_.size()));
    if (!xCells_.empty()) TakeParts();
    if (!hasX_) xState_ = Read;
    if (xState_ == Missing) return Skip(record.line, "no value in " + Named(choice_.x));
    if (xState_ == Unreadable)
        return Skip(record.line, Quoted(xText_) + " in " + Named(choice_.x) +
                                     (isTime_ ? " is not a time of the column's form" : " is not a number"));
    Append(fields < slots_.size());
    if (badCells_ == 0) return true;
    rows_->unreadableCells += badCells_;
    Note(record.line, badCell_ + " is not a number");
    return true;
}

void RowReader::TakeX(std::string_view text) {
    if (isTime_) {
        xTime_ = {};
        xState_ = time_.Read(text, xTime_) ? Read : Unreadable;
    } else {
        x_.kind = Cell::Value;
        const bool number = ReadValue(text, choice_.x, x_.value);
        xState_ = !number ? Unreadable : missing_.IsMissing(x_.value) ? Missing : Read;
        if (number) x_.decimals = DecimalsOf(text, sign_);
    }
    if (xState_ != Unreadable) return;
    if (missing_.IsMissing(text)) xState_ = Missing;
    xText_ = text;
}

void RowReader::TakeParts() {
    xTime_ = {};
    const auto missing = [&](const auto& cell) { return missing_.IsMissing(cell); };
    xState_ = time_.ReadParts(xCells_, xTime_)                       ? Read
              : std::any_of(xCells_.begin(), xCells_.end(), missing) ? Missing
                                                                     : Unreadable;
    if (xState_ == Read) return;
    xText_.clear();
    for (const auto& cell : xCells_) xText_.append(xText_.empty() ? "" : " ").append(cell);
}

bool RowReader::ReadValue(std::string_view text, const Column& column, double& value) const {
    return ReadNumber(text, sign_, value) ||
           (column.grouping && ReadGrouped(text, sign_, column.grouping, value));
}

void RowReader::TakeStatus(std::size_t slot, std::string_view text) {
    const bool areNames = rows_->columns[slot].statusFields.names >= 0;
    if (text != statusText_ || areNames != statusIsName_) {
        const auto word = areNames ? StatusFromText(text) : StatusFromQartod(text);
        if (!word) rows_->columns[slot].foreignStatus = true;
        statusWord_ = word.value_or(0);
        statusText_ = word ? text : std::string_view();
        statusIsName_ = areNames;
    }
    status_[slot] = statusWord_;
}

void RowReader::TakeY(std::size_t slot, std::string_view text) {
    Cell& cell = pending_[slot];
    cell.kind = Cell::Value;
    cell.decimals = 0;
    if (ReadValue(text, choice_.columns[slot], cell.value)) {
        cell.decimals = DecimalsOf(text, sign_);
        if (missing_.IsMissing(cell.value)) cell.value = kMissing;
        return;
    }
    cell.value = missing_.IsMissing(text) ? kMissing : kUnreadable;
    if (cell.value == kUnreadable && badCells_++ == 0)
        badCell_ = Quoted(text) + " in " + Named(choice_.columns[slot]);
}

void RowReader::AppendCell(const Cell& cell, Values& values, int& decimals) {
    if (cell.kind == Cell::Decimal) {
        values.AddDecimal(cell.decimal.mantissa, cell.decimal.decimals);
        decimals = std::max(decimals, cell.decimal.decimals);
        return;
    }
    values.Add(cell.value, cell.decimals);
    if (HasValue(cell.value)) decimals = std::max(decimals, cell.decimals);
}

void RowReader::Append(bool isShort) {
    if (isTime_) {
        rows_->xTimes.push_back(xTime_.at);
        (xTime_.hasZone ? rows_->times.zoned : rows_->times.local) = true;
        rows_->times.cut += xTime_.cut;
    } else if (hasX_) {
        AppendCell(x_, rows_->xNumbers, rows_->xDecimals);
    }
    for (std::size_t i = 0; i < pending_.size(); ++i) {
        ValueColumn& column = rows_->columns[i];
        const Cell& cell = pending_[i];
        AppendCell(cell, column.values, column.decimals);
        if (cell.kind == Cell::Value && !HasValue(cell.value))
            ++(cell.value == kUnreadable ? column.unreadable : column.missing);
    }
    for (std::size_t i = 0; i < status_.size(); ++i)
        if (rows_->columns[i].statusFields.Telling() >= 0) rows_->columns[i].status.push_back(status_[i]);
    if (isShort) rows_->shortRows.push_back(rows_->rows);
    ++rows_->rows;
}

bool RowReader::Skip(std::int64_t line, std::string reason) {
    ++rows_->skippedRows;
    Note(line, std::move(reason));
    return false;
}

void RowReader::Note(std::int64_t line, std::string reason) {
    if (rows_->faults.size() < Rows::kMostFaults) rows_->faults.push_back({line, std::move(reason)});
}

// Where the cell at `at` ends, blanks behind it included; null where a quote or a control character stands in
// it.
const char* RowReader::CellEnd(const char* at, const char* last) const {
    for (; at < last; ++at) {
        const char c = *at;
        if (c == delimiter_ || c == '\r' || c == '\n') return at;
        if (c == '"' || static_cast<unsigned char>(c) < ' ')
            return delimiter_ == kBlanks && c == '\t' ? at : nullptr;
    }
    return nullptr;
}

const char* RowReader::TakePlainNumber(const char* at, Cell& cell) {
    cell.kind = Cell::Decimal;
    const char* const end = ReadPlainDecimal(at, plainSign_, cell.decimal);
    if (!end) {
        // An empty cell is a missing value.
        if (*at != delimiter_ && *at != '\r' && *at != '\n') return nullptr;
        cell = {Cell::Value, {}, kMissing, 0};
        return at;
    }
    if (!EndsCell(*end)) return nullptr;
    if (!namesMissing_) return end;
    const double value = double(cell.decimal.mantissa) / ExactPowerOfTen(cell.decimal.decimals);
    if (missing_.IsMissing(value)) cell = {Cell::Value, {}, kMissing, 0};
    return end;
}

const char* RowReader::TakePlainCell(const char* at, const char* last, int slot) {
    if (slot >= 0) return TakePlainNumber(at, pending_[static_cast<std::size_t>(slot)]);
    if (slot == kX && !isTime_) {
        const char* const end = TakePlainNumber(at, x_);
        return x_.kind == Cell::Decimal ? end : nullptr;
    }
    const char* const end = CellEnd(at, last);
    if (slot == kNobody || !end) return end;
    std::string_view text(at, static_cast<std::size_t>(end - at));
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    if (slot <= kFirstStatus) {
        TakeStatus(static_cast<std::size_t>(kFirstStatus - slot), text);
        return end;
    }
    if (slot <= kFirstPart) {
        xCells_[static_cast<std::size_t>(kFirstPart - slot)] = text;
        return end;
    }
    xTime_ = {};
    return time_.Read(text, xTime_) ? end : nullptr;
}

const char* RowReader::TakePlainRow(const char* at, const char* last, char lineBreak) {
    const auto skipBlanks = [&] {
        while (at < last && (*at == ' ' || *at == '\t') && (*at != delimiter_ || delimiter_ == kBlanks)) ++at;
    };
    skipBlanks();
    if (at >= last || *at == '#' || *at == '%' || *at == '/') return nullptr;
    for (std::size_t field = 0;; ++field) {
        at = TakePlainCell(at, last, slots_[field]);
        if (!at) return nullptr;
        const char* const cellEnd = at;
        skipBlanks();
        if (at >= last) return nullptr;
        if (field + 1 == slots_.size()) break;
        if (delimiter_ == kBlanks ? at == cellEnd : *at++ != delimiter_) return nullptr;
        if (delimiter_ != kBlanks) skipBlanks();
        if (at >= last) return nullptr;
    }
    if (lineBreak == '\n' && *at == '\r') ++at;
    if (*at != lineBreak) return nullptr;
    if (!xCells_.empty()) {
        TakeParts();
        if (xState_ != Read) return nullptr;
    }
    Append(false);
    return at + 1;
}

}  // namespace app
