// Walks over lists of point indices as runs of consecutive points, so that the work on a run is a plain loop
// over the arrays. Whatever the list holds, only runs inside 0 ... count - 1 are visited.
#pragma once

#include <algorithm>

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
        const long most = std::min(indexCount - i, count - begin);
        long length = 1;
        for (; length + 8 <= most; length += 8) {
            long differs = 0;
            for (long k = length; k < length + 8; ++k) differs |= indices[i + k] ^ (begin + k);
            if (differs != 0) break;
        }
        while (length < most && indices[i + length] == begin + length) ++length;
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
