#include "editing/PointMarks.h"

#include "editing/IndexRuns.h"
#include "sources/PointStatus.h"

void MarkLongRun(unsigned short* status, int* rejection, long begin, long end, int flags, int code) {
    const auto word = static_cast<unsigned short>(flags);
    if (status) {
        for (long i = begin; i < end; ++i) status[i] |= word;
    }
    if (rejection && code != 0) {
        for (long i = begin; i < end; ++i) rejection[i] |= code;
    }
}

int MarkPoints(long count, const long* indices, long indexCount, bool inside, unsigned short* status,
               int flags, int* rejection, int code) {
    if (!status) return 0;
    if (!indices) indexCount = 0;
    const auto mark = [=](long begin, long end) {
        MarkRun(status, rejection, begin, end, flags | PS_EDITED, code);
    };
    if (inside) {
        ForListedRuns(count, indices, indexCount, mark);
        return indexCount > 0;
    }
    ForUnlistedRuns(count, indices, indexCount, mark);
    return count > 0 && indexCount < count;
}
