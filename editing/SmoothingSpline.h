// The cubic smoothing spline over unevenly spaced points: the function f that minimises
// sum (y - f(t))^2 + lambda * integral f''(t)^2 dt. Its stiffness is given as a wave length in t units:
// undulations much shorter are removed, longer ones kept, and at the wave length itself about half is left.
#pragma once

#include "platform/core/Geometry.h"

constexpr double kMinimumSpacing = 0.001;

// The work area of one fit. All arrays lie in one zeroed block with room for capacity + 1 entries each.
// A host that fits values of its own calls Allocate, fills `values` (`values2`) and `abscissa`, sets `used`
// and the wave length, solves, and reads `fitted` (`fitted2`).
struct SplineWork {
    double* values = nullptr;    // to be fitted
    double* values2 = nullptr;   // the second coordinate; null in one dimension
    double* abscissa = nullptr;  // t
    double* fitted = nullptr;
    double* fitted2 = nullptr;  // null in one dimension
    double* solver = nullptr;   // three entries a point, in two dimensions four; see SplineSolver.cpp
    int capacity = 0;           // usable points
    int used = 0;               // points of the fit; never more than capacity are touched
    double waveLength = 0;      // in t units, within [0, 9999]
    double minimumSpacing = kMinimumSpacing;  // shorter steps of t count as this long

    SplineWork() = default;
    SplineWork(const SplineWork&) = delete;
    SplineWork& operator=(const SplineWork&) = delete;
    ~SplineWork() { Free(); }

    // False, and nothing allocated, when the memory is not to be had. Frees what was there before.
    bool Allocate(int points, bool twoDimensional);
    void Free();

  private:
    double* block_ = nullptr;  // owned; from std::calloc
};

// Smooths the points without PS_DELETED together and writes the fit back, rounded, into those of them that
// are covered: all (no indices), the listed ones (mode 1) or the others (mode 0); any other mode writes
// nothing. Written points get PS_SMOOTHED | PS_EDITED and the code. With z the fit is that of the curve
// (x, y) over z / tScale and both coordinates are written. Indices may come in any order; those outside the
// points are ignored. Status, rejection, z and indices may be null.
// 1, or 0 with nothing changed: no data, indexCount < 1, fewer than four usable points, no memory, a negative
// or undefined wave length, a tScale that is not positive, or a scale that is not finite or as good as zero.
int SmoothPoints(CPoint* data, const int* z, int count, const long* indices, int indexCount,
                 double waveLength, int mode, double tScale, double yScale, unsigned short* status,
                 int* rejection, int code);

// Builds the work area of the usable points and solves; false as above. A wave length above 9999 is divided
// by ten, and tScale multiplied, until it fits; the smallest spacing shrinks with the unit, so that the fit
// is the one that the caller asked for. An infinite wave length gives the least-squares line.
bool SplineSmooth(const CPoint* data, const int* z, int count, SplineWork& work, double& waveLength,
                  double& tScale, double& yScale, const unsigned short* status);

// The k-th usable point, `original`, moved to its fit: y, in two dimensions x too, rounded.
inline CPoint FittedPoint(const SplineWork& work, int k, CPoint original, double yScale) {
    if (work.fitted2 == nullptr) return {original.x, RoundHalfAway(work.fitted[k] * yScale)};
    return {RoundHalfAway(work.fitted[k] * yScale), RoundHalfAway(work.fitted2[k] * yScale)};
}

// Stores the wave length clamped to [0, 9999] and returns it; not-a-number gives 0.
double SetWaveLength(SplineWork& work, double waveLength);

// Fit `values`, the second also `values2`, over `abscissa` with
// lambda = (waveLength / 2 pi)^4 * used / |t[used - 1] - t[0]|. Steps of t count with their absolute length;
// where first and last t agree, the span is that of used points at the smallest spacing. Finite values give
// a finite fit, whatever the abscissas. Fewer than three points are their own fit.
void SolveSmoothingSpline(SplineWork& work);
void SolveSmoothingSpline2(SplineWork& work);
