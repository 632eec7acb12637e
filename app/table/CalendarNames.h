// Names of months and weekdays as people write them in the languages of Europe, whole and cut off.
#pragma once

#include <string_view>

namespace app {

// 1 to 12 for the name of a month, without a point behind it; 0: there is none of that name. Letters of
// either case, in UTF-8 or in a code of one byte a character.
int MonthNamed(std::string_view name);
bool IsWeekdayName(std::string_view name);

}  // namespace app
