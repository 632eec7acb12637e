#include "app/batch/Clean.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "app/batch/CleanReport.h"
#include "app/batch/Info.h"
#include "app/table/Gzip.h"
#include "app/table/InputFile.h"
#include "app/table/OpenTable.h"
#include "app/table/OutputFile.h"
#include "app/table/Progress.h"
#include "app/table/SafeText.h"

namespace app {

namespace {

bool IsSameFile(const std::string& a, const std::string& b) { return a != "-" && b != "-" && SameFile(a, b); }

std::optional<Failure> CheckTargets(const CleanOptions& options) {
    if (!options.force && IsInput(options.read.path, options.output))
        return UsageError("the output " + options.output +
                          " is the input; name another file or give --force");
    if (options.update && options.output == "-")
        return UsageError("--update adds to a file; standard output holds nothing to add to");
    if (options.revise && !options.update) return UsageError("--revise belongs to --update");
    if (options.report.empty()) return std::nullopt;
    if (IsInput(options.read.path, options.report))
        return UsageError("the report would overwrite the input " + options.read.path);
    if (options.report == options.output || IsSameFile(options.report, options.output))
        return UsageError("the report and the output are the same: " + options.report);
    return std::nullopt;
}

// What the steps need of the series.
SeriesWishes WishesOf(const CleanOptions& options) {
    SeriesWishes wishes;
    wishes.decimals = options.decimals;
    for (const auto& step : options.steps) {
        wishes.zeroOrigin |= step.fromZeroOrigin;
        wishes.reasons |= step.selection.AsksForReasons();
    }
    return wishes;
}

Result<std::vector<Series>> MakeAllSeries(const CleanOptions& options, const Table& table,
                                          const XAxis& axis) {
    std::vector<Series> all;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        all.push_back(MakeSeries(table, axis, i, WishesOf(options)));
        const std::string& name = table.columns[i].column.name;
        if (!all.back().source)
            return Refusal("column \"" + name + "\" has more points than memory can hold");
        if (const auto failure = CheckDecimals(table, i, all.back(), options.decimals)) return *failure;
        if (all.back().before.empty()) return NoData(table.name + ": column \"" + name + "\" has no values");
    }
    return all;
}

// The first step that selected nothing in any column, where that is asked for.
std::optional<Failure> CheckSelections(const CleanRun& run) {
    const auto& steps = run.steps;
    for (std::size_t s = run.options.limits.size(); run.options.failIfEmpty && s < steps.size(); ++s) {
        const bool selectedNothing =
            std::all_of(run.results.begin(), run.results.end(),
                        [&](const auto& ofColumn) { return ofColumn[s].selectedNothing; });
        if (selectedNothing)
            return Refusal(steps[s].text +
                           " selects nothing in any column; nothing is written (--fail-if-empty)");
    }
    return std::nullopt;
}

std::optional<Failure> RunSteps(CleanRun& run, std::vector<Series>& series, Progress& progress) {
    auto& steps = run.steps;
    steps = run.options.limits;
    steps.insert(steps.end(), run.options.steps.begin(), run.options.steps.end());
    const auto all = double(series.size() * steps.size());
    double done = 0;
    for (std::size_t column = 0; column < series.size(); ++column) {
        StepRunner runner(run.table, run.axis, column, series[column]);
        const bool writesQartod = run.options.write.scheme == StatusScheme::Qartod ||
                                  run.table.columns[column].statusFields.qartod >= 0;
        if (writesQartod) runner.KeepJudged();
        auto& results = run.results.emplace_back();
        for (const auto& step : steps) {
            progress.Show(step.text, done++ / all);
            const auto result = runner.Run(step);
            if (!result) return result.Error();
            results.push_back(*result);
        }
    }
    return CheckSelections(run);
}

// The rows that the output holds already, and the new ones.
Result<std::string> UpdatedText(CleanRun& run, Progress& progress) {
    std::string fresh;
    OutputFile text;
    text.OpenText(fresh);
    const bool written =
        WriteTable(text, run.table, run.series, run.options.write, run.counts, progress.Shower("writing"));
    if (!written || !text.Flush()) return text.Error();
    auto published = ReadInput(run.options.output);
    if (!published) return published.Error();
    if (IsGzip(*published)) {
        auto unpacked = Unpacked(*published, run.options.output);
        if (!unpacked) return unpacked.Error();
        *published = std::move(*unpacked);
    }
    auto merged = MergePublished(*published, fresh, run.table, run.options.revise, run.update);
    if (!merged) return merged.Error().About("cannot update " + run.options.output);
    return merged;
}

// The report is complete before the output takes its place, so that a failure of either leaves neither.
Result<int> WriteAll(CleanRun& run, Progress& progress) {
    OutputFile output;
    OutputFile report;
    const bool dry = run.options.dryRun;
    std::error_code unknown;
    const bool updates = run.options.update && std::filesystem::exists(run.options.output, unknown);
    Result<std::string> updated = updates ? UpdatedText(run, progress) : std::string();
    if (!updated) return updated.Error();
    if (!output.Open(dry ? "/dev/null" : run.options.output)) return output.Error();
    const bool written = updates ? output.Write(*updated)
                                 : WriteTable(output, run.table, run.series, run.options.write, run.counts,
                                              progress.Shower("writing"));
    if (!written) return output.Error();
    if (!run.options.report.empty() && !dry) {
        const bool complete = report.Open(run.options.report) && report.Write(JsonText(CleanJson(run)));
        if (!complete || !report.Flush()) return report.Error();
    }
    // The rows were written from the input's bytes, which must still be those that were read.
    if (run.table.bytes.Changed() == Bytes::Change::Rewritten) return ChangedInput(run.table.name);
    if (!output.Commit()) return output.Error();
    run.lost = output.Lost();
    if (!run.options.report.empty() && !dry && !report.Commit()) return report.Error();
    return kDone;
}

}  // namespace

Result<nlohmann::ordered_json> CleanFile(const CleanOptions& options) {
    if (options.output.empty()) return UsageError("--output is required, or --out-dir for several files");
    if (options.steps.empty() && options.limits.empty())
        return UsageError("no step to apply; see tavin clean --help");
    if (const auto failure = CheckTargets(options)) return *failure;
    Progress progress(!options.quiet);
    ReadOptions read = options.read;
    read.chooseY = true;
    const auto table = OpenTable(read, progress.Shower("reading"));
    if (!table) return table.Error();
    const XAxis axis = MakeXAxis(*table);
    auto series = MakeAllSeries(options, *table, axis);
    if (!series) return series.Error();
    CleanRun run{options, *table, axis, *series, {}, {}, {}, {}};
    if (const auto failure = RunSteps(run, *series, progress)) return failure->About(table->name);
    const auto written = WriteAll(run, progress);
    if (!written) return written.Error();
    progress.Clear();
    if (!options.quiet) std::fputs(SafeText(CleanText(run)).c_str(), stderr);
    auto summary = SummaryJson(run);
    summary["alarms"] = Alarms(options.alarms, summary);
    return summary;
}

Result<int> Clean(const CleanOptions& options) {
    const auto summary = CleanFile(options);
    if (!summary) return summary.Error();
    const std::string lost = summary->value("lost", "");
    if (!lost.empty()) std::fprintf(stderr, "tavin: %s\n", SafeText(lost).c_str());
    for (const auto& alarm : summary->at("alarms"))
        std::fprintf(stderr, "tavin: alarm: %s: %s\n", SafeText(ShownName(options.read.path)).c_str(),
                     SafeText(alarm.get<std::string>()).c_str());
    return summary->at("alarms").empty() ? kDone : kAlarm;
}

}  // namespace app
