// How the lines of a feed are read: what kind of table its first lines are, and where the time of a row comes
// from. A single column of numbers is enough; rows that hold no time get the time of their arrival.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/table/ColumnChoice.h"
#include "app/table/Layout.h"
#include "app/table/ReadOptions.h"
#include "app/table/Result.h"

namespace app {

struct LineShape {
    Layout layout;
    Choice choice;
    TextEncoding encoding;
    std::vector<std::string> top;  // the lines above the data, without their ends

    bool IsArrival() const { return choice.x.field < 0; }
    bool HasTimes() const { return choice.x.kind == ColumnKind::Time; }
    // What a file begins with that records the lines: the lines above the data, or the names of the columns
    // where a column of arrival times is put before them.
    std::string Heading() const;
};

// `lines` are whole lines, the last of which arrived at `now`. Fails where they are no table yet.
Result<LineShape> GuessLineShape(std::string_view lines, const std::string& name, const ReadOptions& options,
                                 Microseconds now);

}  // namespace app
