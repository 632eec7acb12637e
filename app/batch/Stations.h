// A table of stations: one row per station, with the files that it delivers and what is special to it.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "app/table/Result.h"

namespace app {

struct Station {
    std::string name;  // the cell "station", else the pattern
    std::int64_t line = 0;
    std::vector<std::string> files;  // that match its pattern, in the order of their names
    std::string pattern;
    std::vector<std::string> words;  // of a command line: its other cells as options, then its steps
};

// Reads a CSV table with headings. `file` is a pattern (*, ?, [...]) beside the table; `station` a name;
// `steps` steps as on a command line; `columns` the y columns with semicolons between. Every other heading is
// an option without its dashes, and an empty cell leaves it out; of the cells of `repeatable` options
// semicolons make several values.
Result<std::vector<Station>> ReadStations(const std::string& path,
                                          const std::vector<std::string>& repeatable);

// The words of a line as a shell splits it: blanks between, quotes of either kind around what holds some.
Result<std::vector<std::string>> SplitWords(const std::string& line);

}  // namespace app
