#include "app/batch/HelpText.h"

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

Examples:
  tavin info level.csv
  tavin info --json level.csv | jq .x.gaps
  zcat level.csv.gz | tavin info -
  tavin info *.csv                      a line for each)";

const char* const kCleanHelp =
    R"(Steps are applied in the order given, to each y column by itself. All amounts are in the units of the file.

  Selecting (each --select replaces the selection; deleted points cannot be selected):
    all, none, invert     every point, no point, the points not selected so far
    x=FROM:TO             both ends included, either may be left out. On a time axis ISO 8601 times, or
                          numbers: seconds from the first sample, or epoch numbers where the file has them
    y=MIN:MAX             by value
    spikes                the points that the last --median or --spikes marked
  Marking spikes:
    --median LENGTH,DISTANCE    every point farther than DISTANCE from the median of LENGTH samples
    --spikes WAVELENGTH,WINDOW  points farther than WINDOW from the smoothed curve: the selected points, judged
                                among themselves, or all points where none is selected
  Edits of the selected points; with nothing selected they do nothing:
    --delete, --reject    set a flag and empty the selection; deleted points take no part in later fits
    --interpolate         replace the values by lines between the nearest points not selected
  Edits of the marked spikes, whatever is selected:
    --delete-spikes, --reject-spikes
  Edits of the selected points, or of all that are not deleted where none is selected:
    --translate DY        add DY
    --level Y             set to Y
    --scale METHOD,FACTOR[,ORIGIN]
                          offset: ORIGIN + (y - ORIGIN) * FACTOR     ramp:   y + FACTOR * t
                          custom: y + (y - ORIGIN) * FACTOR / 100    drift:  y + y * FACTOR / 100 * t
                          where t goes from 0 at the first to 1 at the last of the points
    --smooth WAVELENGTH   a smoothing spline that keeps undulations longer than WAVELENGTH

  Wave lengths are in x units; on a time axis in seconds, or with a unit: 90s, 15min, 6h, 0.5d.

Output: every row and column as it came, byte for byte but for edited values, and behind it a status column for
each y column (deleted, rejected, spike, moved, smoothed, interpolated, edited, joined by +; or missing, unreadable).
Edited values have as many decimals as the column. Rows that cannot be read pass through unchanged.

Many files: --out-dir cleans each file into a folder, several at a time, on past those that fail, and tells of each in a
line. The folder remembers, in .tavin-clean, digests of inputs and options: what would come out the same is left out, and
an interrupted run goes on where it ended. --stations TABLE names a CSV table with headings:
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
  tavin clean level.csv --spikes 6h,0.15 --delete-spikes --drop deleted -o clean.csv --report report.json
  tavin clean level.csv -y level --select x=2024-03-14T08:00: --translate -0.35 -o clean.csv
  tavin clean --smooth 12h - -o - < level.csv > smooth.csv
  tavin clean level.csv --median 11,0.2 --delete-spikes -o clean.csv --update
  tavin clean data/*.csv --out-dir clean --limits 0:12 --median 11,0.2 --delete-spikes --alarm missing=:5%
  tavin clean --stations stations.csv --out-dir clean --json > summary.jsonl)";

const char* const kPlotHelp =
    R"(Draws the columns over x as the workbench shows them, without a display. All columns share one plot.
--from and --to take what the x column holds: ISO 8601 times on a time axis, numbers otherwise.

Examples:
  tavin plot level.csv -o level.png
  tavin plot level.csv -o - --format svg | gzip > level.svgz
  tavin plot level.csv -y level -o level.svg --size 1600x600 --from 2024-03-14 --to 2024-03-21T12:00)";

const char* const kPrintHelp =
    R"(An installation has these texts in their places. Without one, for the shell that is open:

  source <(tavin print bash)
  tavin print fish | source
  tavin print manual > tavin.1 && man ./tavin.1)";

}  // namespace app
