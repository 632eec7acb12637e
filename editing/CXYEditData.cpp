// The current point, copies of the points and the hooks of the snapshot stream.
#include "editing/CXYEditData.h"

#include <istream>
#include <new>
#include <ostream>

#include "editing/SeriesArrays.h"

namespace {

// Where each run of consecutive points starts among the points copied, and at last their number.
class Runs {
  public:
    void Add(long index) {
        if (points > 0 && index != last + 1) ++further;
        last = index;
        ++points;
    }

    int points = 0;
    int further = 0;  // runs behind the first one

  private:
    long last = 0;
};

// Copies the draw points for which walk(visit) calls visit(index), which it does twice alike.
template <class Walk>
CPoint* CopyPoints(const SeriesArrays& series, Walk walk, int& pointCount, int& segmentCount,
                   int** segments) {
    pointCount = 0;
    segmentCount = 0;
    if (segments) *segments = nullptr;
    Runs runs;
    walk([&runs](long index) { runs.Add(index); });
    if (runs.points == 0) return nullptr;

    const int boundaryCount = runs.further + 2;
    std::unique_ptr<CPoint[]> copy(new (std::nothrow) CPoint[static_cast<std::size_t>(runs.points)]);
    std::unique_ptr<int[]> boundaries(new (std::nothrow) int[static_cast<std::size_t>(boundaryCount)]);
    if (!copy || !boundaries) return nullptr;
    Runs filled;
    boundaries[0] = 0;
    walk([&](long index) {
        const int runsBefore = filled.further;
        copy[static_cast<std::size_t>(filled.points)] = series.draw[index];
        filled.Add(index);
        if (filled.further > runsBefore)
            boundaries[static_cast<std::size_t>(filled.further)] = filled.points - 1;
    });
    boundaries[static_cast<std::size_t>(boundaryCount - 1)] = runs.points;

    pointCount = runs.points;
    segmentCount = boundaryCount;
    if (segments) *segments = boundaries.release();
    return copy.release();
}

}  // namespace

CXYEditData::CXYEditData() = default;

CXYEditData::~CXYEditData() = default;

CPoint CXYEditData::GetPoint(long i) {
    const SeriesArrays series(source);
    if (i >= 0 && i < series.count) return series.draw[i];
    currentIndex = -1;
    return {};
}

CPoint CXYEditData::SelectPoint(int i) {
    currentIndex = i;
    return GetPoint(i);
}

CPoint CXYEditData::SelectFirstPoint() {
    const SeriesArrays series(source);
    int first = 0;
    while (series.status && first < series.count && (series.status[first] & PS_DELETED)) ++first;
    return SelectPoint(series.status ? first : -1);
}

CPoint CXYEditData::SelectLastPoint() {
    const SeriesArrays series(source);
    int last = series.count - 1;
    while (series.status && last >= 0 && (series.status[last] & PS_DELETED)) --last;
    return SelectPoint(series.status ? last : -1);
}

void CXYEditData::DeSelectPoint() { currentIndex = -1; }

long CXYEditData::GetSelectedIndex() {
    return source && currentIndex < source->GetCount() ? currentIndex : -1;
}

CPoint* CXYEditData::GetCopy(int& pointCount, int& segmentCount, int** segments) {
    const SeriesArrays series(source);
    const auto present = [&series](auto visit) {
        for (int i = 0; i < series.count; ++i)
            if (!series.status || !(series.status[i] & PS_DELETED)) visit(i);
    };
    return CopyPoints(series, present, pointCount, segmentCount, segments);
}

CPoint* CXYEditData::GetCopyInsideRegion(int& pointCount, int& segmentCount, int** segments) {
    const SeriesArrays series(source);
    const auto inSelection = [this, &series](auto visit) {
        for (long k = 0; k < selectedCount; ++k) {
            const long index = selected[static_cast<std::size_t>(k)];
            if (index >= 0 && index < series.count) visit(index);
        }
    };
    return CopyPoints(series, inSelection, pointCount, segmentCount, segments);
}

std::istream& CXYEditData::RestoreStatus(std::istream& stream) { return stream; }

std::ostream& CXYEditData::SaveStatus(std::ostream& stream) { return stream; }
