// A sample of a text as one choice of delimiter and decimal sign reads it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/table/CellNumber.h"
#include "app/table/ReadOptions.h"
#include "app/table/Records.h"
#include "app/table/TimeText.h"

namespace app {

struct SampleRecord {
    Record record;
    std::vector<std::string> cells;  // of a row
};
using Sample = std::vector<SampleRecord>;

enum class CellKind {
    Empty,
    Number,
    Grouped,
    Time,
    Clock,
    Text
};  // Grouped: a number with its thousands apart
constexpr bool IsValue(CellKind kind) { return kind != CellKind::Empty && kind != CellKind::Text; }

// What the cells of one column are.
struct Tally {
    int numbers = 0;  // the grouped ones too
    int grouped = 0;
    int times = 0;
    int clocks = 0;
    int texts = 0;
    int digits = 0;  // texts that have digits: times in a form of their own, perhaps
    char grouping = 0;
    std::string groupedCell;  // the first one
    void Add(CellKind kind);
    int Values() const { return numbers + times + clocks; }
    bool HasValues() const { return Values() > 0 && Values() >= texts; }
};

struct Trial {
    char delimiter = ',';
    char decimalSign = '.';
    Sample sample;
    std::size_t fields = 0;      // of the rows of data
    std::size_t data = 0;        // the index of their first in the sample
    std::vector<Tally> tallies;  // of the rows of data
    double score = 0;            // how much of them is a regular table of values; 0: no table

    // The cell of column `field` in record `index`; empty where it has none.
    std::string_view Cell(std::size_t index, std::size_t field) const;
};

// Where in a text the search for a table begins.
struct Start {
    std::size_t begin = 0;
    std::int64_t line = 1;
};

// The first records of a text, cut at the delimiter.
Sample TakeSample(std::string_view text, Start start, char delimiter, std::size_t records);

// The best reading, with a large sample. Where another decimal sign reads as much, `rival` is that reading.
Trial BestTrial(std::string_view text, Start start, const ReadOptions& options, Trial& rival);

}  // namespace app
