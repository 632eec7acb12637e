#include "app/batch/CommandLine.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <filesystem>
#include <map>
#include <new>

#include "app/batch/Clean.h"
#include "app/batch/HelpText.h"
#include "app/batch/Info.h"
#include "app/table/OpenTable.h"
#include "app/table/OutputFile.h"
#include "app/table/Progress.h"
#include "app/workbench/Plot.h"
#include "app/workbench/Workbench.h"

namespace app {

namespace {

struct InfoOptions {
    ReadOptions read;
    bool json = false;
};

int Report(const Failure& failure) {
    std::fprintf(stderr, "tavin: %s\n", failure.Text().c_str());
    return failure.exitCode;
}

Result<int> Info(const InfoOptions& options) {
    Progress progress(true);
    const auto table = OpenTable(options.read, progress.Shower("reading"));
    if (!table) return table.Error();
    const XAxis axis = MakeXAxis(*table);
    progress.Clear();
    OutputFile output;
    const bool written = output.Open("-") && output.Write(options.json ? JsonText(InfoJson(*table, axis))
                                                                       : InfoText(*table, axis));
    if (!written || !output.Commit()) return output.Error();
    return kDone;
}

// The options that say how the file is to be read, as texts to be checked.
struct LayoutTexts {
    std::string delimiter;
    std::string decimal;

    void AddTo(CLI::App& command, ReadOptions& layout) {
        command
            .add_option("--delimiter", delimiter, "comma, semicolon, tab, blanks or bar; guessed otherwise")
            ->check(CLI::IsMember({"comma", "semicolon", "tab", "blanks", "bar"}));
        command.add_option("--decimal", decimal, "the decimal sign, point or comma; guessed otherwise")
            ->check(CLI::IsMember({"point", "comma"}));
        command.add_option(
            "--time-format", layout.timeFormat,
            "form of the times in x: iso, epoch, epoch-ms, number, or fields as in \"%d.%m.%Y %H:%M\"");
        command
            .add_option("--missing", layout.missing,
                        "what stands for no value besides NaN, NA, null and -; repeatable")
            ->allow_extra_args(false);
    }

    void Finish(ReadOptions& layout) const {
        static const std::map<std::string, char> kDelimiters = {
            {"comma", ','}, {"semicolon", ';'}, {"tab", '\t'}, {"blanks", ' '}, {"bar", '|'}};
        if (!delimiter.empty()) layout.delimiter = kDelimiters.at(delimiter);
        if (!decimal.empty()) layout.decimalSign = decimal == "comma" ? ',' : '.';
    }
};

std::optional<Failure> CheckTimeFormat(const std::string& format) {
    if (format.empty() || FindTimeForm(format)) return std::nullopt;
    if (format.find('%') != std::string::npos) {
        const auto pattern = TimePattern::Compile(format);
        if (pattern) return std::nullopt;
        return pattern.Error().About("--time-format");
    }
    std::string names;
    for (const auto& form : kTimeFormNames) names += std::string(form.name) + ", ";
    return UsageError("--time-format " + format + ": expected " + names + "or a form with % fields");
}

// Options that may be repeated take one value each time: no dots behind them.
class Formatter : public CLI::Formatter {
  public:
    std::string make_option_opts(const CLI::Option* option) const override {
        std::string text = CLI::Formatter::make_option_opts(option);
        const auto dots = text.find(" ...");
        return dots == std::string::npos ? text : text.erase(dots, 4);
    }
};

// The step options of the command in the order in which they were written.
class StepOptions {
  public:
    explicit StepOptions(CLI::App& command) : command_(command) {
        Add(StepKind::Select, "SELECTION", "select points: all, none, invert, spikes, x=FROM:TO, y=MIN:MAX");
        Add(StepKind::Median, "LENGTH,DISTANCE", "mark spikes by a median filter");
        Add(StepKind::Spikes, "WAVELENGTH,WINDOW", "mark spikes by their distance from a smooth curve");
        Add(StepKind::Delete, "", "delete the selected points");
        Add(StepKind::Reject, "", "reject the selected points");
        Add(StepKind::DeleteSpikes, "", "delete the marked spikes");
        Add(StepKind::RejectSpikes, "", "reject the marked spikes");
        Add(StepKind::Interpolate, "", "interpolate the selected points");
        Add(StepKind::Translate, "DY", "add DY to the values");
        Add(StepKind::Level, "Y", "set the values to Y");
        Add(StepKind::Scale, "METHOD,FACTOR[,ORIGIN]", "scale: offset, ramp, drift or custom");
        Add(StepKind::Smooth, "WAVELENGTH", "smooth the values");
    }

