// Reads the rows of a table whose layout is known.
#pragma once

#include <functional>
#include <vector>

#include "app/table/Table.h"

namespace app {

// Called now and then with the part that is done, 0 to 1.
using Advance = std::function<void(double)>;

struct Choice {
    Column x;
    std::vector<Column> columns;
};

// Which columns are x and y. Without `x` the first column of times, else the first of numbers; without `y`
// every other column of numbers. A column of text and the x column among the y are usage errors.
Result<Choice> ChooseColumns(const Layout& layout, const std::string& x, const std::vector<std::string>& y,
                             const std::string& timeFormat);

// Reads x and y of every row. A row that is short is read as long as its chosen columns are there; a row
// without readable x, with more fields than columns, or that is no proper record, is skipped. Fails when no
// row can be read.
Result<Table> ReadTable(std::string bytes, const std::string& name, const Layout& layout,
                        const Choice& choice, const LayoutOptions& options, const Advance& advance = {});

}  // namespace app
