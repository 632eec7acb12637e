// Wave-length spike detection: a point is a spike when it lies farther than a window from the smoothed curve.
#pragma once

#include "platform/core/Geometry.h"

// Tests the listed points (mode 1), all others (mode 0), or without indices all of them. Points with
// PS_DELETED and, with indices, those that are not tested take no part in the fit. Wave length, z, scales and
// the order of indices are as for SmoothPoints; `window` is in stored y units.
//
// A spike gets PS_SPIKE | PS_EDITED; a tested point that is none loses PS_SPIKE, and with indices so does
// every point that takes no part. Without indices, deleted points are left alone.
// `band` (may be null; room for 2 * count vertices) becomes the polygon of the points taking part: the curve
// plus `window` forward, then the curve minus `window` backward; *bandCount is its size. There is none with
// z.
//
// True when a point was marked. False with nothing changed: no data or status, indexCount < 1, a mode other
// than 0 and 1 with indices, or when the points cannot be smoothed (fewer than four, no memory, bad scales).
bool SpikeDetect(const CPoint* data, const int* z, int count, const long* indices, int indexCount,
                 double waveLength, int window, int mode, double tScale, double yScale, CPoint* band,
                 int* bandCount, unsigned short* status);
