#include "app/batch/CleanCommand.h"

#include <algorithm>
#include <filesystem>

#include "app/batch/Parser.h"
#include "app/batch/Stations.h"

namespace app {

namespace {

CleanTask TaskOf(const Arguments& arguments, const std::string& given, const std::string& file) {
    CleanTask task{arguments.clean, arguments.fleet.folder, {}, TAVIN_VERSION "\n" + given, {}};
    task.options.read.path = file;
    return task;
}

Result<int> CleanStations(const Arguments& arguments, const std::string& given) {
    const std::string& table = arguments.fleet.stations;
    if (!arguments.fleet.files.empty())
        return UsageError("files and --stations do not go together: the table names the files");
    std::vector<std::string> repeatable;
    Arguments unused;
    for (const auto& command : MakeCommands(unused))
        for (const auto& option : command.options)
            for (const auto& name : option.Names())
                if (option.repeatable) repeatable.push_back(name);
    const auto stations = ReadStations(table, repeatable);
    if (!stations) return stations.Error();
    std::vector<CleanTask> tasks;
    for (const auto& station : *stations) {
        // What a row says comes on top of the command line; columns take the place of those named there.
        Arguments row = arguments;
        std::vector<std::string> words = station.words;
        if (std::find(words.begin(), words.end(), "-y") != words.end()) row.clean.read.y.clear();
        words.insert(words.begin(), "clean");
        const auto commands = MakeCommands(row);
        const auto parsed = Parse(commands, words);
        const std::string place = table + ":" + std::to_string(station.line);
        if (!parsed) return parsed.Error().About(place);
        if (!parsed->command) return UsageError(place + ": --help and --version have no place in a table");
        if (row.fleet.folder.empty()) return UsageError(place + ": --out-dir is required for the outputs");
        const bool steps = !row.clean.steps.empty() || !row.clean.limits.empty();
        if (!steps) return UsageError(place + ": no step to apply");
        for (const auto& file : station.files) tasks.push_back(TaskOf(row, given + parsed->given, file));
        if (station.files.empty()) {
            tasks.push_back(TaskOf(row, given, station.pattern));
            tasks.back().fault = "no file matches " + station.pattern;
        }
        const std::size_t added = std::max<std::size_t>(station.files.size(), 1);
        for (std::size_t i = tasks.size() - added; i < tasks.size(); ++i) tasks[i].station = station.name;
    }
    return CleanFleet(std::move(tasks), arguments.fleet);
}

Result<int> CleanIntoFolder(const Arguments& arguments, const std::string& given) {
    if (!arguments.clean.output.empty()) return UsageError("--output and --out-dir do not go together");
    if (arguments.clean.steps.empty() && arguments.clean.limits.empty())
        return UsageError("no step to apply; see tavin clean --help");
    std::vector<CleanTask> tasks;
    for (const auto& file : arguments.fleet.files) {
        if (file == "-") return UsageError("standard input has no name for --out-dir; use --output");
        tasks.push_back(TaskOf(arguments, given, file));
    }
    return CleanFleet(std::move(tasks), arguments.fleet);
}

}  // namespace

Result<int> CleanCommand(const Arguments& arguments, const std::string& given) {
    const FleetOptions& fleet = arguments.fleet;
    if (!fleet.stations.empty()) return CleanStations(arguments, given);
    if (fleet.files.empty()) return UsageError("FILE is required; see tavin clean --help");
    if (!fleet.folder.empty()) return CleanIntoFolder(arguments, given);
    if (fleet.files.size() > 1)
        return UsageError("several files need a folder for their outputs: --out-dir DIR");
    if (fleet.json) return UsageError("--json tells of the files of --out-dir; of one file tells --report");
    CleanOptions options = arguments.clean;
    options.read.path = fleet.files.front();
    options.quiet = fleet.quiet;
    return Clean(options);
}

}  // namespace app
