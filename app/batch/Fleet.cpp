#include "app/batch/Fleet.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>

#include "app/batch/Guard.h"
#include "app/batch/InOrder.h"
#include "app/batch/Processes.h"
#include "app/batch/RunLog.h"
#include "app/table/CellNumber.h"
#include "app/table/SafeText.h"

namespace app {

using Json = nlohmann::ordered_json;

namespace {

namespace fs = std::filesystem;

// What can come of a file, the worst first.
struct State {
    const char* name;
    int exitCode;
};
constexpr State kStates[] = {{"failed", kRefused}, {"empty", kEmpty},    {"alarm", kAlarm},
                             {"done", kDone},      {"unchanged", kDone}, {"would clean", kDone}};

int Rank(const std::string& state) {
    int rank = 0;
    while (kStates[rank].name != state) ++rank;
    return rank;
}

std::string OutputOf(const CleanTask& task) {
    const std::string name = fs::path(task.options.read.path).filename().string();
    return (task.folder.empty() || task.folder.back() == '/' ? task.folder : task.folder + "/") + name;
}

// The report of a file in the folder of reports.
std::string ReportOf(const CleanTask& task) {
    if (task.options.report.empty()) return "";
    return (fs::path(task.options.report) / fs::path(task.options.output).filename()).string() + ".json";
}

std::string Canonical(const std::string& path) {
    std::error_code unknown;
    const auto canonical = fs::weakly_canonical(path, unknown);
    return unknown ? path : canonical.string();
}

std::optional<Failure> CheckNames(const std::vector<CleanTask>& tasks) {
    std::map<std::string, const CleanTask*> outputs;
    std::map<std::string, const CleanTask*> inputs;
    for (const auto& task : tasks) {
        if (!task.fault.empty()) continue;
        for (const std::string& output : {task.options.output, task.options.report}) {
            if (output.empty()) continue;
            const auto [place, isNew] = outputs.emplace(Canonical(output), &task);
            if (isNew) continue;
            return UsageError(place->second->options.read.path + " and " + task.options.read.path +
                              " would both be written to " + output +
                              "; clean them into folders of their own");
        }
        inputs.emplace(Canonical(task.options.read.path), &task);
    }
    for (const auto& [output, task] : outputs)
        if (inputs.count(output) && !task->options.force)
            return UsageError("the output " + task->options.output +
                              " is an input; name another folder or give --force");
    return std::nullopt;
}

Json Outcome(const char* state, const std::string& message = "") {
    Json outcome{{"state", state}};
    if (!message.empty()) outcome["message"] = message;
    return outcome;
}

class Fleet {
  public:
    Fleet(std::vector<CleanTask> tasks, const FleetOptions& options)
        : tasks_(std::move(tasks)), options_(options), counts_(std::size(kStates)) {}

    Result<int> Run() {
        for (auto& task : tasks_) {
            if (task.options.report == "-")
                return UsageError(
                    "--report of many files is a folder; a line about each goes to standard output");
            task.options.output = OutputOf(task);
            task.options.report = ReportOf(task);
            task.options.quiet = true;
        }
        if (const auto failure = CheckNames(tasks_)) return *failure;
        if (const auto failure = OpenLogs()) return *failure;
        RunInProcesses(
            tasks_.size(), options_.jobs > 0 ? options_.jobs : UsableCores(),
            [&](std::size_t index) {
                return Work(tasks_[index]).dump(-1, ' ', false, Json::error_handler_t::replace);
            },
            [&](std::size_t index, const TaskEnd& end) { TakeEnd(index, end); });
        if (!lines_.IsGood()) return Refusal("cannot write standard output");
        Total();
        return worst_ ? kStates[*worst_].exitCode : kDone;
    }

  private:
    std::optional<Failure> OpenLogs() {
        for (const auto& task : tasks_) {
            const auto reports = fs::path(task.options.report).parent_path();
            std::error_code error;
            if (!reports.empty() && !task.options.dryRun) fs::create_directories(reports, error);
            if (error) return Refusal("cannot make the folder " + reports.string() + ": " + error.message());
            if (logs_.count(Canonical(task.folder))) continue;
            auto log = RunLog::Open(task.folder, !task.options.dryRun);
            if (!log) return log.Error();
            logs_.emplace(Canonical(task.folder), std::move(*log));
        }
        return std::nullopt;
    }

    // In a process of its own: what came of one file.
    Json Work(const CleanTask& task) const {
        if (!task.fault.empty()) return Outcome("failed", task.fault);
        const auto outcome = WithoutExceptions([&] { return Result<Json>(CleanOne(task)); });
        return outcome ? *outcome : Outcome("failed", outcome.Error().Text());
    }

