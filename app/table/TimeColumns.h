// Which columns of a table hold times and in what form, alone or together.
#pragma once

#include "app/table/Layout.h"
#include "app/table/LayoutTrial.h"

namespace app {

// Gives the columns their kind, form and role, and the layout the time that several of them compose. The
// columns have their names; the layout knows where its data begin. Where rows of the sample leave it open
// whether the day or the month comes first, the whole text is looked at.
void FindTimes(Layout& layout, std::string_view text, const Trial& trial, const std::string& timeFormat);

bool SoundsLikeTime(const std::string& name);

}  // namespace app
