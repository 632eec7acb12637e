#include "app/batch/HelpText.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "platform/feeds/FeedAddress.h"
#include "tavin/tavin.h"

namespace app {

const char* const kMainHelp =
    R"(Without a command the files are opened in the workbench, which needs a display.

Examples:
  tavin level.csv
  tavin info level.csv
  tavin plot level.csv -o level.png
  tavin clean level.csv --median 11,0.2 --delete-spikes -o clean.csv
  tavin clean --help

Exit codes: 0 done, 1 the data or the system refused, 2 wrong usage, 3 done, but the result leaves the bounds of an
--alarm, 4 the input holds no data. Of many files the worst counts: 1 before 4 before 3.
Data goes to standard output, messages to standard error; the file name - stands for the standard streams.)";

const char* const kInfoHelp =
    R"(Says what `tavin clean` would read: delimiter, columns and units, times, rows that cannot be read, range, step,
gaps and duplicates of x, and how exactly values survive the conversion to the stored 32-bit integers.

Preambles, logger headers, units lines, comments, times in all usual forms or in several columns, thousands
separators, UTF-8, UTF-16 and western encodings and gzip are recognised; notes say what was taken for what, doubts
what could also be meant, each with the option that decides. Where two readings are as good the file is refused.

Examples:
  tavin info level.csv
  tavin info --json level.csv | jq .x.gaps
  tavin info --time-column DATE+CLOCK --zone Europe/Berlin level.csv.gz
  tavin info *.csv                      a line for each)";

namespace {

constexpr std::size_t kHelpWidth = 116;

// "    form          meaning", the meaning broken into lines below one another.
std::string HelpRow(const std::string& form, std::string_view meaning) {
    constexpr std::size_t kIndent = 24;
    std::string text = "    " + form;
    std::size_t width = text.size();
    const auto breakLine = [&] {
        text += width < kIndent ? std::string(kIndent - width, ' ') : "\n" + std::string(kIndent, ' ');
        width = kIndent;
    };
    breakLine();
    while (!meaning.empty()) {
        const auto word = meaning.substr(0, std::min(meaning.find(' '), meaning.size()));
        if (width > kIndent && width + 1 + word.size() > kHelpWidth) breakLine();
        if (width > kIndent) text += " ";
        text += word;
        width += word.size() + (width > kIndent ? 1 : 0);
        meaning.remove_prefix(std::min(word.size() + 1, meaning.size()));
    }
    return text + "\n";
}

constexpr const char* kBeforeRules =
    R"(Steps are applied in the order given, to each y column by itself. All amounts are in the units of the file.

At the start nothing is selected in particular: edits of values act on all points. After a --select all steps behind
it, marking included, act on the selection only, also when it is empty or used up, until another --select replaces it
or --select all goes back to the start.

  Selections combine with and, or, not and parentheses: --select "not (spike(0.3) or rate(2/h)) and x=2024-03-01:"
)";

constexpr const char* kBehindRules =
    R"help(    Limits belong to the good side, thresholds are strict. Missing, deleted and rejected points take no part in
    range, rate, flat, spike, step, gap and hampel and break no window. These are the definitions of QARTOD's gross
    range, rate of change, flat line, spike and gap tests and of the Hampel filter. Deleted points cannot be edited.
    On a time axis FROM and TO are ISO 8601 times, of --zone where they name none (else UTC), or numbers: seconds
    from the first sample, or epoch numbers where the file has them. reason(CODE) knows what steps before it in the
    same run have rejected (spike) or moved (moved).

  Marking spikes, of the selected points where there is a selection:
    --median LENGTH,DISTANCE    every point farther than DISTANCE from the median of LENGTH samples around it. The
                                median is the first sample of the window with half of the samples at or below it
                                and half at or above it, which need not be the true one: in windows of fewer than
                                7 samples it marks far more points. hampel(K,N) tests against true medians
    --spikes WAVELENGTH,WINDOW  points farther than WINDOW from the smoothed curve; selected points are judged
                                among themselves
  Edits of the marked spikes, in the selection where there is one:
    --delete-spikes, --reject-spikes
  Edits of the selected points; without a selection they do nothing:
    --delete, --reject    set a flag, which uses the selection up; deleted points take no part in later fits
    --interpolate         replace the values by lines between the nearest points not selected
  Edits of the selected points, or of all that are not deleted where there is no selection:
    --fill-gaps LENGTH    give empty cells values on the line between the points on both sides, where these are no
                          farther apart than LENGTH; no row is invented
    --translate DY        add DY
    --level Y             set to Y
    --scale METHOD,FACTOR[,ORIGIN]
                          offset: ORIGIN + (y - ORIGIN) * FACTOR     ramp:   y + FACTOR * t
                          custom: y + (y - ORIGIN) * FACTOR / 100    drift:  y + y * FACTOR / 100 * t
                          where t goes from 0 at the first to 1 at the last of the points
    --smooth WAVELENGTH   a smoothing spline that keeps undulations longer than WAVELENGTH

  Lengths are in x units; on a time axis in seconds, or with a unit: 90s, 15min, 6h, 0.5d.

