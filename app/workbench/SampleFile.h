// The sample that comes with the program.
#pragma once

#include <string>

namespace app {

// Its path, where it was installed or in the source tree that the program was built in; empty: not there.
std::string SampleFile();

}  // namespace app
