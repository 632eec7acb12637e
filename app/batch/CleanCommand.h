// `tavin clean`: one file, many files, or a table of stations.
#pragma once

#include <string>

#include "app/batch/Arguments.h"

namespace app {

// `given` are the options as they were written.
Result<int> CleanCommand(const Arguments& arguments, const std::string& given);

}  // namespace app
