// Letters that name a zone behind a time. Many name several: those that do in the world's files are told
// apart only by somebody who knows where the file comes from.
#pragma once

#include <optional>
#include <string_view>

namespace app {

// The minutes ahead of UTC of a zone that means one thing alone; letters of either case.
std::optional<int> ZoneMinutes(std::string_view letters);
// What letters that mean several zones may mean, for people; null for all others.
const char* ZoneReadings(std::string_view letters);

}  // namespace app
