// The command line of the program.
#pragma once

namespace app {

// Does what the arguments ask for and returns the exit code: 0 done, 1 the data or the system refused, 2
// wrong usage. Data goes to standard output, messages to standard error.
int Main(int argc, char** argv);

}  // namespace app
