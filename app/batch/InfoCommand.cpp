#include "app/batch/InfoCommand.h"

#include <cstdio>
#include <map>

#include "app/batch/Guard.h"
#include "app/batch/InOrder.h"
#include "app/batch/Info.h"
#include "app/batch/Processes.h"
#include "app/table/OpenTable.h"
#include "app/table/OutputFile.h"
#include "app/table/Progress.h"
#include "app/table/SafeText.h"

namespace app {

using Json = nlohmann::ordered_json;

namespace {

// The most that a line has room for.
std::string InfoLine(const Json& info) {
    std::string line = info["file"].get<std::string>() + ": " +
                       Counted(info["table"]["rows"].get<std::int64_t>(), "row") + ", " +
                       Counted(static_cast<std::int64_t>(info["y"].size()), "value column") + ", " +
                       info["x"]["from"].get<std::string>() + " to " + info["x"]["to"].get<std::string>();
    std::int64_t missing = 0;
    for (const auto& column : info["y"])
        missing += column["missing"].get<std::int64_t>() + column["unreadable"].get<std::int64_t>();
    const std::pair<const char*, std::int64_t> counts[] = {
        {"gap", info["x"]["gaps"].get<std::int64_t>()},
        {"duplicate", info["x"]["duplicates"].get<std::int64_t>()},
        {"skipped row", info["table"]["skippedRows"].get<std::int64_t>()},
        {"missing value", missing}};
    for (const auto& [what, count] : counts)
        if (count > 0) line += ", " + Counted(count, what);
    return line + "\n";
}

Result<std::string> TextOf(const InfoOptions& options, const std::string& file, Progress& progress) {
    ReadOptions read = options.read;
    read.path = file;
    const auto table = OpenTable(read, progress.Shower("reading"));
    if (!table) return table.Error();
    const XAxis axis = MakeXAxis(*table);
    if (options.files.size() == 1)
        return options.json ? JsonText(InfoJson(*table, axis)) : InfoText(*table, axis);
    const Json info = InfoJson(*table, axis);
    return options.json ? SafeJson(info.dump(-1, ' ', false, Json::error_handler_t::replace)) + "\n"
                        : SafeText(InfoLine(info));
}

// A failed file's line carries its exit code and message as a failure does.
Result<int> InfoOfMany(const InfoOptions& options) {
    std::map<std::size_t, Failure> failures;
    InOrder lines;
    const auto tell = [&](std::size_t index) {
        Progress none(false);
        const auto text = WithoutExceptions([&] { return TextOf(options, options.files[index], none); });
        return text ? "+" + *text : std::to_string(text.Error().exitCode) + "-" + text.Error().Text();
    };
    RunInProcesses(options.files.size(), options.jobs > 0 ? options.jobs : UsableCores(), tell,
                   [&](std::size_t index, const TaskEnd& end) {
                       const std::string& answer = end.answer;
                       if (end.fault.empty() && !answer.empty() && answer[0] == '+') {
                           lines.Put(index, answer.substr(1));
                           return;
                       }
                       lines.Put(index, "");
                       const auto dash = answer.find('-');
                       const bool told = end.fault.empty() && dash != std::string::npos;
                       failures[index] = told ? Failure{std::stoi(answer), answer.substr(dash + 1), {}}
                                              : Refusal(options.files[index] + ": " + end.fault);
                   });
    if (!lines.IsGood()) return Refusal("cannot write standard output");
    int code = kDone;
    for (const auto& [index, failure] : failures) {
        std::fprintf(stderr, "tavin: %s\n", failure.Text().c_str());
        code = code == kDone || code == kEmpty ? (failure.exitCode == kEmpty ? kEmpty : kRefused) : code;
    }
    return code;
}

}  // namespace

Result<int> Info(const InfoOptions& options) {
    if (options.files.size() > 1) return InfoOfMany(options);
    Progress progress(true);
    const auto text = TextOf(options, options.files.front(), progress);
    if (!text) return text.Error();
    progress.Clear();
    OutputFile output;
    if (!output.Open("-") || !output.Write(*text) || !output.Commit()) return output.Error();
    return kDone;
}

}  // namespace app
