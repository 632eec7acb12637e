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
    : m_line(line),
      m_window{columns, SaturateToInt32(window.left - 1), SaturateToInt32(window.right + 1)},
      m_next(line.NextTaken(begin, end)),
      m_end(end),
      m_joined(joined) {
    const int* const first = line.breaks.before;
    m_break = static_cast<int>(
        std::upper_bound(first, first + line.breaks.count, static_cast<std::int64_t>(m_next)) - first);
}

// The end of the piece that holds m_next.
std::size_t RunWalk::PieceEnd() {
    const LineBreaks& breaks = m_line.breaks;
    while (m_break < breaks.count && static_cast<std::size_t>(breaks.before[m_break]) <= m_next) ++m_break;
    if (m_break == breaks.count) return m_end;
    return std::min(m_end, static_cast<std::size_t>(breaks.before[m_break]));
}

void RunWalk::Take(std::int32_t x, std::size_t end, RunScan& scan) const {
    const double column = m_window.Column(x);
    for (const std::size_t probed = std::min(end, scan.next + kProbe); scan.next < probed; ++scan.next) {
        if (!m_line.which.Takes(scan.next)) continue;
        const CPoint p = m_line.points[scan.next];
        if (m_window.Column(p.x) != column) return;
        scan.low = std::min<std::int32_t>(scan.low, p.y);
        scan.high = std::max<std::int32_t>(scan.high, p.y);
    }
    const auto inside = [&](std::int32_t least, std::int32_t greatest) {
        return m_window.Column(least) == column && m_window.Column(greatest) == column;
    };
    while (scan.next < end) {
        // No scan crosses the border of a block of the pyramid, so that the pyramid can take over there.
        const std::size_t stop = m_line.pyramid ? std::min(end, PointPyramid::BlockEnd(scan.next)) : end;
        if (m_line.pyramid && PointPyramid::BeginsBlock(scan.next)) {
            const std::size_t before = scan.next;
            m_line.pyramid->SkipWhile(inside, end, scan);
            if (scan.next > before) continue;
        }
        ScanColumn(m_line.points, stop, m_line.which, m_window, x, scan);
        if (scan.next < stop) return;
    }
}

bool RunWalk::Next(LineRun& run) {
    if (m_next >= m_end) return false;
    const std::size_t end = PieceEnd();
    run.first = m_line.points[m_next];
    run.begin = static_cast<std::uint32_t>(m_next);
    run.joined = m_joined;
    RunScan scan{m_next + 1, run.first.y, run.first.y};
    Take(run.first.x, end, scan);
    const std::size_t last = m_line.LastTaken(m_next, scan.next);
    run.last = m_line.points[last];
    run.single = last == m_next;
    run.low = scan.low;
    run.high = scan.high;
    m_next = m_line.NextTaken(scan.next, m_end);
    m_joined = m_next < end;
    return true;
}

bool KeptRuns::IsUseful(const LinePoints& line, const SubpixelColumns& columns, std::size_t begin,
                        std::size_t end) const {
    if (m_runs.size() < 3 || !m_columns || !m_columns->HasLatticeOf(columns)) return false;
    const StatusFilter &now = line.which, &then = m_line.which;
    return line.points == m_line.points && line.count == m_line.count && now.status == then.status &&
           now.mask == then.mask && now.value == then.value && line.breaks.before == m_line.breaks.before &&
           line.breaks.count == m_line.breaks.count && begin <= m_runs.back().begin && end > m_runs[1].begin;
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
        const auto incomplete = m_runs.end() - 1;
        const auto first = std::lower_bound(m_runs.begin() + 1, incomplete, begin, beginsBefore);
        const auto last = std::lower_bound(first, incomplete, end, beginsBefore);
        runs.reserve(m_runs.size() + 1024);
        walk(begin, std::min<std::size_t>(first->begin, end), false);
        runs.insert(runs.end(), first, last);
        walk(last->begin, end, last->joined);
    } else {
        walk(begin, end, false);
    }
    m_runs = std::move(runs);
    m_columns = columns;
    m_line = line;
    return m_runs;
}
