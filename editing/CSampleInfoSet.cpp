#include "editing/CSampleInfoSet.h"

#include <algorithm>
#include <new>
#include <optional>

#include "platform/gdi/CDC.h"

namespace {

template <class T>
std::unique_ptr<T[]> Duplicate(const std::unique_ptr<T[]>& values, int count) {
    if (!values) return nullptr;
    std::unique_ptr<T[]> copy(new (std::nothrow) T[static_cast<std::size_t>(count)]);
    if (copy) std::copy_n(values.get(), count, copy.get());
    return copy;
}

// The column of pixels that each point falls into. Points are asked for in ascending order.
class PixelColumns {
  public:
    PixelColumns(const CDC& dc, const CPoint* points, int count) : dc_(dc), points_(points), count_(count) {}

    LONG operator()(int i) {
        if (i >= begin_ + size_) {
            begin_ = i;
            size_ = std::min(kBlock, count_ - i);
            std::copy_n(points_ + i, size_, block_);
            dc_.LPtoDP(block_, size_);
        }
        return block_[i - begin_].x;
    }

  private:
    static constexpr int kBlock = 1024;
    const CDC& dc_;
    const CPoint* points_;
    int count_;
    int begin_ = 0;
    int size_ = 0;
    CPoint block_[kBlock];
};

// The points of a run from `begin` on that fall into one column.
struct Column {
    Column() = default;
    Column(const CPoint* points, int from, int runEnd, PixelColumns& columns)
        : begin(from), end(from + 1), pixel(columns(from)), first(points[from]) {
        low = high = last = first;
        for (; end < runEnd && columns(end) == pixel; ++end) {
            last = points[end];
            if (last.y < low.y) low = last, lowComesFirst = false;
            if (last.y > high.y) high = last, lowComesFirst = true;
        }
    }
    // In the order in which they were; returns how many points there are then.
    int Write(CPoint* points, int runStart, int at) const {
        for (const CPoint& point : {first, lowComesFirst ? low : high, lowComesFirst ? high : low, last})
            if (at == runStart || !(points[at - 1] == point)) points[at++] = point;
        return at;
    }

    int begin = -1;
    int end = 0;
    LONG pixel = 0;
    CPoint first, low, high, last;
    bool lowComesFirst = true;
};

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

void CSampleInfoSet::Simplify(const CDC& dc) {
    if (!points) return;
    // What is kept is written over what has been read: there is never more of it.
    PixelColumns columns(dc, points.get(), pointCount);
    int kept = 0;
    int runs = 0;
    std::optional<LONG> strokeColumn;  // of the last run kept, where that is a stroke
    for (int k = 0; k + 1 < segmentCount; ++k) {
        const int first = segments[static_cast<std::size_t>(k)];
        const int end = segments[static_cast<std::size_t>(k) + 1];
        const int start = kept;
        Column column;
        for (int i = first; i < end; i = column.end) {
            column = Column(points.get(), i, end, columns);
            kept = column.Write(points.get(), start, kept);
        }
        const bool inOneColumn = column.begin == first;
        if (inOneColumn && end - first == 1) {
            kept = start;  // no line
            continue;
        }
        if (inOneColumn && strokeColumn == column.pixel) {
            CPoint* const stroke = points.get() + start - 2;
            stroke[0].y = std::min(stroke[0].y, column.low.y);
            stroke[1].y = std::max(stroke[1].y, column.high.y);
            kept = start;
            continue;
        }
        if (inOneColumn) {
            points[static_cast<std::size_t>(start)] = column.low;
            points[static_cast<std::size_t>(start) + 1] = column.high;
            kept = start + 2;
            strokeColumn = column.pixel;
        } else {
            strokeColumn.reset();
        }
        segments[static_cast<std::size_t>(runs++)] = start;
    }
    segments[static_cast<std::size_t>(runs)] = kept;
    segmentCount = runs + 1;
    pointCount = kept;
    std::copy_n(points.get(), pointCount, originalPoints.get());
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
