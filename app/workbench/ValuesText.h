// The values of series as a table that a spreadsheet takes: a heading, then a row for each x, columns parted
// by tabs. x as ISO 8601 time or number, an empty cell where a series has no point or a deleted one.
#pragma once

#include <string>
#include <vector>

#include "app/workbench/SeriesFile.h"

namespace app {

struct ValuesRange {
    double from;  // user units of x
    double to;
};

struct ValuesTable {
    std::string text;
    std::size_t rows = 0;  // without the heading
};

// Of the series with these indices, in their order.
ValuesTable ValuesText(const SeriesFile& file, const std::vector<std::size_t>& series,
                       const ValuesRange& range);

}  // namespace app
