// The names that settings of series are kept under.
#pragma once

#include <string>
#include <vector>

namespace app {

// One for each name. The store ignores case, takes a backslash for the end of a name and has a record
// "Default": these are kept apart by a number behind the name, so that no series takes another's settings.
std::vector<std::string> KeysApart(const std::vector<std::string>& names);

}  // namespace app