    Result<std::vector<Step>> Read() const {
        std::vector<Step> steps;
        std::map<const CLI::Option*, std::size_t> used;
        for (const CLI::Option* option : command_.parse_order()) {
            const auto kind = kinds_.find(option);
            if (kind == kinds_.end()) continue;
            const bool takesValue = TakesValue(kind->second);
            const auto step = ReadStep(kind->second, takesValue ? option->results()[used[option]++] : "");
            if (!step) return step.Error();
            steps.push_back(*step);
        }
        return steps;
    }

  private:
    void Add(StepKind kind, const char* form, const char* text) {
        const std::string name = "--" + std::string(StepName(kind));
        CLI::Option* option = nullptr;
        if (TakesValue(kind))
            option = command_.add_option(name, values_, text)->allow_extra_args(false)->type_name(form);
        else
            option = command_.add_flag(name)->description(text);
        option->group("Steps, applied in the order given");
        kinds_[option] = kind;
    }

    CLI::App& command_;
    std::map<const CLI::Option*, StepKind> kinds_;
    std::vector<std::string> values_;  // CLI11 wants a place; the options' own results are used
};

Result<unsigned short> DropFlags(const std::string& text) {
    static const std::map<std::string, unsigned short> kFlags = {
        {"deleted", PS_DELETED}, {"rejected", PS_REJECTED}, {"spike", PS_SPIKE}};
    unsigned short flags = 0;
    for (const auto& name : CLI::detail::split(text, ',')) {
        const auto flag = kFlags.find(name);
        if (flag == kFlags.end())
            return UsageError("--drop " + text +
                              ": expected deleted, rejected or spike, with commas between");
        flags |= flag->second;
    }
    return flags;
}

class CommandLine {
  public:
    CommandLine()
        : program_("Shows and cleans series of measurements.", "tavin"),
          infoCommand_(*program_.add_subcommand("info", "Say what a file holds and how it would be read")),
          cleanCommand_(*program_.add_subcommand("clean", "Clean the values of a file in steps")),
          plotCommand_(*program_.add_subcommand("plot", "Draw a file as a picture")),
          steps_(cleanCommand_) {
        program_.set_version_flag("--version", "tavin " TAVIN_VERSION, "Print the version and exit");
        program_.require_subcommand(0, 1);
        program_.add_option("FILE", files_, "tables to open in the workbench")->type_name("");
        program_.footer(kMainHelp);
        for (CLI::App* app : {&program_, &infoCommand_, &cleanCommand_, &plotCommand_})
            app->formatter(std::make_shared<Formatter>());
        AddInfo();
        AddClean();
        AddPlot();
    }

    int Run(int argc, char** argv) {
        try {
            program_.parse(argc, argv);
        } catch (const CLI::ParseError& error) {
            return AnswerParseError(error);
        }
        const auto result = infoCommand_.parsed()    ? RunInfo()
                            : cleanCommand_.parsed() ? RunClean()
                            : plotCommand_.parsed()  ? RunPlot()
                                                     : OpenWorkbench(argc, argv);
        return result ? *result : Report(result.Error());
    }

  private:
    void AddInfo() {
        infoCommand_.footer(kInfoHelp);
        infoCommand_.add_option("FILE", info_.read.path, "the table; - is standard input")->required();
        infoCommand_.add_option("-x", info_.read.x, "the x column, by name or number from 1")
            ->type_name("COLUMN");
        infoCommand_.add_flag("--json", info_.json, "write JSON");
        infoTexts_.AddTo(infoCommand_, info_.read);
    }

    void AddClean() {
        cleanCommand_.footer(kCleanHelp);
        auto& command = cleanCommand_;
        command.add_option("FILE", clean_.read.path, "the table; - is standard input")->required();
        command.add_option("-o,--output", clean_.output, "where the result goes; - is standard output")
            ->required()
            ->type_name("OUT");
        command
            .add_option("-x", clean_.read.x,
                        "the x column, by name or number from 1; else the first of times or numbers")
            ->type_name("COLUMN");
        command.add_option("-y", clean_.read.y, "a column to clean, by name or number; repeatable")
            ->allow_extra_args(false)
            ->type_name("COLUMN");
        command
            .add_option("--drop", drop_,
                        "leave out rows whose points are deleted, rejected or spike, with commas between")
            ->type_name("FLAGS");
        command
            .add_option("--decimals", clean_.decimals,
                        "store and write edited values with at least so many decimals")
            ->check(CLI::Range(0, 9))
            ->type_name("N");
        command.add_option("--report", clean_.report, "write a report in JSON; - is standard output")
            ->type_name("FILE");
        command.add_flag("--force", clean_.force, "allow the output to replace the input");
        command.add_flag("-q,--quiet", clean_.quiet, "no report and no progress on standard error");
        cleanTexts_.AddTo(command, clean_.read);
    }

