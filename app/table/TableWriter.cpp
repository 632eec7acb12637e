#include "app/table/TableWriter.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <optional>

#include "app/table/CellNumber.h"
#include "app/table/QartodFlag.h"
#include "app/table/Records.h"

namespace app {

namespace {

constexpr std::size_t kRecordsBetweenAdvances = 1 << 16;

// A cell of text in the table's delimiter; quoted where it must be.
std::string Cell(const std::string& text, char delimiter) {
    const bool blank = text.find_first_of(" \t") != std::string::npos && delimiter == kBlanks;
    if (!blank && text.find(delimiter) == std::string::npos && text.find('"') == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

class RowWriter {
  public:
    RowWriter(OutputFile& output, const Table& table, const std::vector<Series>& series,
              const WriteWishes& wishes, WriteCounts& counts)
        : output_(output), table_(table), series_(series), wishes_(wishes), counts_(counts) {
        if (table.encoding.IsWide()) converter_.emplace("UTF-8", table.encoding.Name());
        byField_.resize(series.size());
        std::iota(byField_.begin(), byField_.end(), std::size_t{0});
        std::sort(byField_.begin(), byField_.end(), [&](std::size_t a, std::size_t b) {
            return table.columns[a].column.field < table.columns[b].column.field;
        });
        // In a table of blanks an empty cell would be no cell.
        if (table.layout.delimiter == kBlanks) empty_.assign(1, '-');
        blank_ = wishes.missing.empty() ? empty_ : Cell(wishes.missing, table.layout.delimiter);
        for (const auto& column : table.columns) {
            appends_ |= (WritesNames(column) && column.statusFields.names < 0) ||
                        (WritesQartod(column) && column.statusFields.qartod < 0);
        }
        for (const auto& flag : kQartodFlags)
            qartodCells_[static_cast<std::size_t>(flag.value - '0')] = {table.layout.delimiter, flag.value};
        missing_ = table.layout.delimiter + std::string("missing");
        unreadable_ = table.layout.delimiter + std::string("unreadable");
        for (std::size_t word = 0; word < cells_.size(); ++word) {
            const auto status = StatusText(StatusOf(word));
            cells_[word].append(1, table.layout.delimiter).append(status.empty() ? empty_ : status);
        }
    }

    bool Write(RecordRole role, std::string_view text) {
        switch (role) {
            case RecordRole::Data:
                return WriteRow(text, row_++);
            case RecordRole::Header:
                return WriteHeading(text, true);
            case RecordRole::Units:
                return WriteHeading(text, false);
            default:
                return Put(text);
        }
    }

    // Writes bytes of the table in the encoding of its file.
    bool Put(std::string_view bytes) {
        if (!converter_) return output_.Write(bytes);
        converted_.clear();
        converter_->Append(bytes, converted_);
        return output_.Write(converted_);
    }

  private:
    // Status words have their flags in bits 0 to 6 and 15: packed into eight bits they index the cells.
    static std::size_t Packed(unsigned short status) { return (status & 0x7Fu) | (status >> 8 & 0x80u); }
    static unsigned short StatusOf(std::size_t packed) {
        return static_cast<unsigned short>((packed & 0x7Fu) | (packed & 0x80u) << 8);
    }

    bool WriteHeading(std::string_view text, bool names) {
        std::string line(text.substr(0, LengthWithoutBreak(text)));
        const std::string lineBreak(text.substr(line.size()));
        PadShortRow(text, line);
        for (std::size_t i = 0; i < table_.columns.size(); ++i) {
            const ValueColumn& column = table_.columns[i];
            const auto append = [&](const std::string& name) {
                line += table_.layout.delimiter +
                        (names ? Cell(table_.encoding.Stored(name), table_.layout.delimiter) : empty_);
            };
            if (WritesNames(column) && column.statusFields.names < 0) append(StatusColumnName(column.column));
            if (WritesQartod(column) && column.statusFields.qartod < 0)
                append(QartodColumnName(column.column));
        }
        return Put(line + lineBreak);
    }

    // A row may lack cells at its end: empty ones are put in, so that the status cells stand in their
    // columns.
    void PadShortRow(std::string_view record, std::string& line) const {
        const char delimiter = table_.layout.delimiter;
        Span span;
        const int last = static_cast<int>(table_.layout.columns.size()) - 1;
        if (FindField(record, delimiter, last, span)) return;
        for (int field = last; field > 0 && !FindField(record, delimiter, field, span); --field)
            line += delimiter + empty_;
    }

    bool Drops(std::int64_t row) {
        if (wishes_.drop == 0) return false;
        bool any = false;
        bool all = true;
        for (const auto& one : series_) {
            const std::int32_t point = one.PointOfRow(row);
            if (point == Series::kNoPoint) continue;
            const bool flagged = one.source->GetStatus()[point] & wishes_.drop;
            any |= flagged;
            all &= flagged;
        }
        counts_.kept += any && !all;
        return any && all;
    }

    bool WriteRow(std::string_view text, std::int64_t row) {
        if (Drops(row)) {
            ++counts_.dropped;
            return true;
        }
        ++counts_.rows;
        line_.clear();
        AppendValues(text, row);
        const std::size_t length = LengthWithoutBreak(text);
        AppendStatus(text, row);
        line_ += text.substr(length);
        return Put(line_);
    }

    // The record without its line break, edited and blanked values put in the place of the old ones.
    void AppendValues(std::string_view text, std::int64_t row) {
        std::size_t from = 0;
        for (const std::size_t index : byField_) {
            const Series& series = series_[index];
            const std::int32_t point = series.PointOfRow(row);
            if (point == Series::kNoPoint) continue;
            const bool isBlanked = series.source->GetStatus()[point] & wishes_.blank;
            if (!isBlanked && !series.IsEdited(point)) continue;
            Span span;
            if (!FindField(text, table_.layout.delimiter, table_.columns[index].column.field, span)) continue;
            line_ += text.substr(from, span.begin - from);
            if (isBlanked)
                line_ += blank_;
            else
                AppendNumber(series, point, span.begin > 0 && text[span.begin - 1] == '"');
            from = span.end;
            ++(isBlanked ? counts_.blanked : counts_.edited);
        }
        line_ += text.substr(from, LengthWithoutBreak(text) - from);
    }

    void AppendNumber(const Series& series, std::int32_t point, bool isQuoted) {
        const std::string value = NumberText(series.scale.Real(series.source->GetData()[point].y),
                                             std::max(0, series.scale.Decimals()), table_.layout.decimalSign);
        line_ += isQuoted ? value : Cell(value, table_.layout.delimiter);
    }

    void AppendStatus(std::string_view text, std::int64_t row) {
        if (appends_ && table_.IsShort(row)) PadShortRow(text, line_);
        for (std::size_t i = 0; i < series_.size(); ++i) {
            const ValueColumn& column = table_.columns[i];
            if (WritesNames(column)) PutStatus(column.statusFields.names, StatusCell(i, row));
            if (WritesQartod(column)) PutStatus(column.statusFields.qartod, QartodCell(i, row));
        }
    }

    // Without a field the cell goes to the end of the row.
    void PutStatus(int field, std::string_view cell) {
        if (field < 0) {
            line_ += cell;
        } else if (!ReplaceCell(field, cell.substr(1)) && cell.size() > 1) {
            PadShortRow(std::string(line_), line_);
            ReplaceCell(field, cell.substr(1));
        }
    }

    // False: the row has no such cell.
    bool ReplaceCell(int field, std::string_view cell) {
        Span span;
        if (!FindField(line_, table_.layout.delimiter, field, span)) return false;
        line_.replace(span.begin, span.end - span.begin, cell);
        return true;
    }

    // With the delimiter in front.
    std::string_view StatusCell(std::size_t index, std::int64_t row) const {
        const std::int32_t point = series_[index].PointOfRow(row);
        if (point != Series::kNoPoint) return cells_[Packed(series_[index].source->GetStatus()[point])];
        const double value = table_.columns[index].values[static_cast<std::size_t>(row)];
        return value == kUnreadable ? unreadable_ : missing_;
    }

    std::string_view QartodCell(std::size_t index, std::int64_t row) const {
        const Series& series = series_[index];
        const std::int32_t point = series.PointOfRow(row);
        const char value = point == Series::kNoPoint
                               ? kQartodMissing
                               : QartodValue(series.source->GetStatus()[point], series.IsJudged(point));
        return qartodCells_[static_cast<std::size_t>(value - '0')];
    }

    // A status column that an earlier cleaning left is kept true, whatever the scheme.
    bool WritesNames(const ValueColumn& column) const {
        return wishes_.scheme == StatusScheme::Names || column.statusFields.names >= 0;
    }
    bool WritesQartod(const ValueColumn& column) const {
        return wishes_.scheme == StatusScheme::Qartod || column.statusFields.qartod >= 0;
    }

    OutputFile& output_;
    const Table& table_;
    const std::vector<Series>& series_;
    const WriteWishes& wishes_;
    WriteCounts& counts_;
    std::vector<std::size_t> byField_;  // the series in the order of their columns in the file
    std::string empty_;
    std::string blank_;
    std::array<std::string, 10> qartodCells_;  // per flag, the delimiter in front
    std::array<std::string, 256> cells_;       // per packed status word: the delimiter and the cell
    bool appends_ = false;                     // some series has no status column yet
    std::string missing_;                      // and of rows without a point
    std::string unreadable_;
    std::string line_;
    std::int64_t row_ = 0;
    std::optional<TextConverter> converter_;
    std::string converted_;
};

}  // namespace

bool WriteTable(OutputFile& output, const Table& table, const std::vector<Series>& series,
                const WriteWishes& wishes, WriteCounts& counts, const Advance& advance) {
    RowWriter writer(output, table, series, wishes, counts);
    if (!writer.Put(table.bytes.View().substr(0, table.layout.begin))) return false;
    const std::string_view text = table.bytes;
    RecordIndex::Walk walk(table.records, table.layout.begin);
    for (std::size_t record = 0; walk.Next(); ++record) {
        if (!writer.Write(walk.Role(), text.substr(walk.Begin(), walk.End() - walk.Begin()))) return false;
        if (record % kRecordsBetweenAdvances != 0) continue;
        table.bytes.Release(walk.Begin());
        const double part = double(walk.End()) / double(text.size());
        if (advance && advance({part, counts.rows}) == Go::Stop) return false;
    }
    return true;
}

}  // namespace app
