// `tavin clean`: reads a table, carries out the steps on each of its y columns, writes the table back.
#pragma once

#include <string>
#include <vector>

#include "app/batch/Step.h"
#include "app/table/ReadOptions.h"
#include "app/table/Result.h"

namespace app {

struct CleanOptions {
    ReadOptions read;
    std::string output;
    std::string report;  // empty: none; "-": standard output
    std::vector<Step> steps;
    int decimals = -1;
    unsigned short drop = 0;  // flags of points whose rows are left out
    bool force = false;
    bool quiet = false;
};

// Returns kDone, or the failure; messages about the run go to standard error.
Result<int> Clean(const CleanOptions& options);

}  // namespace app
