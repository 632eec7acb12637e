// Starts the workbench.
#pragma once

#include <string>
#include <vector>

namespace app {

struct LiveWishes;

// Opens the files, one window each, and returns when the user leaves the program: its exit code. Without a
// display it says which commands work there.
int RunWorkbench(int argc, char** argv, const std::vector<std::string>& paths);
// The same with one window of what arrives. There is a display.
int RunLiveWindow(int argc, char** argv, const LiveWishes& wishes);

}  // namespace app
