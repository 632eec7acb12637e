// Picks points by a parallel array of flag words.
#pragma once

#include <cstddef>

// Point i is taken when (status[i] & mask) == value. Without an array every point is taken.
struct StatusFilter {
    const unsigned short* status = nullptr;
    unsigned short mask = 0;
    unsigned short value = 0;

    bool Takes(std::size_t i) const { return !status || (status[i] & mask) == value; }
    // The same for the points from i on.
    StatusFilter From(std::size_t i) const { return {status ? status + i : nullptr, mask, value}; }
};

// visit(point) for each point that the filter takes, in order.
template <class Point, class Visit>
void ForEachTaken(const Point* points, std::size_t count, const StatusFilter& which, Visit&& visit) {
    const StatusFilter filter = which;
    for (std::size_t i = 0; i < count; ++i)
        if (filter.Takes(i)) visit(points[i]);
}
