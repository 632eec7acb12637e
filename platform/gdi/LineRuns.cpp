#include "platform/gdi/LineRuns.h"

#include <algorithm>
#include <limits>

#include "platform/gdi/PointPyramid.h"

namespace {

// This many points of a run are looked at one by one before many are at once.
constexpr std::size_t kProbe = 4;

constexpr std::int64_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int32_t>::max();

}  // namespace

RunWalk::RunWalk(const LinePoints& line, const SubpixelColumns& columns, SubpixelColumns::Interval window,
                 std::size_t begin, std::size_t end, bool joined)
    : line_(line),
      window_{columns, SaturateToInt32(window.left - 1), SaturateToInt32(window.right + 1)},
      next_(line.NextTaken(begin, end)),
      end_(end),
      joined_(joined) {
    const int* const first = line.breaks.before;
    break_ = static_cast<int>(
        std::upper_bound(first, first + line.breaks.count, static_cast<std::int64_t>(next_)) - first);
}

// The end of the piece that holds next_.
std::size_t RunWalk::PieceEnd() {
    const LineBreaks& breaks = line_.breaks;
    while (break_ < breaks.count && static_cast<std::size_t>(breaks.before[break_]) <= next_) ++break_;
    if (break_ == breaks.count) return end_;
    return std::min(end_, static_cast<std::size_t>(breaks.before[break_]));
}

void RunWalk::Take(std::int32_t x, std::size_t end, RunScan& scan) const {
    const double column = window_.Column(x);
    for (const std::size_t probed = std::min(end, scan.next + kProbe); scan.next < probed; ++scan.next) {
        if (!line_.which.Takes(scan.next)) continue;
        const CPoint p = line_.points[scan.next];
        if (window_.Column(p.x) != column) return;
        scan.low = std::min<std::int32_t>(scan.low, p.y);
        scan.high = std::max<std::int32_t>(scan.high, p.y);
    }
    const auto inside = [&](std::int32_t least, std::int32_t greatest) {
        return window_.Column(least) == column && window_.Column(greatest) == column;
    };
    while (scan.next < end) {
        // No scan crosses the border of a block of the pyramid, so that the pyramid can take over there.
        const std::size_t stop = line_.pyramid ? std::min(end, PointPyramid::BlockEnd(scan.next)) : end;
        if (line_.pyramid && PointPyramid::BeginsBlock(scan.next)) {
            const std::size_t before = scan.next;
            line_.pyramid->SkipWhile(inside, end, scan);
            if (scan.next > before) continue;
        }
        ScanColumn(line_.points, stop, line_.which, window_, x, scan);
        if (scan.next < stop) return;
    }
}

bool RunWalk::Next(LineRun& run) {
    if (next_ >= end_) return false;
    const std::size_t end = PieceEnd();
    run.first = line_.points[next_];
    run.begin = static_cast<std::uint32_t>(next_);
    run.joined = joined_;
    RunScan scan{next_ + 1, run.first.y, run.first.y};
    Take(run.first.x, end, scan);
    const std::size_t last = line_.LastTaken(next_, scan.next);
    run.last = line_.points[last];
    run.single = last == next_;
    run.low = scan.low;
    run.high = scan.high;
    next_ = line_.NextTaken(scan.next, end_);
    joined_ = next_ < end;
    return true;
}

bool KeptRuns::IsUseful(const LinePoints& line, const SubpixelColumns& columns, std::size_t begin,
                        std::size_t end) const {
    if (runs_.size() < 3 || !columns_ || !columns_->HasLatticeOf(columns)) return false;
    const StatusFilter &now = line.which, &then = line_.which;
    return line.points == line_.points && line.count == line_.count && now.status == then.status &&
           now.mask == then.mask && now.value == then.value && line.breaks.before == line_.breaks.before &&
           line.breaks.count == line_.breaks.count && begin <= runs_.back().begin && end > runs_[1].begin;
}

// The first run kept may lack points at its beginning and the last one at its end: both were out of sight,
// and are looked for again.
std::span<const LineRun> KeptRuns::Find(const LinePoints& line, const SubpixelColumns& columns,
                                        std::size_t begin, std::size_t end) {
    // A point more at either side, for the segments that lead out of sight.
    begin = line.LastTaken(0, begin);
    end = std::min(line.count, line.NextTaken(end, line.count) + 1);
    std::vector<LineRun> runs;
    const auto walk = [&](std::size_t from, std::size_t to, bool joined) {
        RunWalk rest(line, columns, {kLowest, kHighest}, from, to, joined);
        for (LineRun run{}; rest.Next(run);) runs.push_back(run);
    };
    if (IsUseful(line, columns, begin, end)) {
        const auto beginsBefore = [](const LineRun& run, std::size_t i) { return run.begin < i; };
        const auto incomplete = runs_.end() - 1;
        const auto first = std::lower_bound(runs_.begin() + 1, incomplete, begin, beginsBefore);
        const auto last = std::lower_bound(first, incomplete, end, beginsBefore);
        runs.reserve(runs_.size() + 1024);
        walk(begin, std::min<std::size_t>(first->begin, end), false);
        runs.insert(runs.end(), first, last);
        walk(last->begin, end, last->joined);
    } else {
        walk(begin, end, false);
    }
    runs_ = std::move(runs);
    columns_ = columns;
    line_ = line;
    return runs_;
}
