// Reads the rows of a table whose layout is known.
#pragma once

#include "app/table/Advance.h"
#include "app/table/ColumnChoice.h"
#include "app/table/Table.h"

namespace app {

// Reads x and y of every row. A row that is short is read as long as its chosen columns are there; a row
// without readable x, with more fields than columns, or that is no proper record, is skipped. Fails when no
// row can be read, and when it is stopped.
Result<Table> ReadTable(Bytes bytes, const std::string& name, const Layout& layout, const Choice& choice,
                        const ReadOptions& options, const Advance& advance = {});

}  // namespace app
