#include "app/table/EmptyTable.h"

#include <algorithm>

#include "app/table/Headings.h"

namespace app {

namespace {

constexpr std::size_t kMostRecords = 50;

bool HasNumbers(const SampleRecord& row) {
    return std::any_of(row.cells.begin(), row.cells.end(), [](const auto& cell) {
        double number = 0;
        return ReadNumber(cell, '.', number);
    });
}

// The row of names at the end of the rows, units and the like below it; null where other text of its width
// stands there.
const SampleRecord* NamesAtEnd(const std::vector<const SampleRecord*>& rows) {
    std::size_t at = rows.size() - 1;
    const auto isLower = [&](const SampleRecord& row) {
        return LooksLikeUnits(row.cells) || LooksLikeDescription(row.cells);
    };
    while (at > 0 && isLower(*rows[at]) && rows[at - 1]->cells.size() == rows[at]->cells.size()) --at;
    const SampleRecord& names = *rows[at];
    const bool isText = at > 0 && rows[at - 1]->cells.size() == names.cells.size();
    return names.cells.size() < 2 || isText || HasNumbers(names) ? nullptr : &names;
}

std::string ListOf(const std::vector<std::string>& names) {
    std::string list;
    for (const auto& name : names) list += (list.empty() ? "\"" : ", \"") + name + "\"";
    return list;
}

}  // namespace

std::optional<Failure> EmptyTable(std::string_view text, const std::string& name, Start start,
                                  const ReadOptions& options) {
    for (const char delimiter : {'\t', ';', '|', ','}) {
        if (options.delimiter && *options.delimiter != delimiter) continue;
        const Sample sample = TakeSample(text, start, delimiter, kMostRecords);
        if (sample.size() == kMostRecords) return std::nullopt;
        if (sample.empty()) return NoData(name + ": nothing is left behind the lines that are skipped");
        std::vector<const SampleRecord*> rows;
        for (const auto& record : sample)
            if (record.record.kind != Record::Comment) rows.push_back(&record);
        if (rows.empty()) return NoData(name + ":1: there are remarks and no rows");
        if (const auto* const names = NamesAtEnd(rows))
            return NoData(name + ":" + std::to_string(names->record.line) +
                          ": there are headings and no rows below them: " + ListOf(names->cells));
    }
    return std::nullopt;
}

}  // namespace app
