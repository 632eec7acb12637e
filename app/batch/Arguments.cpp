#include "app/batch/Arguments.h"

#include <map>

#include "app/batch/HelpText.h"
#include "app/batch/Step.h"
#include "app/table/Duration.h"
#include "app/table/StatusText.h"
#include "app/table/TimeText.h"

namespace app {

namespace {

using Taken = std::optional<Failure>;

constexpr const char* kStepGroup = "Steps, applied in the order given";

// Options that say how the file is to be read, the same for every command.

Taken TakeDelimiter(ReadOptions& read, const std::string& value) {
    static const std::map<std::string, char> kDelimiters = {
        {"comma", ','}, {"semicolon", ';'}, {"tab", '\t'}, {"blanks", ' '}, {"bar", '|'}};
    read.delimiter = kDelimiters.at(value);
    return std::nullopt;
}

Taken TakeDecimal(ReadOptions& read, const std::string& value) {
    read.decimalSign = value == "comma" ? ',' : '.';
    return std::nullopt;
}

Taken TakeTimeFormat(ReadOptions& read, const std::string& value) {
    read.timeFormat = value;
    return CheckTimeFormat(value);
}

Taken TakeHeaderLine(ReadOptions& read, const std::string& value) {
    const auto line = ReadWholeNumber({"--header-line", "N", ""}, value);
    if (!line) return line.Error();
    if (*line < 0) return UsageError("--header-line " + value + ": expected a line from 1, or 0 for none");
    read.headerLine = *line;
    return std::nullopt;
}

const OptionRow<ReadOptions> kColumnRows[] = {
    {{"-x", "COLUMN", "the x column, by name or number from 1; else the first of times or numbers"},
     &ReadOptions::x},
    {{"-y", "COLUMN", "a column of values, by name or number; repeatable; else all"}, &ReadOptions::y},
};

const OptionRow<ReadOptions> kReadRows[] = {
    {{"--delimiter", "NAME", "comma, semicolon, tab, blanks or bar; guessed otherwise", Completes::Nothing,
      "comma semicolon tab blanks bar"},
     TakeDelimiter},
    {{"--decimal", "SIGN", "the decimal sign, point or comma; guessed otherwise", Completes::Nothing,
      "point comma"},
     TakeDecimal},
    {{"--time-format", "FORM",
      "form of the times: iso, dmy, mdy, compact, epoch, epoch-ms, epoch-us, number, or fields as in "
      "\"%d.%m.%Y %H:%M\""},
     TakeTimeFormat},
    {{"--time-column", "COLUMN", "the column of the times, or several that compose them: DATE+CLOCK"},
     &ReadOptions::x},
    {{"--zone", "ZONE",
      "zone of times that name none, in the file and in options, as Europe/Berlin or +01:00; else UTC"},
     &ReadOptions::zone},
    {{"--header-line", "N", "the line that names the columns, counted from 1; 0: none; guessed otherwise"},
     TakeHeaderLine},
    {{"--skip", "N", "pass over so many lines at the start"}, &ReadOptions::skip},
    {{"--encoding", "NAME", "encoding of the text; guessed otherwise"}, &ReadOptions::encoding},
    {{"--missing", "TEXT", "what stands for no value besides NaN, NA, null and -; repeatable"},
     &ReadOptions::missing},
};

const OptionRow<Arguments> kProgramRows[] = {
    {{"FILE", "", "tables to open in the workbench", Completes::Files}, &Arguments::files},
};

constexpr const char* kJobsHelp = "work on so many files at a time; else on as many as there are cores";

const OptionRow<InfoOptions> kInfoRows[] = {
    {{"FILE", "", "the tables; - is standard input", Completes::Files, "", kRequired}, &InfoOptions::files},
    {{"--json", nullptr, "write JSON, of several files one line each"}, &InfoOptions::json},
    {{"--jobs", "N", kJobsHelp}, &InfoOptions::jobs},
};

Taken TakeFlags(const char* option, const std::string& value, unsigned short& flags) {
    const auto read = FlagsFromText(value, ',');
    if (!read)
        return UsageError(std::string(option) + " " + value +
                          ": expected deleted, rejected, spike or another flag, with commas between");
    flags |= *read;
    return std::nullopt;
}

Taken TakeDrop(CleanOptions& options, const std::string& value) {
    return TakeFlags("--drop", value, options.write.drop);
}

Taken TakeBlank(CleanOptions& options, const std::string& value) {
    return TakeFlags("--blank", value, options.write.blank);
}

Taken TakeMissing(CleanOptions& options, const std::string& value) {
    options.write.missing = value;
    return std::nullopt;
}

Taken TakeScheme(CleanOptions& options, const std::string&) {
    options.write.scheme = StatusScheme::Qartod;
    return std::nullopt;
}

Taken TakeDecimals(CleanOptions& options, const std::string& value) {
    if (value.size() == 1 && value[0] >= '0' && value[0] <= '9') {
        options.decimals = value[0] - '0';
        return std::nullopt;
    }
    return UsageError("--decimals " + value + ": expected 0 to 9");
}

// Values outside are deleted before the first step.
Taken TakeLimits(CleanOptions& options, const std::string& value) {
    const auto inside = ReadStep("--select", "y=" + value);
    if (!inside)
        return UsageError("--limits " + value + ": expected MIN:MAX in y units (an end may be left out)");
    options.limits = {*inside, *ReadStep("--select", "invert"), *ReadStep("--delete"),
                      *ReadStep("--select", "all")};
    return std::nullopt;
}

Taken TakeAlarm(CleanOptions& options, const std::string& value) {
    auto alarm = ReadAlarm(value);
    if (!alarm) return alarm.Error();
    options.alarms.push_back(std::move(*alarm));
    return std::nullopt;
}

const OptionRow<CleanOptions> kCleanRows[] = {
    {{"-o,--output", "OUT",
      "where the result goes, compressed where the name ends in .gz; - is standard output", Completes::Files,
      "", kAside},
     &CleanOptions::output},
    {{"--drop", "FLAGS", "leave out rows whose points are deleted, rejected or spike, with commas between"},
     TakeDrop},
    {{"--blank", "FLAGS",
      "empty the cells of values that are deleted, rejected or spike, with commas between"},
     TakeBlank},
    {{"--write-missing", "TEXT", "what --blank writes instead of nothing"}, TakeMissing},
    {{"--flags", "SCHEME", "what the status columns hold: qartod for the numbers of QARTOD, else names",
      Completes::Nothing, "qartod"},
     TakeScheme},
    {{"--fail-if-empty", nullptr,
      "write nothing and end with 1 where a --select selects nothing in every column"},
     &CleanOptions::failIfEmpty},
    {{"--decimals", "N", "store and write edited values with at least so many decimals", Completes::Nothing,
      "0 1 2 3 4 5 6 7 8 9"},
     TakeDecimals},
    {{"--limits", "MIN:MAX", "delete the values outside before the first step"}, TakeLimits},
    {{"--report", "FILE", "write a report in JSON; - is standard output; with --out-dir a folder for reports",
      Completes::Files, "", kAside},
     &CleanOptions::report},
    {{"--alarm", "QUANTITY=MIN:MAX",
      "end with 3 where the number of rows, or of published rows that come out differing, or the share of "
      "missing, flagged or changed values leaves these bounds; repeatable",
      Completes::Nothing, "", kAside | kRepeatable},
     TakeAlarm},
    {{"--update", nullptr,
      "keep the rows that the output holds already, add the new ones, and list the rows that come out "
      "differently"},
     &CleanOptions::update},
    {{"--revise", nullptr, "with --update, replace the rows that come out differently"},
     &CleanOptions::revise},
    {{"--dry-run", nullptr, "do everything but write", Completes::Nothing, "", kAside},
     &CleanOptions::dryRun},
    {{"--force", nullptr, "allow the output to replace the input", Completes::Nothing, "", kAside},
     &CleanOptions::force},
};

const OptionRow<FleetOptions> kFleetRows[] = {
    {{"FILE", "", "the tables; - is standard input", Completes::Files, "", kAside}, &FleetOptions::files},
    {{"--out-dir", "DIR", "the folder of the outputs, each under the name of its input", Completes::Folders,
      "", kAside},
     &FleetOptions::folder},
    {{"--stations", "TABLE", "clean what a table of stations names, each with options of its own",
      Completes::Files, "", kAside},
     &FleetOptions::stations},
    {{"--jobs", "N", kJobsHelp, Completes::Nothing, "", kAside}, &FleetOptions::jobs},
    {{"--again", nullptr, "also clean inputs that have not changed since the last run", Completes::Nothing,
      "", kAside},
     &FleetOptions::again},
    {{"--json", nullptr, "tell of each file in a line of JSON", Completes::Nothing, "", kAside},
     &FleetOptions::json},
    {{"-q,--quiet", nullptr, "no report and no progress; of many files only those that need a look",
      Completes::Nothing, "", kAside},
     &FleetOptions::quiet},
};

const OptionRow<ReadOptions> kPlotFileRows[] = {
    {{"FILE", "", "the table; - is standard input", Completes::Files, "", kRequired}, &ReadOptions::path},
};

const OptionRow<PlotOptions> kPlotRows[] = {
    {{"-o,--output", "OUT", "the picture: a name that ends in .png, .svg or .pdf; - is standard output",
      Completes::Files, "", kRequired},
     &PlotOptions::output},
    {{"--format", "FORMAT", "format of standard output; else png", Completes::Nothing, "png svg pdf"},
     &PlotOptions::format},
    {{"--title", "TEXT", "a title above the plots"}, &PlotOptions::title},
    {{"--over", "ORIGINAL",
      "the table that FILE was cleaned from: its lines, pale, below those of the columns of the same names",
      Completes::Files},
     &PlotOptions::over},
    {{"--panels", "FOR", "a plot for each unit (default), for each series, or one for all",
      Completes::Nothing, kPanelWords},
     &PlotOptions::panels},
    {{"--size", "WxH", "width and height: 1200x800 pixels (default), or 180x120mm, 18x12cm, 7x5in"},
     &PlotOptions::size},
    {{"--dpi", "N", "dots per inch: how many pixels a length has, and so a letter; else 96"},
     &PlotOptions::dotsPerInch},
    {{"--from", "X", "draw from this x on: a time in ISO 8601, or a number"}, &PlotOptions::from},
    {{"--to", "X", "draw up to this x"}, &PlotOptions::to},
    {{"--gap", "FACTOR", "break lines where samples lie so many usual steps apart; else 2.5, 0 for nowhere"},
     &PlotOptions::gap},
    {{"--file-order", nullptr, "join the samples in the order of the rows, not of x"},
     &PlotOptions::fileOrder},
};

Taken TakeLength(LiveOptions& options, const std::string& value) {
    const auto seconds = ReadDuration(value);
    if (!seconds || *seconds <= 0)
        return UsageError("--for " + value + ": expected a length of time such as 90s, 10min or 1d");
    options.seconds = *seconds;
    return std::nullopt;
}

Taken TakeWindow(LiveOptions& options, const std::string& value) {
    const auto seconds = ReadDuration(value);
    if (!seconds || *seconds <= 0)
        return UsageError("--window " + value + ": expected a length of time such as 90s, 10min or 1d");
    options.window = *seconds;
    return std::nullopt;
}

const OptionRow<LiveOptions> kLiveRows[] = {
    {{"SOURCE", "", "where lines come from, as told below", Completes::Files, "", kRequired},
     &LiveOptions::sources},
    {{"-o,--output", "OUT",
      "record what comes into this CSV file; - is standard output; of several sources each has its own: "
      "OUT-1.csv, OUT-2.csv",
      Completes::Files},
     &LiveOptions::output},
    {{"--append", nullptr, "continue a recording that is there already"}, &LiveOptions::append},
    {{"--force", nullptr, "replace a file that is there already"}, &LiveOptions::force},
    {{"--for", "TIME", "end after so long, as 90s, 10min or 1d"}, TakeLength},
    {{"--window", "TIME", "how much a live window shows; else 1min"}, TakeWindow},
    {{"--derive", "A-B", "in a window, a channel that is the sum (A+B) or the difference of two; repeatable"},
     &LiveOptions::derived},
    {{"--stats", nullptr, "tell each second how many rows came, the last values, their age and lost lines"},
     &LiveOptions::stats},
};

const OptionRow<Arguments> kPrintRows[] = {
    {{"WHAT", "", "manual (a page for man), or the completions of bash, zsh or fish", Completes::Nothing,
      "manual bash zsh fish", kRequired},
     &Arguments::printed},
};

void AddSteps(Command& command, CleanOptions& options) {
    for (const auto& kind : StepKinds()) {
        BoundOption bound{{kind.option, kind.value, kind.help}, {}, true, kStepGroup};
        bound.take = [&options, &kind](const std::string& value) -> Taken {
            auto step = ReadStep(kind, value);
            if (!step) return step.Error();
            options.steps.push_back(std::move(*step));
            return std::nullopt;
        };
        command.options.push_back(std::move(bound));
    }
}

}  // namespace

std::vector<Command> MakeCommands(Arguments& arguments) {
    Command program{"", "Shows and cleans series of measurements.", kMainHelp, {}};
    program.Add(kProgramRows, arguments);
    Command info{"info", "Say what a file holds and how it would be read", kInfoHelp, {}};
    info.Add(kInfoRows, arguments.info);
    Command clean{"clean", "Clean the values of a file in steps", CleanHelp(), {}};
    clean.Add(kFleetRows, arguments.fleet);
    clean.Add(kCleanRows, arguments.clean);
    Command plot{"plot", "Draw a file as a picture", kPlotHelp, {}};
    plot.Add(kPlotFileRows, arguments.plot.read);
    plot.Add(kPlotRows, arguments.plot);
    Command live{"live", "Receive, and record, what an instrument sends", LiveHelp(), {}};
    live.Add(kLiveRows, arguments.live);
    const std::pair<Command*, ReadOptions*> readers[] = {{&info, &arguments.info.read},
                                                         {&clean, &arguments.clean.read},
                                                         {&plot, &arguments.plot.read},
                                                         {&live, &arguments.live.read}};
    for (const auto& [command, read] : readers) {
        command->Add(kColumnRows, *read);
        command->Add(kReadRows, *read);
    }
    AddSteps(clean, arguments.clean);
    Command print{"print", "Print the manual page, or the completions of a shell", kPrintHelp, {}};
    print.Add(kPrintRows, arguments);
    return {program, info, clean, plot, live, print};
}

}  // namespace app
