// Lengths of time as people write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace app {

// "5 min", "1 h 30 min", "36.5 s".
std::string DurationText(double seconds);
// Reads a length such as 90, 90s, 15min, 6h, 0.5d in seconds.
std::optional<double> ReadDuration(std::string_view text);

}  // namespace app
