// Local times of a zone of the time zone database, and UTC.
#pragma once

#include <string>
#include <vector>

#include "app/table/Result.h"
#include "app/table/TimeWalker.h"

namespace app {

struct ZoneCounts {
    std::int64_t repeated = 0;  // times of an hour that the clock showed twice
    std::int64_t skipped = 0;   // times that the clock never showed
};

// Turns local times, in the order of the file, into UTC. Of the hour that is repeated when the clock is set
// back, a time is the first one unless that would go back behind the row before it. A time that was skipped
// when the clock was set forward counts on as if it had not been.
// `zone` is a name such as Europe/Berlin, or a fixed offset such as +01:00; others are usage errors.
Result<ZoneCounts> ToUtc(std::vector<Microseconds>& times, const std::string& zone);
// One time, of an hour that is repeated the first or the last; false when there is no such zone.
bool ToUtc(Microseconds& time, const std::string& zone, bool last = false);

}  // namespace app
