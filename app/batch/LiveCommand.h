// Receives and records what comes from outside, without a window.
#pragma once

#include <string>
#include <vector>

#include "app/table/ReadOptions.h"
#include "app/table/Result.h"

namespace app {

struct LiveOptions {
    ReadOptions read;
    std::vector<std::string> sources;
    std::string output;  // the recording; of several sources each has its own, OUT-1.csv, OUT-2.csv ...
    bool append = false;
    bool force = false;
    double seconds = 0;  // 0: until it is stopped
    bool stats = false;  // a line each second
};

// Until all sources have ended, the time is over or the process is asked to end. kEmpty when nothing came.
Result<int> LiveCommand(const LiveOptions& options);

}  // namespace app
