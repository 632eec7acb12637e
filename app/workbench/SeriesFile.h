// A file of measurements as the workbench and plots show it: every value column is a series. All series of a
// file share the x axis.
#pragma once

#include <string>
#include <vector>

#include "app/table/ReadOptions.h"
#include "app/table/Series.h"
#include "app/table/TableReader.h"

namespace app {

// From the user units of a series to the values in the file and back: real = user / unitsPerReal + shift.
struct AxisReading {
    double unitsPerReal = 1;
    double shift = 0;
    double Real(double user) const { return user / unitsPerReal + shift; }
    double User(double real) const { return (real - shift) * unitsPerReal; }
};

struct XReading : AxisReading {
    bool isTime = false;
    bool zoned = false;
    Microseconds origin = 0;  // of times, whose real values are seconds from here
    std::string name;
    std::string unit;  // empty for times

    Microseconds Time(double user) const;
    double UserOf(Microseconds time) const;
};

struct FileSeries {
    std::unique_ptr<IPointSource> source;
    AxisReading y;
    int decimals = 0;                   // that the file writes its values with
    std::vector<int> emptyBefore = {};  // the samples before which rows have no value, ascending
    int original = -1;                  // the series of SeriesFile::original that this one was; -1: none
    // Of a live series emptyBefore as numbers of samples, counted as COnlineSource::GetAppended() does.
    std::vector<std::uint64_t> gapNumbers = {};
};

enum class PointOrder { OfX, OfFile };

struct SeriesFile {
    ReadOptions options;  // that it was read by
    std::string title;    // the path's last part
    XReading x;
    std::vector<FileSeries> series;
    bool xRises = true;  // x never falls from one row to the next
    PointOrder order = PointOrder::OfX;
    std::string summary;  // one line: rows, columns, what was skipped
    std::vector<ReadNote> notes;
    // The file that this one was cleaned from, where it is known; its x counts from this one's origin.
    std::unique_ptr<SeriesFile> original;
};

// Fails with one message for the user when the file cannot be read or holds no series.
Result<SeriesFile> ReadSeriesFile(const ReadOptions& options, const Advance& advance = {},
                                  PointOrder order = PointOrder::OfX);

// Makes `original` what the file was cleaned from. Series belong together that have one name, or that are the
// only ones; fails when none do.
std::optional<Failure> AddOriginal(SeriesFile& file, SeriesFile original);

// A colour of its own for the i-th series of a file, 0x00BBGGRR.
unsigned long SeriesColor(std::size_t i);

}  // namespace app