    Json CleanOne(const CleanTask& task) const {
        const CleanOptions& options = task.options;
        if (!options_.again) {
            const Json before =
                logs_.at(Canonical(task.folder)).Unchanged(options.output, options.read.path, task.given);
            if (!before.is_null()) return Judged(before, options, "unchanged");
        }
        const FileState state = StateOf(options.read.path);
        const auto summary = CleanFile(options);
        if (!summary) {
            const bool empty = summary.Error().exitCode == kEmpty;
            return Outcome(empty ? "empty" : "failed", summary.Error().Text());
        }
        Json outcome = Judged(*summary, options, options.dryRun ? "would clean" : "done");
        // An input that is being written at this moment is cleaned again by the next run.
        const bool keeps = !options.dryRun && state.size >= 0;
        const std::string digest = keeps ? DigestOf(options.read.path) : "";
        if (!digest.empty() && StateOf(options.read.path) == state)
            outcome["log"] = RunLog::Entry(options.output, state, digest, task.given, *summary);
        return outcome;
    }

    // Bounds may have been set since the file was cleaned.
    static Json Judged(const Json& summary, const CleanOptions& options, const char* state) {
        const auto alarms = Alarms(options.alarms, summary);
        Json outcome = Outcome(alarms.empty() ? state : "alarm");
        if (!alarms.empty()) outcome["message"] = alarms.front();
        outcome.update(summary);
        outcome["alarms"] = alarms;
        return outcome;
    }

    void TakeEnd(std::size_t index, const TaskEnd& end) {
        const CleanTask& task = tasks_[index];
        Json outcome =
            end.fault.empty() ? Json::parse(end.answer, nullptr, false) : Outcome("failed", end.fault);
        if (!outcome.is_object()) outcome = Outcome("failed", "the process gave no result");
        if (outcome.contains("log")) {
            logs_.at(Canonical(task.folder)).Add(task.options.output, outcome["log"]);
            outcome.erase("log");
        }
        const int rank = Rank(outcome["state"]);
        ++counts_[static_cast<std::size_t>(rank)];
        worst_ = std::min(worst_.value_or(rank), rank);
        const bool isWanted = !options_.quiet || kStates[rank].exitCode != kDone;
        lines_.Put(index, isWanted ? options_.json ? SafeJson(JsonLine(task, outcome))
                                                   : SafeText(TextLine(task, outcome))
                                   : "");
    }

    static std::string JsonLine(const CleanTask& task, const Json& outcome) {
        Json line;
        if (!task.station.empty()) line["station"] = task.station;
        line["file"] = task.options.read.path;
        line["output"] = task.options.output;
        line.update(outcome);
        return line.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
    }

    static std::string TextLine(const CleanTask& task, const Json& outcome) {
        std::string line = outcome["state"];
        line.resize(std::max<std::size_t>(line.size() + 1, 11), ' ');
        const std::string message = outcome.value("message", "");
        const std::string& file = task.options.read.path;
        if (!task.station.empty()) line += task.station + ": ";
        if (!outcome.contains("rows"))
            return line + (message.compare(0, file.size(), file) == 0 ? "" : file + ": ") + message + "\n";
        line += file + ": " + Counted(outcome["rows"].get<std::int64_t>(), "row");
        for (const char* count : {"missing", "flagged", "changed"}) {
            std::int64_t sum = 0;
            for (const auto& column : outcome["columns"]) sum += column.value(count, std::int64_t{0});
            if (sum > 0) line += ", " + Grouped(sum) + " " + count;
        }
        for (const char* count : {"added", "differing"})
            if (const auto rows = outcome.value(count, std::int64_t{0}))
                line += ", " + Grouped(rows) + " " + count;
        for (const char* texts : {"alarms", "warnings"})
            for (const auto& text : outcome.value(texts, Json::array()))
                line += "; " + text.get<std::string>();
        if (outcome.contains("lost")) line += "; " + outcome["lost"].get<std::string>();
        return line + "\n";
    }

    void Total() const {
        std::string text = Counted(static_cast<std::int64_t>(tasks_.size()), "file") + ":";
        const char* separator = " ";
        for (std::size_t i = 0; i < std::size(kStates); ++i) {
            if (counts_[i] == 0) continue;
            text += separator + Grouped(counts_[i]) + " " + kStates[i].name;
            separator = ", ";
        }
        if (!options_.quiet) std::fprintf(stderr, "%s\n", text.c_str());
    }

    std::vector<CleanTask> tasks_;
    const FleetOptions& options_;
    std::map<std::string, RunLog> logs_;  // by folder
    std::vector<std::int64_t> counts_;    // by state
    std::optional<int> worst_;
    InOrder lines_;
};

}  // namespace

Result<int> CleanFleet(std::vector<CleanTask> tasks, const FleetOptions& options) {
    return Fleet(std::move(tasks), options).Run();
}

}  // namespace app
