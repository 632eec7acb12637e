#include "app/table/TableReader.h"

#if __has_include(<malloc.h>)
#include <malloc.h>
#endif

#include <algorithm>
#include <optional>

#include "app/table/InputFile.h"
#include "app/table/StatusText.h"
#include "app/table/StretchReader.h"

namespace app {

namespace {

// Makes room for as many rows as the file may have, judged by its first ones.
void Reserve(Table& table) {
    constexpr std::size_t kSample = std::size_t{1} << 16;
    const auto sample = table.bytes.View().substr(0, kSample);
    const auto lines = static_cast<std::size_t>(std::count(sample.begin(), sample.end(), '\n'));
    if (lines < 2) return;
    table.Reserve(table.bytes.size() / (sample.size() / lines) * 17 / 16 + 16, table.HasTimes());
}

// The records above the data.
void AddTop(Table& table) {
    const Layout& layout = table.layout;
    for (std::size_t i = 0; i < layout.top.size(); ++i) {
        const std::size_t end = i + 1 < layout.top.size() ? layout.top[i + 1].begin : layout.dataBegin;
        table.records.Add(end - layout.top[i].begin, layout.top[i].role);
    }
    table.lines = layout.dataLine - 1;
}

std::optional<Failure> ReadRows(Table& table, const Choice& choice, const ReadOptions& options,
                                const Advance& advance) {
    AddTop(table);
    StretchReader stretches(table.bytes, table.layout.dataBegin, table.layout, choice, options);
    while (const Rows* const rows = stretches.Next()) {
        table.Append(*rows);
        table.bytes.Release(stretches.End());
        if (!advance || stretches.End() >= table.bytes.size()) continue;
        const double part = double(stretches.End()) / double(table.bytes.size());
        if (advance({part, table.rows, &table}) == Go::Stop)
            return Failure{kStopped, table.name + ": reading was stopped"};
    }
    return std::nullopt;
}

// What the threads have used of the heap goes back to the system.
void ReturnFreeMemory() {
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

std::optional<Failure> CheckUnchanged(Table& table) {
    switch (table.bytes.Changed()) {
        case Bytes::Change::Rewritten:
            return ChangedInput(table.name);
        case Bytes::Change::Grown:
            table.notes.push_back(
                {ReadNote::Reading, "the file grew while it was read: what was added is left out", ""});
            break;
        case Bytes::Change::None:
            break;
    }
    return std::nullopt;
}

// A column of the right name that holds other text is not ours.
void JudgeStatusColumns(Table& table) {
    for (auto& column : table.columns) {
        const int field = column.statusFields.Telling();
        if (field < 0) continue;
        const std::string name = "column \"" + table.layout.columns[static_cast<std::size_t>(field)].name;
        table.notes.push_back(
            {ReadNote::Reading,
             name + (column.foreignStatus
                         ? "\" holds other text than flags: it is left as it is"
                         : "\" holds flags of an earlier cleaning, from which a new one goes on"),
             ""});
        if (!column.foreignStatus) continue;
        column.statusFields = {};
        column.status = {};
    }
}

}  // namespace

Result<Table> ReadTable(Bytes bytes, const std::string& name, const Layout& layout, const Choice& choice,
                        const ReadOptions& options, const Advance& advance) {
    Table table;
    table.name = name;
    table.bytes = std::move(bytes);
    table.layout = layout;
    table.x = choice.x;
    table.columns = RowReader(layout, choice, options).NoRows().columns;
    Reserve(table);
    if (const auto failure = ReadRows(table, choice, options, advance)) return *failure;
    ReturnFreeMemory();
    if (const auto failure = CheckUnchanged(table)) return *failure;
    JudgeStatusColumns(table);
    if (table.notText) return NotText(name, table.lines + 1);
    if (table.rows > 0) return table;
    const Fault fault = table.faults.empty() ? Fault{1, "no rows"} : table.faults.front();
    return Refusal(name + ":" + std::to_string(fault.line) + ": no row can be read: " + fault.reason);
}

}  // namespace app
