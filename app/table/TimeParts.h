// Times that the cells of several columns hold together.
#pragma once

#include <string>
#include <vector>

#include "app/table/TimeText.h"

namespace app {

// `cells` are those of the parts, in their order; dates among them are of the form.
bool ReadTimeParts(TimeForm form, char decimalSign, const std::vector<TimePart>& parts,
                   const std::vector<std::string>& cells, ReadTime& time);

}  // namespace app
