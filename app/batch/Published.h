// Adding to an output that others already use: a file that grows is cleaned as a whole, so that windows and
// fits see the rows before the new ones, but what has been published stays as it is until somebody says
// otherwise.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/table/Result.h"
#include "app/table/Table.h"

namespace app {

// A published row that comes out differently now.
struct Difference {
    std::int64_t line;  // in the published file
    std::string published;
    std::string fresh;
};

struct Update {
    bool isDone = false;      // there was something published
    std::int64_t kept = 0;    // published rows that stay, those that come out the same among them
    std::int64_t absent = 0;  // of these, rows that the input does not hold any more
    std::int64_t added = 0;
    std::vector<Difference> differences;
};

// The text that comes of `published` and `fresh`, two outputs of which the second is that of `table`. Rows
// are the same when their x cells are, the second of equal ones in one file being that in the other. New rows
// stand where they stand in `fresh`. With `revise` rows that differ are taken from `fresh`. Fails when the
// lines above the rows differ.
Result<std::string> MergePublished(std::string_view published, std::string_view fresh, const Table& table,
                                   bool revise, Update& update);

}  // namespace app
