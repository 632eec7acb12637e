// `tavin clean` over many files: one after the other or several at a time, on past those that fail, with one
// line about each. What an earlier run made of the same input with the same options is left as it is.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/batch/Clean.h"

namespace app {

struct FleetOptions {
    std::vector<std::string> files;
    std::string stations;  // a table of them, in the place of files
    std::string folder;    // where the outputs go, each under the name of its input
    int jobs = 0;          // 0: as many as there are cores
    bool json = false;
    bool again = false;  // also what is unchanged
    bool quiet = false;  // lines only about what needs a look
};

// One file to be cleaned.
struct CleanTask {
    CleanOptions options;
    std::string folder;   // of the output
    std::string station;  // empty without stations
    std::string given;    // the options as they were written, but for those that do not shape the result
    std::string fault;    // why it cannot be begun; empty
};

// Two outputs of the same name, and an output that is an input, are refused before anything starts. Returns
// the code of the worst that came of a file: kRefused, kEmpty, kAlarm or kDone.
Result<int> CleanFleet(std::vector<CleanTask> tasks, const FleetOptions& options);

}  // namespace app
