#include "app/batch/CommandLine.h"

#include <cstdio>
#include <filesystem>

#include "app/batch/Arguments.h"
#include "app/batch/CleanCommand.h"
#include "app/batch/Guard.h"
#include "app/batch/LiveCommand.h"
#include "app/batch/Manual.h"
#include "app/batch/Parser.h"
#include "app/table/OutputFile.h"
#include "app/workbench/Workbench.h"
#include "tavin/tavin.h"

namespace app {

namespace {

int Report(const Failure& failure) {
    std::fprintf(stderr, "tavin: %s\n", failure.Text().c_str());
    return failure.exitCode;
}

// A single word that is no file was meant as a command.
std::optional<Failure> CheckFiles(const std::vector<std::string>& files,
                                  const std::vector<Command>& commands) {
    std::vector<std::string> names;
    std::string list;
    for (const auto& command : commands) {
        if (command.name[0] == '\0') continue;
        names.emplace_back(command.name);
        list += (list.empty() ? "" : ", ") + names.back();
    }
    for (const auto& file : files) {
        std::error_code unknown;
        if (file.find_first_of("./") != std::string::npos || std::filesystem::exists(file, unknown)) continue;
        const std::string nearest = NearestName(file, names);
        return UsageError("there is no command or file \"" + file + "\"" +
                          (nearest.empty() ? "" : "; did you mean " + nearest + "?") + "\nThe commands are " +
                          list + "; see tavin --help.");
    }
    return std::nullopt;
}

Result<int> Run(int argc, char** argv) {
    Arguments arguments;
    const auto commands = MakeCommands(arguments);
    const auto parsed = Parse(commands, {argv + 1, argv + argc});
    if (!parsed) return parsed.Error();
    if (!parsed->command) return kDone;
    const std::string name = parsed->command->name;
    if (name == "info") return Info(arguments.info);
    if (name == "clean") return CleanCommand(arguments, parsed->given);
    if (name == "plot") return Plot(arguments.plot);
    if (name == "live") return LiveCommand(arguments.live, argc, argv);
    if (name == "print") return PrintText(arguments.printed, commands);
    if (const auto failure = CheckFiles(arguments.files, commands)) return *failure;
    return RunWorkbench(argc, argv, arguments.files);
}

}  // namespace

int Main(int argc, char** argv) {
    RemoveUnfinishedFilesOnSignals();
    const auto result = WithoutExceptions([&] { return Run(argc, argv); });
    return result ? *result : Report(result.Error());
}

}  // namespace app
