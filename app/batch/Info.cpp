#include "app/batch/Info.h"

#include <algorithm>
#include <cmath>
#include <future>
#include <limits>

#include "app/batch/Findings.h"
#include "app/table/Duration.h"

namespace app {

using Json = nlohmann::ordered_json;

namespace {

constexpr std::size_t kWidestGaps = 5;

double RealLength(const XAxis& axis, std::int64_t stored) { return double(stored) / axis.scale.Scale(); }

std::string LengthText(const Table& table, double length) {
    if (table.HasTimes()) return DurationText(length);
    return ShortNumber(length) + (table.x.unit.empty() ? "" : " " + table.x.unit);
}

std::vector<Spacing::Gap> WidestGaps(const std::vector<std::int32_t>& sorted, double limit,
                                     std::int64_t& count) {
    std::vector<Spacing::Gap> gaps;
    const auto width = [](const Spacing::Gap& gap) { return std::int64_t{gap.to} - gap.from; };
    for (std::size_t i = 1; i < sorted.size(); ++i) {
        const Spacing::Gap gap{sorted[i - 1], sorted[i]};
        if (double(width(gap)) <= limit) continue;
        ++count;
        gaps.push_back(gap);
        if (gaps.size() <= kWidestGaps) continue;
        gaps.erase(std::min_element(gaps.begin(), gaps.end(),
                                    [&](const auto& a, const auto& b) { return width(a) < width(b); }));
    }
    return gaps;
}

// The steps from each x to the next one that is larger.
template <class Take>
void ForEachStep(const std::vector<std::int32_t>& sorted, Take&& take) {
    for (std::size_t i = 1; i < sorted.size(); ++i)
        if (sorted[i] != sorted[i - 1])
            take(static_cast<std::uint32_t>(std::int64_t{sorted[i]} - sorted[i - 1]));
}

// The middle one of `count` steps: first its upper half, then its lower one, by counting, so that the steps
// of millions of rows need no memory.
std::uint32_t MiddleStep(const std::vector<std::int32_t>& sorted, std::int64_t count) {
    std::vector<std::int64_t> tally(std::size_t{1} << 16);
    std::int64_t rank = count / 2;
    const auto find = [&] {
        std::uint32_t half = 0;
        for (; rank >= tally[half]; ++half) rank -= tally[half];
        return half;
    };
    ForEachStep(sorted, [&](std::uint32_t step) { ++tally[step >> 16]; });
    const std::uint32_t upper = find();
    std::fill(tally.begin(), tally.end(), 0);
    ForEachStep(sorted, [&](std::uint32_t step) {
        if (step >> 16 == upper) ++tally[step & 0xFFFF];
    });
    return upper << 16 | find();
}

std::string FaultsText(const Table& table) {
    constexpr std::size_t kShown = 5;
    std::string text;
    for (std::size_t i = 0; i < table.faults.size() && i < kShown; ++i)
        text +=
            "            line " + std::to_string(table.faults[i].line) + ": " + table.faults[i].reason + "\n";
    const auto all = table.skippedRows + table.unreadableCells;
    if (all > static_cast<std::int64_t>(kShown))
        text += "            and " + Grouped(all - static_cast<std::int64_t>(kShown)) +
                " more; --json lists up to " + Grouped(static_cast<std::int64_t>(Table::kMostFaults)) + "\n";
    return text;
}

std::string Row(const char* title, const std::string& text) {
    std::string row = "  " + std::string(title);
    row.resize(12, ' ');
    return row + text + "\n";
}

std::string Titled(const Column& column) {
    return column.name + (column.unit.empty() ? "" : " [" + column.unit + "]");
}

std::string TableText(const Table& table) {
    const Layout& layout = table.layout;
    std::string text = Counted(table.rows, "row") + ", " +
                       Counted(static_cast<std::int64_t>(layout.columns.size()), "column") +
                       ", separated by " + DelimiterName(layout.delimiter) + ", decimal " +
                       (layout.decimalSign == ',' ? "comma" : "point") + ", " +
                       (layout.hasUnitsRow ? "header and units row"
                        : layout.hasHeader ? "header"
                                           : "no header") +
                       (layout.begin ? ", byte-order mark" : "");
    std::string names;
    for (const auto& column : layout.columns) names += (names.empty() ? "" : ", ") + Titled(column);
    std::string skipped = table.skippedRows ? Counted(table.skippedRows, "row") : "no row";
    if (table.unreadableCells) skipped += ", and " + Counted(table.unreadableCells, "unreadable cell");
    std::string notes;
    for (const auto& note : table.notes)
        notes += Row(note.kind == ReadNote::Doubt ? "doubt" : "note", NoteText(note));
    return Row("table", text) + Row("columns", names) + notes + Row("skipped", skipped) + FaultsText(table);
}

std::string FormText(const Table& table) {
    if (!table.HasTimes()) return "numbers";
    std::string text = "times, " + TimeFormText(table);
    if (IsEpoch(table.x.timeForm)) return text;
    if (table.times.zoned && table.times.local) return text + ", some without zone, which are taken as UTC";
    return text + (table.times.zoned ? ", shown in UTC" : ", without zone");
}

std::string SpacingText(const Table& table, const Spacing& spacing) {
    if (spacing.step <= 0) return "all at one x";
    std::string text = "step " + LengthText(table, spacing.step);
    if (spacing.least != spacing.most)
        text += " (" + LengthText(table, spacing.least) + " to " + LengthText(table, spacing.most) + ")";
    return text + ", " + (spacing.gaps ? Counted(spacing.gaps, "gap") : "no gaps") + ", " +
           (spacing.duplicates ? Counted(spacing.duplicates, "duplicate") : "no duplicates");
}

std::string XText(const Table& table, const XAxis& axis) {
    const Spacing spacing = FindSpacing(axis);
    const auto [least, most] = std::minmax_element(axis.stored.begin(), axis.stored.end());
    std::string text = Row("x", Titled(table.x) + ": " + FormText(table));
    text += Row("", RealX(table, axis, *least) + " to " + RealX(table, axis, *most) +
                        (axis.sorted ? ", ascending" : ", not in order: will be sorted"));
    text += Row("", SpacingText(table, spacing));
    for (const auto& gap : spacing.widest)
        text += Row("", "  gap of " + LengthText(table, RealLength(axis, std::int64_t{gap.to} - gap.from)) +
                            " after " + RealX(table, axis, gap.from));
    std::string stored = ExactnessText(axis.exactness, axis.scale, table.HasTimes() ? "s" : table.x.unit);
    if (table.times.cut) stored += "; finer than a microsecond, cut off: " + Counted(table.times.cut, "time");
    return text + Row("", "stored " + stored);
}

std::string Places(const ValueColumn& column) {
    return column.decimals == 0 ? "whole numbers" : "up to " + Counted(column.decimals, "decimal");
}

// What stands out in each column, looked for at the same time as the rest is said.
std::vector<std::future<Findings>> StartFindings(const Table& table) {
    std::vector<std::future<Findings>> findings;
    for (const auto& column : table.columns)
        findings.push_back(std::async(std::launch::async, [&column] { return FindFaults(column); }));
    return findings;
}

std::string ColumnText(const ValueColumn& column) {
    const auto range = column.values.FindExtent();
    std::string text =
        Row("y", Titled(column.column) + ": " + Counted(range.count, "value") +
                     (column.missing ? ", " + Grouped(column.missing) + " missing" : "") +
                     (column.unreadable ? ", " + Grouped(column.unreadable) + " unreadable" : ""));
    if (range.count == 0) return text;
    const AxisScale scale = ScaleForValues(column.values, column.decimals, false);
    text += Row("", ShortNumber(range.least) + " to " + ShortNumber(range.most) + ", " + Places(column));
    return text +
           Row("", "stored " + ExactnessText(Examine(scale, column.values), scale, column.column.unit));
}

Json XJson(const Table& table, const XAxis& axis) {
    const Spacing spacing = FindSpacing(axis);
    const auto [least, most] = std::minmax_element(axis.stored.begin(), axis.stored.end());
    Json gaps = Json::array();
    for (const auto& gap : spacing.widest)
        gaps.push_back({{"from", RealX(table, axis, gap.from)},
                        {"to", RealX(table, axis, gap.to)},
                        {"length", RealLength(axis, std::int64_t{gap.to} - gap.from)}});
    Json json{{"column", table.x.name}, {"unit", table.HasTimes() ? "s" : table.x.unit}};
    if (table.HasTimes()) json["timeFormat"] = TimeFormText(table);
    if (table.times.cut) json["finerThanMicroseconds"] = table.times.cut;
    json["from"] = RealX(table, axis, *least);
    json["to"] = RealX(table, axis, *most);
    json["sorted"] = axis.sorted;
    json["step"] = spacing.step;
    json["leastStep"] = spacing.least;
    json["largestStep"] = spacing.most;
    json["duplicates"] = spacing.duplicates;
    json["gaps"] = spacing.gaps;
    json["widestGaps"] = gaps;
    json["stored"] = ExactnessJson(axis.exactness, axis.scale);
    return json;
}

Json ColumnJson(const ValueColumn& column) {
    const auto range = column.values.FindExtent();
    Json json{{"column", column.column.name},    {"unit", column.column.unit},
              {"values", range.count},           {"missing", column.missing},
              {"unreadable", column.unreadable}, {"decimals", column.decimals}};
    if (range.count == 0) return json;
    json["from"] = range.least;
    json["to"] = range.most;
    const AxisScale scale = ScaleForValues(column.values, column.decimals, false);
    json["stored"] = ExactnessJson(Examine(scale, column.values), scale);
    return json;
}

}  // namespace

Spacing FindSpacing(const XAxis& axis) {
    Spacing spacing;
    std::vector<std::int32_t> copy;
    if (!axis.sorted) {
        copy = axis.stored;
        std::sort(copy.begin(), copy.end());
    }
    const auto& sorted = axis.sorted ? axis.stored : copy;
    std::int64_t count = 0;
    std::uint32_t least = std::numeric_limits<std::uint32_t>::max();
    std::uint32_t most = 0;
    ForEachStep(sorted, [&](std::uint32_t step) {
        ++count;
        least = std::min(least, step);
        most = std::max(most, step);
    });
    spacing.duplicates = static_cast<std::int64_t>(sorted.size()) - 1 - count;
    if (count == 0) return spacing;
    const double step = MiddleStep(sorted, count);
    spacing.step = step / axis.scale.Scale();
    spacing.least = RealLength(axis, least);
    spacing.most = RealLength(axis, most);
    spacing.widest = WidestGaps(sorted, 1.5 * step, spacing.gaps);
    return spacing;
}

std::string RealX(const Table& table, const XAxis& axis, std::int32_t stored) {
    if (table.HasTimes()) return IsoText(axis.scale.RealTime(stored), table.times.zoned);
    return NumberText(axis.scale.Real(stored), std::max(0, axis.scale.Decimals()));
}

std::string TimeFormText(const Table& table) {
    if (table.x.timeForm == TimeForm::Custom) return table.layout.customTime;
    if (table.x.timeForm == TimeForm::Fields) return "in columns";
    for (const auto& row : kTimeFormNames)
        if (row.form == table.x.timeForm) return row.meaning;
    return "";
}

std::string NoteText(const ReadNote& note) {
    return note.text + (note.option.empty() ? "" : " (" + note.option + " decides otherwise)");
}

std::string JsonText(const Json& json) {
    return SafeJson(json.dump(2, ' ', false, Json::error_handler_t::replace)) + "\n";
}

Json ExactnessJson(const Exactness& exactness, const AxisScale& scale) {
    return {{"decimals", scale.Decimals()},
            {"exact", exactness.inexact == 0},
            {"inexactValues", exactness.inexact},
            {"largestError", exactness.largestError}};
}

Json TableJson(const Table& table) {
    const Layout& layout = table.layout;
    Json faults = Json::array();
    for (const auto& fault : table.faults) faults.push_back({{"line", fault.line}, {"reason", fault.reason}});
    Json columns = Json::array();
    Json notes = Json::array();
    for (const auto& note : table.notes)
        notes.push_back(
            {{"doubt", note.kind == ReadNote::Doubt}, {"text", note.text}, {"option", note.option}});
    for (const auto& column : layout.columns)
        columns.push_back({{"name", column.name}, {"unit", column.unit}});
    return {{"rows", table.rows},
            {"skippedRows", table.skippedRows},
            {"unreadableCells", table.unreadableCells},
            {"faults", faults},
            {"delimiter", DelimiterName(layout.delimiter)},
            {"decimalSign", std::string(1, layout.decimalSign)},
            {"header", layout.hasHeader},
            {"unitsRow", layout.hasUnitsRow},
            {"byteOrderMark", layout.begin > 0},
            {"encoding", table.encoding.Name()},
            {"headerLine", layout.headerLine},
            {"notes", notes},
            {"columns", columns}};
}

Json InfoJson(const Table& table, const XAxis& axis) {
    auto found = StartFindings(table);
    Json json{
        {"file", table.name}, {"table", TableJson(table)}, {"x", XJson(table, axis)}, {"y", Json::array()}};
    std::vector<Findings> findings;
    for (const auto& column : table.columns) {
        findings.push_back(found[findings.size()].get());
        json["y"].push_back(ColumnJson(column));
        json["y"].back()["findings"] = FindingsJson(table, axis, findings.back());
    }
    json["suggested"] = SuggestedCommand(table, axis, findings);
    return json;
}

std::string InfoText(const Table& table, const XAxis& axis) {
    auto found = StartFindings(table);
    std::string text = table.name + "\n" + TableText(table) + XText(table, axis);
    std::vector<Findings> findings;
    for (const auto& column : table.columns) {
        findings.push_back(found[findings.size()].get());
        text += ColumnText(column);
        for (const auto& finding : FindingTexts(table, axis, findings.back())) text += Row("", finding);
    }
    return SafeText(text + Row("try", SuggestedCommand(table, axis, findings)));
}

}  // namespace app
