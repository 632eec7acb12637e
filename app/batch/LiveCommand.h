// Receives what comes from outside: in a window, or recording it without one.
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
    double seconds = 0;                     // 0: until it is stopped
    double window = 60;                     // of a live window, in units of x
    std::vector<std::string> derived = {};  // its channels made of two others
    bool stats = false;                     // a line each second
};

// Where there is a display and nothing is asked for that needs none, a window. Else until all sources have
// ended, the time is over or the process is asked to end; kEmpty when nothing came.
Result<int> LiveCommand(const LiveOptions& options, int argc, char** argv);

}  // namespace app
