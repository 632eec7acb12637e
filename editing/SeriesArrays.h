// What the edits of the data set and of the commands share: a series' arrays as the point routines take them,
// the choice of a scale method and the median test over a series.
#pragma once

#include <vector>

#include "platform/core/Geometry.h"
#include "sources/IPointSource.h"

// The arrays of a series at one moment, not owned. Without a series, without samples, and for a series of
// more points than the routines count (an int), there is no data and `count` is 0: edits then do nothing.
struct SeriesArrays {
    explicit SeriesArrays(IPointSource* source);

    CPoint* data = nullptr;
    CPoint* draw = nullptr;
    unsigned short* status = nullptr;  // may be null
    int* rejection = nullptr;          // may be null
    int count = 0;
};

// The same for an edit: counts as a change of the series, so make it where the edit is about to write.
struct EditedArrays : SeriesArrays {
    explicit EditedArrays(IPointSource* source);
};

// The points that a routine covers: the `count` points listed (mode 1) or all others (mode 0); without
// indices, points 0 ... count - 1.
struct Covered {
    const long* indices = nullptr;
    int count = 0;
    int mode = 1;
};

// Scales the covered points by one of the four methods. `origin` is in stored units; the amplitude of a ramp
// is factor * yScale. An unknown method shows a message and gives 0.
int ScaleByMethod(int method, const SeriesArrays& series, const Covered& covered, double factor,
                  double origin, double yScale, int code);
// Says that a scale method is unknown, or cannot be had for the points asked for; gives 0.
int RefuseScaleMethod();

// The medians of the y of all draw points, deleted ones included, and which points lie too far from theirs.
struct MedianTest {
    // `half` is half the filter length in samples. May throw std::bad_alloc.
    MedianTest(const SeriesArrays& series, int half, int distanceStored);

    std::vector<int> medians;
    std::vector<unsigned char> outliers;  // 1 or 0
};
