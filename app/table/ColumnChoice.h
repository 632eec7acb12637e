// Which columns of a table are x and y.
#pragma once

#include <vector>

#include "app/table/Layout.h"
#include "app/table/Result.h"

namespace app {

struct Choice {
    Column x;  // of field -1 where the rows hold none
    std::vector<Column> columns;
};

// Whether the column is x or one of those that compose it.
bool IsPartOf(const Column& column, const Column& x);

// Which columns are x and y. Without a name for x the first time, composed of several columns or not; else
// the first numbers, unless a column before them looks like times in a form that is not known; without names
// for y every other column of numbers. A column of text and the x column among the y are usage errors.
Result<Choice> ChooseColumns(const Layout& layout, const ReadOptions& options);

}  // namespace app
