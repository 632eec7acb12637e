// Bounds that the result of a cleaning should keep: outside them the output is written all the same, and the
// run says so and ends with an exit code of its own.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/table/Result.h"

namespace app {

struct Alarm {
    std::string text;  // as written: "missing=:5%"
    std::string quantity;
    bool isShare = false;
    double least = 0;
    double most = 0;  // infinite where none is given
};

// QUANTITY=MIN:MAX, an end may be left out. rows and differing are counts; missing, flagged and changed are
// shares, 5% or 0.05.
Result<Alarm> ReadAlarm(const std::string& text);

// One sentence for each bound that the summary of a cleaned file leaves. The shares are those of each column.
std::vector<std::string> Alarms(const std::vector<Alarm>& alarms, const nlohmann::ordered_json& summary);

}  // namespace app
