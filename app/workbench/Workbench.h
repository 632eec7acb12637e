// Starts the workbench.
#pragma once

#include <string>
#include <vector>

namespace app {

// Opens the files, one window each, and returns when the user leaves the program: its exit code. The
// toolkit's own options are taken from `argv`.
int RunWorkbench(int argc, char** argv, const std::vector<std::string>& paths);

}  // namespace app
