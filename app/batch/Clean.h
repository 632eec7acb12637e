// `tavin clean`: reads a table, carries out the steps on each of its y columns, writes the table back.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/batch/Alarm.h"
#include "app/batch/Step.h"
#include "app/table/ReadOptions.h"
#include "app/table/Result.h"
#include "app/table/TableWriter.h"

namespace app {

struct CleanOptions {
    ReadOptions read;
    std::string output;
    std::string report;  // empty: none; "-": standard output
    std::vector<Step> steps;
    int decimals = -1;
    WriteWishes write;
    bool failIfEmpty = false;  // a step that selects nothing in any column is a failure
    std::vector<Step> limits;  // done before the steps
    std::vector<Alarm> alarms;
    bool update = false;  // keep the rows that the output holds, and add to them
    bool revise = false;  // update those rows too
    bool dryRun = false;  // do everything but write
    bool force = false;
    bool quiet = false;
};

// Cleans one file and returns what came of it: its counts of rows, its columns with their counts of points,
// the alarms. Messages about the run go to standard error.
Result<nlohmann::ordered_json> CleanFile(const CleanOptions& options);

// The same; kDone, or kAlarm where the result leaves the bounds that were set.
Result<int> Clean(const CleanOptions& options);

}  // namespace app
