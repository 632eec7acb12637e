// The cells of one column of a sample, as guesses about times look at them.
#pragma once

#include <string>
#include <vector>

#include "app/table/LayoutTrial.h"

namespace app {

// Years that a file may be of.
constexpr double kFirstYear = 1700;
constexpr double kLastYear = 2200;

// The filled cells of a column in the rows of data.
std::vector<std::string> CellsOf(const Trial& trial, int field);

struct Extent {
    double least = 1e300;
    double most = -1e300;
    bool whole = true;
    bool allNumbers = true;
    bool Within(double from, double to) const { return least <= most && least >= from && most <= to; }
};
// Of the cells that are numbers.
Extent ExtentOf(const std::vector<std::string>& cells, char decimalSign);

// The steps that are not the usual one.
std::int64_t IrregularSteps(const std::vector<Microseconds>& times);

}  // namespace app
