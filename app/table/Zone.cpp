#include "app/table/Zone.h"

#include <date/tz.h>

#include <chrono>
#include <stdexcept>

#include "app/table/ZoneNames.h"

namespace app {

namespace {

using std::chrono::microseconds;

Failure NoSuchZone(const std::string& zone) {
    const char* const readings = ZoneReadings(zone);
    return UsageError(readings ? "\"" + zone + "\" is " + readings : "there is no time zone \"" + zone + "\"",
                      "--zone takes a name such as Europe/Berlin, UTC, or an offset such as +01:00");
}

// A stretch of local time with one offset; outside of [begin, end) the database is asked again.
struct Stretch {
    Microseconds begin = 1;
    Microseconds end = 0;
    Microseconds offset = 0;
};

Microseconds Count(std::chrono::seconds length) { return microseconds(length).count(); }

class Walk {
  public:
    explicit Walk(const date::time_zone& zone) : zone_(zone) {}

    Microseconds Next(Microseconds local, bool backwards) {
        if (local < plain_.begin || local >= plain_.end) {
            const auto at =
                date::local_seconds(std::chrono::floor<std::chrono::seconds>(microseconds(local)));
            const date::local_info info = zone_.get_info(at);
            if (info.result != date::local_info::unique) return Special(local, info, backwards);
            Remember(info.first);
        }
        return last_ = local - plain_.offset, began_ = true, last_;
    }
    ZoneCounts counts;

  private:
    // Local times near a change of the clock may be those of the stretch beside it.
    void Remember(const date::sys_info& info) {
        constexpr std::chrono::hours kNear{25};
        plain_.offset = Count(info.offset);
        plain_.begin = Count((info.begin + kNear + info.offset).time_since_epoch());
        plain_.end = Count((info.end - kNear + info.offset).time_since_epoch());
        // The first and the last stretch have no end that could be counted.
        constexpr Microseconds kFar = Microseconds{1} << 61;
        if (info.begin.time_since_epoch() < std::chrono::hours(-24 * 366 * 10000)) plain_.begin = -kFar;
        if (info.end.time_since_epoch() > std::chrono::hours(24 * 366 * 9000)) plain_.end = kFar;
        if (plain_.begin >= plain_.end) plain_ = {1, 0, plain_.offset};
    }

    Microseconds Special(Microseconds local, const date::local_info& info, bool backwards) {
        const Microseconds earlier = local - Count(info.first.offset);
        if (info.result == date::local_info::nonexistent) {
            ++counts.skipped;
            return last_ = earlier, began_ = true, last_;
        }
        ++counts.repeated;
        const Microseconds later = local - Count(info.second.offset);
        const bool first = backwards ? began_ && later > last_ : !began_ || earlier >= last_;
        return last_ = first ? earlier : later, began_ = true, last_;
    }

    const date::time_zone& zone_;
    Stretch plain_;
    Microseconds last_ = 0;
    bool began_ = false;
};

// Takes an offset, or what letters say that the database does not have, from the time.
bool FixedOffset(const std::string& zone, Microseconds& time) {
    TimeWalker walker(zone);
    return walker.Zone(time) && walker.AtEnd();
}

const date::time_zone* Find(const std::string& zone) {
    try {
        return date::locate_zone(zone);
    } catch (const std::runtime_error&) {
        return nullptr;
    }
}

}  // namespace

Result<ZoneCounts> ToUtc(std::vector<Microseconds>& times, const std::string& zone) {
    const date::time_zone* const found = Find(zone);
    Microseconds offset = 0;
    if (!found && !FixedOffset(zone, offset)) return NoSuchZone(zone);
    if (!found) {
        for (auto& time : times) time += offset;
        return ZoneCounts{};
    }
    Walk walk(*found);
    if (times.empty()) return walk.counts;
    const bool backwards = times.front() > times.back();
    for (auto& time : times) time = walk.Next(time, backwards);
    return walk.counts;
}

bool ToUtc(Microseconds& time, const std::string& zone, bool last) {
    const date::time_zone* const found = Find(zone);
    if (!found) return FixedOffset(zone, time);
    // Who walks backwards meets the last of two first.
    time = Walk(*found).Next(time, last);
    return true;
}

}  // namespace app
