// Times that several columns of a table hold together.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/table/Layout.h"
#include "app/table/LayoutTrial.h"

namespace app {

// The columns that compose a time: those whose names say so, a date and a clock side by side, or, in a table
// without names, a year and what follows it. Empty where there are none.
std::vector<TimePart> FindParts(const Layout& layout, const Trial& trial);
// The time that these columns compose.
Column Compose(const Layout& layout, const std::vector<TimePart>& parts);
// The role that a column of numbers has by its name after those in `before`: "MM" is a month, but minutes
// behind an hour.
std::optional<TimeRole> RoleByName(const std::string& name, const std::vector<TimeRole>& before);

}  // namespace app