Output: every row and column as it came, byte for byte but for edited values, and behind it a status column for
each y column (deleted, rejected, spike, moved, smoothed, interpolated, edited, joined by +; or missing, unreadable).
With --flags qartod it is named NAME_qartod and holds 1 pass, 2 not evaluated, 3 suspect (spike), 4 fail (deleted,
rejected), 8 estimated (interpolated, smoothed), 9 missing; a value passes when a marking step or a rule about values
has tested it. Flags that an earlier cleaning left in such columns are taken up and written anew. Rows that cannot be
read pass through unchanged. --drop leaves a row out when all of its y values have one of the flags, --blank empties
single cells. An output whose name ends in .gz is compressed.

Edited values have as many decimals as their column has in the file, or as --decimals asks for. Values are stored in 32
bits: where a column's range leaves no room for its decimals nothing is rounded without a word, but the file is refused,
with the most decimals that fit and the range; --decimals with that number takes it all the same.

Many files: --out-dir cleans each file into a folder under its own name (a.csv.gz stays compressed), several at a time,
on past those that fail, and tells of each in a line, with what it warns of. The folder remembers, in .tavin-clean,
digests of inputs and options: what would come out the same is left out, and an interrupted run goes on where it ended.
--stations TABLE names a CSV table with headings:
    file           a pattern (*, ?) for the files of the station, beside the table
    station        its name
    columns        its y columns, with semicolons between
    steps          its steps as on a command line, done after those of the command line
    limits, zone, out-dir, alarm ...    every other heading is an option; an empty cell leaves it out
  --alarm QUANTITY=MIN:MAX sets bounds: rows=1000: missing=:5% flagged=:0.01 changed=:10% differing=:0.

A file that grows: --update cleans all of it, so that windows and fits see the rows before the new ones, but keeps the rows
that the output holds already, adds the new ones, and lists published rows that would come out differently.

Examples:
  tavin clean level.csv --median 11,0.2 --select spikes --interpolate -o clean.csv
  tavin clean level.csv --select "range(-2,6) or spike(0.3) or flat(3h)" --delete --fill-gaps 1h -o clean.csv
  tavin clean level.csv --spikes 6h,0.15 --delete-spikes --drop deleted -o clean.csv --report report.json
  tavin clean level.csv -y level --select x=2024-03-14T08:00: --translate -0.35 -o clean.csv
  tavin clean --smooth 12h - -o - < level.csv > smooth.csv
  tavin clean level.csv --median 11,0.2 --delete-spikes -o clean.csv --update
  tavin clean data/*.csv --out-dir clean --limits 0:12 --median 11,0.2 --delete-spikes --alarm missing=:5%
  tavin clean --stations stations.csv --out-dir clean --json > summary.jsonl)help";

}  // namespace

const char* CleanHelp() {
    static const std::string text = [] {
        std::string help = kBeforeRules;
        for (const auto& rule : selections::RuleTexts()) help += HelpRow(rule.form, rule.meaning);
        return help + kBehindRules;
    }();
    return text.c_str();
}

const char* const kPlotHelp =
    R"(Draws the columns over x as the workbench shows them, without a display. Each unit has a plot; the
plots share the x axis. Lines break where samples are missing and at empty cells. A status column that a
cleaning left shows: deleted samples are crosses, rejected ones rings, spikes triangles, at the edge of the
plot where they lie outside; the line as it was before they were deleted lies, pale, below the cleaned one.
--from and --to take what the x column holds: ISO 8601 times on a time axis, numbers otherwise.

Examples:
  tavin plot level.csv -o level.png
  tavin plot clean.csv --over level.csv -o clean.pdf --title "Gauge 7, March"
  tavin plot level.csv -o level.png --size 180x120mm --dpi 300
  tavin plot level.csv -o - --format svg | gzip > level.svgz
  tavin plot level.csv -y level -o level.svg --size 1600x600 --from 2024-03-14 --to 2024-03-21T12:00)";

namespace {

constexpr const char* kBehindForms =
    R"(
Where there is a display and none of -o, --for and --stats is given, a window shows what comes, in the workbench. It
follows the newest samples; H holds it, so that it can be zoomed and measured, and lets it catch up again.

Lines are read by the rules for files: delimiter, decimal sign, headings and times are recognised in the first of them
and can be named with the same options. A row without a time gets that of its arrival; a line may hold one number.
Lines that cannot be read are counted, and the last of them is told. A connection that is lost is tried again, with
pauses that grow to 5 s.

The recording holds the lines as they came, with the time of arrival before those that hold none. It is whole up to
half a second before any end of the program, and safe on the disk each second. Ctrl-C and SIGTERM end it in order.

At qos 1 a broker drops messages for a reader that is slow, unless its max_queued_messages is 0.

Exit codes: 0 done, 1 it could not be recorded, 2 wrong usage, 4 nothing came.

Examples:
  tavin live tcp://logger:9000 --window 5min --derive inlet-outlet
  tavin live serial:/dev/ttyUSB0?baud=115200 -o run.csv --for 10min --stats
  tavin live tcp://logger:9000 mqtt://broker/plant/+/level -o plant.csv
  instrument | tavin live - -o - | tavin clean - --median 11,0.2 --delete-spikes -o clean.csv)";

}  // namespace

const char* LiveHelp() {
    static const std::string text = "Sources:\n" + std::string(FeedAddressForms()) + "\n" + kBehindForms;
    return text.c_str();
}

const char* const kPrintHelp =
    R"(An installation has these texts in their places. Without one, for the shell that is open:

  source <(tavin print bash)
  tavin print fish | source
  tavin print manual > tavin.1 && man ./tavin.1)";

}  // namespace app
