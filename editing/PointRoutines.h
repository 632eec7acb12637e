// Routines on arrays of samples in stored units, shared by the editable data set and the commands. Each is a
// pass over the covered points: those listed in `indices` (mode 1), every other one (mode 0; the list
// ascends), or, without `indices`, points 0 ... indexCount - 1 whatever the mode. Every covered point gets
// PS_MOVED | PS_EDITED where there is a status array and the code where there is a rejection array, deleted
// points too. Sums and rounded values saturate at the 32-bit limits; a rule that gives not-a-number gives 0.
//
// Indices outside 0 ... count - 1 are passed over; a point listed twice is changed twice. In mode 0 entries
// that do not ascend are ignored.
#pragma once

#include "platform/core/Geometry.h"

// Adds (dx, dy). 0 without data or with indexCount below 1, else 1; any mode but 0 and 1 changes nothing.
int TranslatePoints(CPoint* data, int count, const long* indices, int indexCount, long dx, long dy, int mode,
                    unsigned short* status, int* rejection, int code);

// y1 = origin + (y - origin) * factor, rounded. Results as those of TranslatePoints.
int ScaleWithOffset(CPoint* data, int count, const long* indices, int indexCount, double factor,
                    double origin, int mode, unsigned short* status, int* rejection, int code);

// The next three always cover the listed points; results as above. T1 and Tn are the x of the first and the
// last covered point; where they are equal, ramp and drift keep every y and still mark the points, as a
// translation by nothing does.
// y1 = y + K * (x - T1) / (Tn - T1), rounded.
int RampScale(CPoint* data, int count, const long* indices, int indexCount, double K, unsigned short* status,
              int* rejection, int code);
// y1 = y + y * (P / 100) * (x - T1) / (Tn - T1), rounded.
int DriftScale(CPoint* data, int count, const long* indices, int indexCount, double P, unsigned short* status,
               int* rejection, int code);
// y1 = y + (y - origin) * P / 100, rounded.
int CustomScale(CPoint* data, int count, const long* indices, int indexCount, double P, double origin,
                unsigned short* status, int* rejection, int code);

// Names of the processing methods: group 0 translation, 1 the four scale methods, 2 smoothing. Never null.
const char* GetMethodName(short index, int group);
int GetMethodCount(int group);
