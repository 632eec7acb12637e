// Which columns of a table are x and y.
#pragma once

#include <vector>

#include "app/table/Layout.h"
#include "app/table/Result.h"

namespace app {

struct Choice {
    Column x;
    std::vector<Column> columns;
};

// Which columns are x and y. Without a name for x the first column of times, else the first of numbers;
// without names for y every other column of numbers. A column of text and the x column among the y are usage
// errors.
Result<Choice> ChooseColumns(const Layout& layout, const ReadOptions& options);

}  // namespace app
