// Walks over lists of point indices as runs of consecutive points, so that the work on a run is a plain loop
// over the arrays. Whatever the list holds, only runs inside 0 ... count - 1 are visited.
#pragma once

#include <algorithm>

// How many of the first `most` entries (at least one) count up by one from the first.
inline long ConsecutiveEntries(const long* entries, long most) {
    constexpr long kBlock = 8;
    const long first = entries[0];
    const auto fits = [=](long i) { return i < most && entries[i] == first + i; };
    long length = 1;
    while (length < kBlock && fits(length)) ++length;
    for (; length >= kBlock && length + kBlock <= most; length += kBlock) {
        long differs = 0;
        for (long i = length; i < length + kBlock; ++i) differs |= entries[i] ^ (first + i);
        if (differs != 0) break;
    }
    while (fits(length)) ++length;
    return length;
}

// visit(begin, end) for the listed points, in the order of the list; entries outside the arrays are passed
// over and an entry listed twice is visited twice.
template <class Visit>
void ForListedRuns(long count, const long* indices, long indexCount, Visit visit) {
    for (long i = 0; i < indexCount;) {
        const long begin = indices[i];
        if (begin < 0 || begin >= count) {
            ++i;
            continue;
        }
        const long length = ConsecutiveEntries(indices + i, std::min(indexCount - i, count - begin));
        visit(begin, begin + length);
        i += length;
    }
}

// visit(begin, end) for the points that are not listed. The list ascends; an entry that does not is passed
// over.
template <class Visit>
void ForUnlistedRuns(long count, const long* indices, long indexCount, Visit visit) {
    long next = 0;
    for (long i = 0; i < indexCount; ++i) {
        const long listed = indices[i];
        if (listed < next || listed >= count) continue;
        if (listed > next) visit(next, listed);
        next = listed + 1;
    }
    if (next < count) visit(next, count);
}
