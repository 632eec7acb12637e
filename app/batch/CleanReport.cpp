#include "app/batch/CleanReport.h"

#include <algorithm>

#include "app/batch/Info.h"
#include "app/table/CellNumber.h"
#include "app/table/InputFile.h"
#include "app/table/QartodFlag.h"

namespace app {

using Json = nlohmann::ordered_json;

namespace {

struct PointCounts {
    std::int64_t changed = 0;
    std::int64_t flagged = 0;  // deleted, rejected or a spike
    Json flags = Json::object();
    std::string text;  // "12 deleted, 3 interpolated"
};

PointCounts CountPoints(const Series& series) {
    PointCounts counts;
    const unsigned short* status = series.source->GetStatus();
    const long n = series.source->GetCount();
    for (long i = 0; i < n; ++i) counts.changed += series.IsEdited(i);
    counts.flagged = std::count_if(
        status, status + n, [](unsigned short word) { return word & (PS_DELETED | PS_REJECTED | PS_SPIKE); });
    for (const unsigned short flag :
         {PS_DELETED, PS_REJECTED, PS_SPIKE, PS_MOVED, PS_SMOOTHED, PS_INTERPOLATED, PS_EDITED}) {
        const auto count =
            std::count_if(status, status + n, [&](unsigned short word) { return word & flag; });
        counts.flags[StatusText(flag)] = count;
        if (count > 0 && flag != PS_EDITED && flag != PS_SPIKE)
            counts.text += ", " + Grouped(count) + " " + StatusText(flag);
    }
    return counts;
}

// "12 points and 3 empty cells selected"
std::string CountText(const Step& step, const StepResult& result) {
    std::string text;
    if (result.points > 0 || result.cells == 0)
        text = Counted(result.points, result.ofSelection ? "selected point" : "point");
    if (result.cells > 0) text += (text.empty() ? "" : " and ") + Counted(result.cells, "empty cell");
    return text + (step.kind->verb[0] ? " " : "") + step.kind->verb;
}

std::string StepLine(const Step& step, const StepResult& result) {
    std::string line = "  " + step.text;
    line.resize(std::max<std::size_t>(line.size() + 2, 30), ' ');
    const bool idle = result.points == 0 && result.cells == 0 && !result.note.empty();
    if (!idle) line += CountText(step, result);
    if (!result.command.empty()) line += "; " + result.command + ": " + result.text;
    if (!result.note.empty()) line += (idle ? "" : "; ") + result.note;
    return line + "\n";
}

std::string StorageText(const CleanRun& run) {
    std::string text;
    const auto& x = run.table.x;
    if (run.axis.exactness.inexact > 0)
        text += "  x \"" + x.name + "\": " +
                ExactnessText(run.axis.exactness, run.axis.scale, run.table.HasTimes() ? "s" : x.unit) +
                " for the steps; the output keeps its text\n";
    for (std::size_t i = 0; i < run.series.size(); ++i) {
        const auto& series = run.series[i];
        const auto& column = run.table.columns[i].column;
        if (series.exactness.inexact == 0) continue;
        text += "  y \"" + column.name + "\": " + ExactnessText(series.exactness, series.scale, column.unit) +
                " for the steps; values not edited keep their text\n";
    }
    return text;
}

std::string ReadingText(const CleanRun& run) {
    const Table& table = run.table;
    std::string text = table.name + ": " + Counted(table.rows, "row") + " read";
    if (table.skippedRows) {
        const auto& fault = table.faults.front();
        text += ", " + Grouped(table.skippedRows) + " could not be and pass through unchanged (line " +
                std::to_string(fault.line) + ": " + fault.reason + (table.skippedRows > 1 ? "; ...)" : ")");
    }
    if (table.unreadableCells) text += ", " + Counted(table.unreadableCells, "unreadable cell");
    if (!run.axis.sorted)
        text += "; the rows are not in the order of \"" + table.x.name +
                "\": steps work on them sorted, the output keeps their order";
    text += "\n";
    for (const auto& note : table.notes)
        if (note.kind == ReadNote::Doubt) text += "  " + NoteText(note) + "\n";
    return text;
}

// What makes doubtful whether the file was read as it was meant.
Json WarningsOf(const Table& table) {
    Json warnings = Json::array();
    const std::int64_t faults = table.skippedRows + table.unreadableCells;
    if (faults > 0) {
        const Fault& first = table.faults.front();
        const bool rows = table.skippedRows > 0;
        warnings.push_back(
            (rows ? Counted(table.skippedRows, "row") : Counted(table.unreadableCells, "cell")) +
            " not readable (line " + std::to_string(first.line) + ": " + first.reason +
            (faults > 1 ? "; ...)" : ")"));
    }
    for (const auto& note : table.notes)
        if (note.kind == ReadNote::Doubt) warnings.push_back(NoteText(note));
    return warnings;
}

std::string UpdateText(const CleanRun& run) {
    constexpr std::size_t kShown = 20;
    const Update& update = run.update;
    if (!update.isDone) return "";
    std::string text =
        "  " + Counted(update.added, "row") + " added to " + Grouped(update.kept) + " published";
    if (update.kept > 0 && update.absent == update.kept)
        text +=
            "; none of these is in the input, so that the new rows were cleaned without those before them";
    text += "\n";
    const auto count = static_cast<std::int64_t>(update.differences.size());
    if (count == 0) return text;
    text += "  " + Counted(count, "published row") + " would come out differently now and " +
            (run.options.revise ? "were revised:\n" : "stay as published (--revise takes the new ones):\n");
    for (std::size_t i = 0; i < update.differences.size() && i < kShown; ++i) {
        const Difference& one = update.differences[i];
        text += "    line " + std::to_string(one.line) + ": " + one.published + "\n      now: " + one.fresh +
                "\n";
    }
    if (update.differences.size() > kShown)
        text +=
            "    and " + Grouped(count - static_cast<std::int64_t>(kShown)) + " more; --report lists all\n";
    return text;
}

Json UpdateJson(const CleanRun& run) {
    const Update& update = run.update;
    Json differences = Json::array();
    for (const auto& one : update.differences)
        differences.push_back({{"line", one.line}, {"published", one.published}, {"now", one.fresh}});
    return {{"kept", update.kept},
            {"added", update.added},
            {"notInInput", update.absent},
            {"revised", run.options.revise},
            {"differences", differences}};
}

Json SeriesJson(const CleanRun& run, std::size_t index) {
    const Series& series = run.series[index];
    const ValueColumn& column = run.table.columns[index];
    const PointCounts points = CountPoints(series);
    Json steps = Json::array();
    for (std::size_t s = 0; s < run.results[index].size(); ++s) {
        const StepResult& result = run.results[index][s];
        Json step{
            {"step", run.steps[s].text}, {"points", result.points}, {"ofSelection", result.ofSelection}};
        if (result.cells) step["emptyCells"] = result.cells;
        if (!result.command.empty()) {
            step["command"] = result.command;
            step["result"] = result.text;
        }
        if (!result.note.empty()) step["note"] = result.note;
        steps.push_back(std::move(step));
    }
    return {{"column", column.column.name},
            {"unit", column.column.unit},
            {"points", series.before.size()},
            {"missing", column.missing},
            {"unreadable", column.unreadable},
            {"duplicates", series.duplicates},
            {"stored", ExactnessJson(series.exactness, series.scale)},
            {"steps", steps},
            {"flags", points.flags},
            {"changedValues", points.changed}};
}

// The flag variables as the CF conventions describe them, and which tests stand behind them.
Json QartodJson(const CleanRun& run) {
    Json values = Json::array();
    std::string meanings;
    for (const auto& flag : kQartodFlags) {
        values.push_back(flag.value - '0');
        meanings += (meanings.empty() ? "" : " ") + std::string(flag.meaning);
    }
    Json tests = Json::array();
    for (const auto& step : run.steps) {
        auto names = step.selection.StandardNames();
        if (step.kind->standardName[0]) names.emplace_back(step.kind->standardName);
        for (const auto& name : names) tests.push_back({{"step", step.text}, {"standard_name", name}});
    }
    Json variables = Json::array();
    for (const auto& column : run.table.columns)
        variables.push_back({{"column", QartodColumnName(column.column)},
                             {"of", column.column.name},
                             {"standard_name", "aggregate_quality_flag"},
                             {"flag_values", values},
                             {"flag_meanings", meanings}});
    return {{"scheme", "qartod"}, {"variables", variables}, {"tests", tests}};
}

}  // namespace

std::string CleanText(const CleanRun& run) {
    std::string text = ReadingText(run) + StorageText(run);
    for (std::size_t i = 0; i < run.series.size(); ++i) {
        const Column& column = run.table.columns[i].column;
        text += column.name + (column.unit.empty() ? "" : " [" + column.unit + "]") + ": " +
                Counted(static_cast<std::int64_t>(run.series[i].before.size()), "point") + "\n";
        for (std::size_t s = 0; s < run.results[i].size(); ++s)
            text += StepLine(run.steps[s], run.results[i][s]);
        const PointCounts points = CountPoints(run.series[i]);
        text += "  in all: " + Counted(points.changed, "value") + " changed" + points.text + "\n";
    }
    text += std::string(run.options.dryRun ? "would be written: " : "written: ");
    text += Counted(run.update.isDone ? run.update.kept + run.update.added : run.counts.rows, "row");
    if (run.counts.dropped) text += ", " + Grouped(run.counts.dropped) + " dropped";
    if (run.counts.kept)
        text += ", " + Grouped(run.counts.kept) + " kept that have a flag to drop, because " +
                (run.counts.kept == 1 ? "it has" : "they have") +
                " values without one (--blank empties single cells)";
    if (run.counts.blanked) text += ", " + Counted(run.counts.blanked, "cell") + " blanked";
    return text + (run.options.output == "-" ? "" : ", to " + run.options.output) + "\n" + UpdateText(run);
}

Json CleanJson(const CleanRun& run) {
    const Table& table = run.table;
    const bool converted = !table.input.sha256.empty();
    Json json{{"program", "tavin"},
              {"version", TAVIN_VERSION},
              {"input",
               {{"file", table.name},
                {"bytes", converted ? table.input.size : table.bytes.size()},
                {"sha256", converted ? table.input.sha256 : Sha256(table.bytes)}}},
              {"output", run.options.output}};
    json["table"] = TableJson(table);
    json["x"] = {{"column", table.x.name},
                 {"unit", table.HasTimes() ? "s" : table.x.unit},
                 {"sorted", run.axis.sorted},
                 {"stored", ExactnessJson(run.axis.exactness, run.axis.scale)}};
    if (table.HasTimes()) json["x"]["timeFormat"] = TimeFormText(table);
    json["y"] = Json::array();
    for (std::size_t i = 0; i < run.series.size(); ++i) json["y"].push_back(SeriesJson(run, i));
    json["written"] = {{"rows", run.counts.rows},
                       {"dropped", run.counts.dropped},
                       {"keptDespiteDrop", run.counts.kept},
                       {"editedValues", run.counts.edited},
                       {"blankedCells", run.counts.blanked}};
    if (run.options.write.scheme == StatusScheme::Qartod) json["status"] = QartodJson(run);
    if (run.update.isDone) json["update"] = UpdateJson(run);
    return json;
}

Json SummaryJson(const CleanRun& run) {
    Json columns = Json::array();
    for (std::size_t i = 0; i < run.series.size(); ++i) {
        const ValueColumn& column = run.table.columns[i];
        const PointCounts points = CountPoints(run.series[i]);
        columns.push_back({{"column", column.column.name},
                           {"points", run.series[i].before.size()},
                           {"missing", column.missing + column.unreadable},
                           {"flagged", points.flagged},
                           {"changed", points.changed}});
    }
    Json summary{
        {"rows", run.table.rows}, {"skippedRows", run.table.skippedRows}, {"dropped", run.counts.dropped}};
    if (run.update.isDone) {
        summary["added"] = run.update.added;
        summary["differing"] = run.update.differences.size();
    }
    summary["columns"] = columns;
    summary["warnings"] = WarningsOf(run.table);
    if (!run.lost.empty()) summary["lost"] = run.lost;
    return summary;
}

}  // namespace app
