// Writes a table with its edits: every record in its order and byte for byte, save the values that were
// edited, and behind each row one status cell per series, or in the status column that an earlier cleaning
// left.
#pragma once

#include <vector>

#include "app/table/OutputFile.h"
#include "app/table/Series.h"
#include "app/table/StatusText.h"
#include "app/table/Table.h"
#include "app/table/TableReader.h"

namespace app {

struct WriteCounts {
    std::int64_t rows = 0;     // data rows written
    std::int64_t dropped = 0;  // and left out
    std::int64_t edited = 0;   // values written anew
};

// `series` are those of the table's value columns, in their order. A row is left out when each of its values
// carries one of the flags `drop` and there is at least one. Rows that could not be read are written as they
// are, without status cells. False: output.Error() says why, or `advance` said stop.
bool WriteTable(OutputFile& output, const Table& table, const std::vector<Series>& series,
                unsigned short drop, WriteCounts& counts, const Advance& advance = {});

}  // namespace app
