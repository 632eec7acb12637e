// Where a line is interrupted.
#pragma once

#include <algorithm>
#include <cstddef>

// No segment leads over any of these places: to the point of such an index, or to the next one that is drawn
// when that point is not. The indices ascend. The array is the caller's.
struct LineBreaks {
    const int* before = nullptr;
    int count = 0;
};

// visit(begin, end) for each piece of a line of `count` points, in order.
template <class Visit>
void ForEachPiece(std::size_t count, const LineBreaks& breaks, Visit&& visit) {
    std::size_t begin = 0;
    for (int i = 0; i < breaks.count; ++i) {
        const std::size_t end = std::min(count, static_cast<std::size_t>(std::max(0, breaks.before[i])));
        if (end <= begin) continue;
        visit(begin, end);
        begin = end;
    }
    if (begin < count) visit(begin, count);
}
