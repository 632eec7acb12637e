// Linear interpolation of listed points between their nearest usable neighbours.
#pragma once

#include "platform/core/Geometry.h"

// Replaces the y of every listed point; x stays. The support points are those that are neither listed nor
// deleted. Between two of them, y becomes the rounded value at x of the straight line through both (0 when
// they share one x); before the first and behind the last one, the y of that one. Points replaced get
// PS_INTERPOLATED | PS_EDITED. Without any support point nothing changes.
//
// `indices` ascends: entries that do not, or lie outside 0 ... count - 1, are passed over. `yScale`, stored
// counts per real unit, enters only through rounding; a scale of 0 gives 0. `status` may be null: then no
// point counts as deleted. Non-zero when a point was replaced; a list as long as the series replaces none.
int InterpolatePoints(CPoint* data, long count, const long* indices, long indexCount, double yScale,
                      unsigned short* status);
