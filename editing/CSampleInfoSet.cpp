#include "editing/CSampleInfoSet.h"

#include <algorithm>
#include <new>

namespace {

template <class T>
std::unique_ptr<T[]> Duplicate(const std::unique_ptr<T[]>& values, int count) {
    if (!values) return nullptr;
    std::unique_ptr<T[]> copy(new (std::nothrow) T[static_cast<std::size_t>(count)]);
    if (copy) std::copy_n(values.get(), count, copy.get());
    return copy;
}

}  // namespace

CSampleInfoSet::CSampleInfoSet(const CSampleInfoSet& other) { *this = other; }

CSampleInfoSet& CSampleInfoSet::operator=(const CSampleInfoSet& other) {
    if (this == &other) return *this;
    DeleteSample();
    dataSet = other.dataSet;
    std::copy_n(other.dragFlags, 3, dragFlags);
    segments = Duplicate(other.segments, other.segmentCount);
    points = Duplicate(other.points, other.pointCount);
    originalPoints = Duplicate(other.originalPoints, other.pointCount);
    segmentCount = other.segmentCount;
    pointCount = other.pointCount;
    if (other.points && (!segments || !points || !originalPoints)) DeleteSample();
    return *this;
}

CSampleInfoSet::~CSampleInfoSet() { DeleteSample(); }

void CSampleInfoSet::TakeOver(CPoint* copied, int* boundaries) {
    points.reset(copied);
    segments.reset(boundaries);
    originalPoints = Duplicate(points, pointCount);
    if (points && !originalPoints) DeleteSample();
}

void CSampleInfoSet::GetSample() {
    if (!dataSet) return;
    int* boundaries = nullptr;
    CPoint* copied = dataSet->GetCopy(pointCount, segmentCount, &boundaries);
    TakeOver(copied, boundaries);
}

void CSampleInfoSet::GetSampleInsideRegion() {
    if (!dataSet) return;
    int* boundaries = nullptr;
    CPoint* copied = dataSet->GetCopyInsideRegion(pointCount, segmentCount, &boundaries);
    TakeOver(copied, boundaries);
}

void CSampleInfoSet::ReGetSample() {
    DeleteSample();
    GetSampleInsideRegion();
}

void CSampleInfoSet::TranslateSample(CPoint d) {
    if (!points) return;
    std::transform(originalPoints.get(), originalPoints.get() + pointCount, points.get(),
                   [d](const CPoint& point) { return point + d; });
}

int CSampleInfoSet::DrawSample(CDC* dc) {
    if (!dc || !points) return 1;
    for (int k = 0; k + 1 < segmentCount; ++k) {
        const int first = segments[static_cast<std::size_t>(k)];
        dc->Polyline(points.get() + first, segments[static_cast<std::size_t>(k) + 1] - first);
    }
    return 1;
}

void CSampleInfoSet::DeleteSample() {
    points.reset();
    originalPoints.reset();
    segments.reset();
    pointCount = 0;
    segmentCount = 0;
    std::fill_n(dragFlags, 3, false);
}
