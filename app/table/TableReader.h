// Reads the rows of a table whose layout is known.
#pragma once

#include <vector>

#include "app/table/Advance.h"
#include "app/table/Table.h"

namespace app {

struct Choice {
    Column x;
    std::vector<Column> columns;
};

// Which columns are x and y. Without a name for x the first column of times, else the first of numbers;
// without names for y every other column of numbers. A column of text and the x column among the y are usage
// errors.
Result<Choice> ChooseColumns(const Layout& layout, const ReadOptions& options);

// Reads x and y of every row. A row that is short is read as long as its chosen columns are there; a row
// without readable x, with more fields than columns, or that is no proper record, is skipped. Fails when no
// row can be read, and when it is stopped.
Result<Table> ReadTable(std::string bytes, const std::string& name, const Layout& layout,
                        const Choice& choice, const ReadOptions& options, const Advance& advance = {});

}  // namespace app
