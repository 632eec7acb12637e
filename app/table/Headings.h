// Which of the lines above the data name the columns and their units.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/table/LayoutTrial.h"

namespace app {

struct Headings {
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::size_t names = kNone;  // indices of records of the sample
    std::size_t units = kNone;
    std::size_t last = kNone;  // the last line of the block of headings
    std::vector<std::string> nameCells;
    std::vector<std::string> unitCells;
};

// Whether the cells are units; a format (10s) or what was measured (Smp, Avg).
bool LooksLikeUnits(const std::vector<std::string>& cells);
bool LooksLikeDescription(const std::vector<std::string>& cells);

// The names stand in the last line above the data that has its width, a comment line too where no other has
// it; a line of units, of what was measured (Smp, Avg) or of a format (10s) may follow. With a line asked
// for, the names stand there.
Headings FindHeadings(std::string_view text, const Trial& trial, const ReadOptions& options);

}  // namespace app
