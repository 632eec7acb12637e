#include "app/table/Table.h"

#include "app/table/Records.h"

namespace app {

void Rows::Clear() {
    records.Clear();
    xNumbers.Clear();
    xTimes.clear();
    shortRows.clear();
    faults.clear();
    for (auto& column : columns) {
        column.values.Clear();
        column.decimals = 0;
        column.missing = column.unreadable = 0;
        column.status.clear();
        column.foreignStatus = false;
    }
    lines = rows = skippedRows = unreadableCells = 0;
    xDecimals = 0;
    times = {};
    notText = false;
}

void Rows::Reserve(std::size_t expectedRows, bool hasTimes) {
    records.Reserve(expectedRows);
    if (hasTimes)
        xTimes.reserve(expectedRows);
    else
        xNumbers.Reserve(expectedRows);
    for (auto& column : columns) column.values.Reserve(expectedRows);
}

void Rows::Append(const Rows& more) {
    records.Append(more.records);
    xNumbers.Append(more.xNumbers);
    xTimes.insert(xTimes.end(), more.xTimes.begin(), more.xTimes.end());
    xDecimals = std::max(xDecimals, more.xDecimals);
    for (const std::int64_t row : more.shortRows) shortRows.push_back(rows + row);
    times.zoned |= more.times.zoned;
    times.local |= more.times.local;
    times.cut += more.times.cut;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        ValueColumn& column = columns[i];
        const ValueColumn& other = more.columns[i];
        column.values.Append(other.values);
        column.decimals = std::max(column.decimals, other.decimals);
        column.missing += other.missing;
        column.unreadable += other.unreadable;
        column.status.insert(column.status.end(), other.status.begin(), other.status.end());
        column.foreignStatus |= other.foreignStatus;
    }
    for (const auto& fault : more.faults)
        if (faults.size() < kMostFaults) faults.push_back({lines + fault.line, fault.reason});
    lines += more.lines;
    rows += more.rows;
    skippedRows += more.skippedRows;
    unreadableCells += more.unreadableCells;
    notText |= more.notText;
}

CellPlace FindCell(const Table& table, std::int64_t row, int field) {
    const std::string_view text = table.bytes;
    RecordIndex::Walk walk(table.records, table.layout.begin);
    while (walk.Next() && (walk.Role() != RecordRole::Data || row-- > 0)) continue;
    const auto begin = text.begin() + static_cast<std::ptrdiff_t>(walk.Begin());
    CellPlace place{1 + std::count(text.begin(), begin, LineBreakOf(text)), {}};
    Span span;
    const auto record = text.substr(walk.Begin(), walk.End() - walk.Begin());
    if (FindField(record, table.layout.delimiter, field, span))
        place.text = table.encoding.Shown(record.substr(span.begin, span.end - span.begin));
    return place;
}

}  // namespace app
