// The cubic smoothing spline over unevenly spaced points.
#pragma once

#include "platform/core/Geometry.h"

struct SplineWork;

int SmoothPoints(CPoint* data, int* z, int count, const long* indices, int indexCount, double waveLength,
                 int mode, double tScale, double yScale, unsigned short* status, int* rejection, int code);
bool SplineSmooth(const CPoint* data, const int* z, int count, SplineWork& work, double& waveLength,
                  double& tScale, double& yScale, const unsigned short* status);
double SetWaveLength(SplineWork& work, double waveLength);
void SolveSmoothingSpline(SplineWork& work);
void SolveSmoothingSpline2(SplineWork& work);
