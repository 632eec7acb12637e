// Starts the workbench.
#pragma once

#include <string>
#include <vector>

namespace app {

// Opens the files, one window each, and returns when the user leaves the program: its exit code. Without a
// display it says which commands work there.
int RunWorkbench(int argc, char** argv, const std::vector<std::string>& paths);

}  // namespace app
