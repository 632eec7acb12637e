// Writes a table with its edits: every record in its order and byte for byte, save the values that were
// edited or are blanked, and behind each row one status cell per series, or in the status column that an
// earlier cleaning left.
#pragma once

#include <string>
#include <vector>

#include "app/table/OutputFile.h"
#include "app/table/Series.h"
#include "app/table/StatusText.h"
#include "app/table/Table.h"
#include "app/table/TableReader.h"

namespace app {

// What the status cells hold: the names of flags, or the numbers of QARTOD's scheme (app/table/QartodFlag.h),
// in a column of their own.
enum class StatusScheme { Names, Qartod };

struct WriteWishes {
    unsigned short drop = 0;   // rows whose every value has one of these flags are left out
    unsigned short blank = 0;  // cells of values with one of these flags are written as `missing`
    std::string missing = {};
    StatusScheme scheme = StatusScheme::Names;
};

struct WriteCounts {
    std::int64_t rows = 0;     // data rows written
    std::int64_t dropped = 0;  // and left out
    std::int64_t kept = 0;     // rows with a flag to drop and with a value that has none
    std::int64_t edited = 0;   // values written anew
    std::int64_t blanked = 0;
};

// `series` are those of the table's value columns, in their order. Rows that could not be read are written as
// they are, without status cells. False: output.Error() says why, or `advance` said stop.
bool WriteTable(OutputFile& output, const Table& table, const std::vector<Series>& series,
                const WriteWishes& wishes, WriteCounts& counts, const Advance& advance = {});

}  // namespace app
