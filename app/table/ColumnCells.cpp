#include "app/table/ColumnCells.h"

#include <algorithm>
#include <cmath>

namespace app {

std::vector<std::string> CellsOf(const Trial& trial, int field) {
    std::vector<std::string> cells;
    for (std::size_t r = trial.data; r < trial.sample.size(); ++r)
        if (const auto cell = trial.Cell(r, static_cast<std::size_t>(field)); !cell.empty())
            cells.emplace_back(cell);
    return cells;
}

Extent ExtentOf(const std::vector<std::string>& cells, char decimalSign) {
    Extent extent;
    for (const auto& cell : cells) {
        double value = 0;
        if (!ReadNumber(cell, decimalSign, value)) {
            extent.allNumbers = false;
            continue;
        }
        extent.least = std::min(extent.least, value);
        extent.most = std::max(extent.most, value);
        extent.whole &= value == std::floor(value);
    }
    return extent;
}

std::int64_t IrregularSteps(const std::vector<Microseconds>& times) {
    std::vector<Microseconds> steps;
    for (std::size_t i = 1; i < times.size(); ++i) steps.push_back(times[i] - times[i - 1]);
    if (steps.empty()) return 0;
    const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
    std::nth_element(steps.begin(), middle, steps.end());
    const Microseconds usual = *middle;
    return std::count_if(steps.begin(), steps.end(), [&](Microseconds step) { return step != usual; });
}

}  // namespace app
