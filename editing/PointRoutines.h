// Routines on arrays of samples in stored units, shared by the editable data set and the commands. Each is a
// pass over the covered points: those listed in `indices` (ascending; mode 1), every other one (mode 0), or,
// without `indices`, points 0 ... indexCount - 1. Every point changed gets PS_MOVED | PS_EDITED where there
// is a status array and the code where there is a rejection array. Sums and rounded values saturate at the
// 32-bit limits.
#pragma once

#include "platform/core/Geometry.h"

// Adds (dx, dy). 0 without data or with indexCount 0, else 1; any other mode changes nothing.
int TranslatePoints(CPoint* data, int count, const long* indices, int indexCount, long dx, long dy, int mode,
                    unsigned short* status, int* rejection, int code);

// y1 = origin + (y - origin) * factor, rounded.
int ScaleWithOffset(CPoint* data, int count, const long* indices, int indexCount, double factor,
                    double origin, int mode, unsigned short* status, int* rejection, int code);

// The next three always cover the listed points. T1 and Tn are the x of the first and the last covered point.
// y1 = y + K * (x - T1) / (Tn - T1), rounded.
int RampScale(CPoint* data, int count, const long* indices, int indexCount, double K, unsigned short* status,
              int* rejection, int code);
// y1 = y + y * P / 100 * (x - T1) / (Tn - T1), rounded.
int DriftScale(CPoint* data, int count, const long* indices, int indexCount, double P, unsigned short* status,
               int* rejection, int code);
// y1 = y + (y - origin) * P / 100, rounded.
int CustomScale(CPoint* data, int count, const long* indices, int indexCount, double P, double origin,
                unsigned short* status, int* rejection, int code);

// Names of the processing methods: group 0 translation, 1 the four scale methods, 2 smoothing.
const char* GetMethodName(short index, int group);
int GetMethodCount(int group);
