// Wave-length spike detection: a point is a spike when it lies farther than a window from the smoothed curve.
#pragma once

#include "platform/core/Geometry.h"

bool SpikeDetect(CPoint* data, int* z, int count, const long* indices, int indexCount, double waveLength,
                 int window, int mode, double tScale, double yScale, CPoint* band, int* bandCount,
                 unsigned short* status);