    void AddPlot() {
        plotCommand_.footer(kPlotHelp);
        auto& command = plotCommand_;
        command.add_option("FILE", plot_.read.path, "the table; - is standard input")->required();
        command
            .add_option("-o,--output", plot_.output, "the picture: a name that ends in .png, .svg or .pdf")
            ->required()
            ->type_name("OUT");
        command
            .add_option("-x", plot_.read.x,
                        "the x column, by name or number from 1; else the first of times or numbers")
            ->type_name("COLUMN");
        command.add_option("-y", plot_.read.y, "a column to draw, by name or number; repeatable; else all")
            ->allow_extra_args(false)
            ->type_name("COLUMN");
        command.add_option("--size", plot_.size, "width and height in pixels; else 1200x800")
            ->type_name("WxH");
        command.add_option("--from", plot_.from, "draw from this x on: a time in ISO 8601, or a number")
            ->type_name("X");
        command.add_option("--to", plot_.to, "draw up to this x")->type_name("X");
        plotTexts_.AddTo(command, plot_.read);
    }

    Result<int> RunInfo() {
        infoTexts_.Finish(info_.read);
        if (const auto failure = CheckTimeFormat(info_.read.timeFormat)) return *failure;
        return Info(info_);
    }

    Result<int> RunClean() {
        cleanTexts_.Finish(clean_.read);
        if (const auto failure = CheckTimeFormat(clean_.read.timeFormat)) return *failure;
        const auto steps = steps_.Read();
        if (!steps) return steps.Error();
        clean_.steps = *steps;
        if (clean_.steps.empty()) return UsageError("no step to apply; see tavin clean --help");
        if (!drop_.empty()) {
            const auto flags = DropFlags(drop_);
            if (!flags) return flags.Error();
            clean_.drop = *flags;
        }
        return Clean(clean_);
    }

    Result<int> RunPlot() {
        plotTexts_.Finish(plot_.read);
        if (const auto failure = CheckTimeFormat(plot_.read.timeFormat)) return *failure;
        return Plot(plot_);
    }

    Result<int> OpenWorkbench(int argc, char** argv) {
        // A single word that is no file was meant as a command.
        for (const auto& file : files_)
            if (file.find_first_of("./") == std::string::npos && !std::filesystem::exists(file))
                return UsageError("there is no command or file \"" + file +
                                  "\"; the commands are info, clean and plot (see tavin --help)");
        return RunWorkbench(argc, argv, files_);
    }

    // --help and --version end here as well: what they print has to arrive.
    int AnswerParseError(const CLI::ParseError& error) {
        if (error.get_exit_code() != 0) {
            const char* command = cleanCommand_.parsed()  ? " clean"
                                  : infoCommand_.parsed() ? " info"
                                  : plotCommand_.parsed() ? " plot"
                                                          : "";
            std::fprintf(stderr, "tavin: %s\nTry tavin%s --help.\n", SafeText(error.what()).c_str(), command);
            return kWrongUsage;
        }
        program_.exit(error, std::cout, std::cerr);
        std::cout.flush();
        return std::cout ? kDone : Report(Refusal("cannot write standard output"));
    }

    CLI::App program_;
    CLI::App& infoCommand_;
    CLI::App& cleanCommand_;
    CLI::App& plotCommand_;
    StepOptions steps_;
    InfoOptions info_;
    LayoutTexts infoTexts_;
    CleanOptions clean_;
    LayoutTexts cleanTexts_;
    std::string drop_;
    PlotOptions plot_;
    LayoutTexts plotTexts_;
    std::vector<std::string> files_;
};

}  // namespace

int Main(int argc, char** argv) {
    RemoveUnfinishedFilesOnSignals();
    try {
        return CommandLine().Run(argc, argv);
    } catch (const std::bad_alloc&) {
        return Report(Refusal("not enough memory for this file"));
    } catch (const std::length_error&) {
        return Report(Refusal("not enough memory for this file"));
    }
}

}  // namespace app
