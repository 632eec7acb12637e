// Status and rejection marks on many points.
#pragma once

// status |= flags for the points `begin` to `end` (exclusive) and rejection |= code; either array may be
// null.
void MarkLongRun(unsigned short* status, int* rejection, long begin, long end, int flags, int code);

// The same; quick for a single point, of which a scattered selection consists.
inline void MarkRun(unsigned short* status, int* rejection, long begin, long end, int flags, int code) {
    if (end - begin != 1) return MarkLongRun(status, rejection, begin, end, flags, code);
    if (status) status[begin] |= static_cast<unsigned short>(flags);
    if (rejection) rejection[begin] |= code;
}

// Marks the listed points (inside) or all others (not inside; the list ascends) with status |= flags |
// PS_EDITED and, where there is a rejection array, rejection |= code. Entries outside 0 ... count - 1 are
// passed over. 0 without a status array; else inside: 1 when the list has entries; not inside: 1 when it has
// fewer entries than there are points.
int MarkPoints(long count, const long* indices, long indexCount, bool inside, unsigned short* status,
               int flags, int* rejection, int code);
