#include "sources/KPointSource.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

#include "platform/core/CCriticalSection.h"

IMPLEMENT_DYNAMIC(KPointSource, IPointSource)

namespace {

CCriticalSection& SeriesLock() {
    static CCriticalSection lock;
    return lock;
}

struct Locked {
    Locked() { SeriesLock().Lock(); }
    ~Locked() { SeriesLock().Unlock(); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
};

template <class T>
T* Allocate(long n) {
    return static_cast<T*>(std::calloc(static_cast<std::size_t>(n), sizeof(T)));
}

// Enlarges a zero-filled array; null without memory, the array then unchanged.
template <class T>
T* Enlarge(T* array, long from, long to) {
    T* grown =
        static_cast<T*>(std::realloc(static_cast<void*>(array), static_cast<std::size_t>(to) * sizeof(T)));
    if (grown)
        std::memset(static_cast<void*>(grown + from), 0, static_cast<std::size_t>(to - from) * sizeof(T));
    return grown;
}

constexpr double kNoMinimum = 1.7e308;

struct StoredBox {
    std::int32_t minX = std::numeric_limits<std::int32_t>::max();
    std::int32_t minY = minX;
    std::int32_t maxX = std::numeric_limits<std::int32_t>::min();
    std::int32_t maxY = maxX;
    bool any = false;
};

// A skipped point takes part as the neutral element, so that the loop has no branches and vectorises.
StoredBox FindBox(const CPoint* data, const unsigned short* status, long count, bool skipDeleted) {
    constexpr std::int32_t kLow = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t kHigh = std::numeric_limits<std::int32_t>::max();
    std::int32_t x0 = kHigh;
    std::int32_t y0 = kHigh;
    std::int32_t x1 = kLow;
    std::int32_t y1 = kLow;
    bool any = false;
    for (long i = 0; i < count; ++i) {
        const bool skip = skipDeleted && status && (status[i] & PS_DELETED);
        x0 = std::min(x0, skip ? kHigh : data[i].x);
        y0 = std::min(y0, skip ? kHigh : data[i].y);
        x1 = std::max(x1, skip ? kLow : data[i].x);
        y1 = std::max(y1, skip ? kLow : data[i].y);
        any |= !skip;
    }
    return {x0, y0, x1, y1, any};
}

// Lowers `low` and raises `high` by the real value of a stored one. Not-a-number (a scale of 0) changes
// neither.
void Widen(double& low, double& high, std::int32_t stored, LONG offset, double scale) {
    const double real = (static_cast<double>(stored) + offset) / scale;
    if (real < low) low = real;
    if (real > high) high = real;
}

}  // namespace

KPointSource::KPointSource(CString seriesName, double scaleX, double scaleY, CString unitNameX,
                           CString unitNameY, int initialSize, int growSize)
    : IPointSource(std::move(unitNameX), std::move(unitNameY)),
      growBy(std::max(growSize, 1)),
      rejection(nullptr),
      count(0),
      capacity((long{std::max(initialSize, 0)} / growBy + 1) * growBy),
      name(std::move(seriesName)),
      xScale(scaleX),
      yScale(scaleY),
      minX(-1.0),
      minY(-1.0),
      maxX(1.0),
      maxY(1.0),
      ownsStatus(true) {
    data = Allocate<CPoint>(capacity);
    status = Allocate<unsigned short>(capacity);
    if (!data || !status) capacity = 0;
}

KPointSource::~KPointSource() {
    std::free(static_cast<void*>(data));
    if (ownsStatus) std::free(status);
}

int KPointSource::Lock() { return SeriesLock().Lock(); }

int KPointSource::UnLock() { return SeriesLock().Unlock(); }

double KPointSource::GetMinY() { return maxY - minY > 1.0 ? minY : minY - 1.0; }

double KPointSource::GetMaxY() { return maxY - minY > 1.0 ? maxY : maxY + 1.0; }

CString KPointSource::GetKey() { return key.IsEmpty() ? GetName() : key; }

bool KPointSource::UpdateStats() {
    if (count == 0) {
        minX = minY = -1.0;
        maxX = maxY = 1.0;
        return false;
    }
    const Locked locked;
    StoredBox box = FindBox(data, status, count, true);
    if (!box.any) box = FindBox(data, status, count, false);
    minX = minY = kNoMinimum;
    maxX = maxY = -kNoMinimum;
    // The real value rises or falls with the stored one throughout, so the stored extremes give the real
    // ones.
    for (const std::int32_t x : {box.minX, box.maxX}) Widen(minX, maxX, x, offset.x, GetXScale());
    for (const std::int32_t y : {box.minY, box.maxY}) Widen(minY, maxY, y, offset.y, GetYScale());
    return true;
}

bool KPointSource::Grow(long needed) {
    long enlarged = capacity;
    while (enlarged < needed) enlarged += growBy;
    if (enlarged == capacity) return true;
    CPoint* grownData = Enlarge(data, capacity, enlarged);
    if (!grownData) return false;
    data = grownData;
    if (ownsStatus) {
        unsigned short* grownStatus = Enlarge(status, capacity, enlarged);
        if (!grownStatus) return false;
        status = grownStatus;
    }
    capacity = enlarged;
    return true;
}

bool KPointSource::MakeRoom(long at, long added) {
    if (!Grow(count + added)) return false;
    const auto moved = static_cast<std::size_t>(count - at);
    if (moved > 0) {
        std::memmove(static_cast<void*>(data + at + added), data + at, moved * sizeof *data);
        if (status) std::memmove(status + at + added, status + at, moved * sizeof *status);
    }
    if (status) std::fill_n(status + at, added, static_cast<unsigned short>(0));
    count += added;
    return true;
}

void KPointSource::push_back(const CPoint& point) {
    const Locked locked;
    const CPoint copied = point;  // it may lie in the array that grows
    if (count == capacity && !Grow(count + 1)) return;
    data[count] = copied;
    if (status) status[count] = 0;
    ++count;
}

void KPointSource::insert(iterator position, const CPoint& point) {
    const Locked locked;
    if (position == end_data()) return push_back(point);
    const CPoint copied = point;
    const long at = position.current - position.first;
    if (MakeRoom(at, 1)) data[at] = copied;
}

void KPointSource::insert(iterator position, iterator first, iterator last) {
    const Locked locked;
    std::vector<CPoint> copied;
    for (; first.current && !(first == last); ++first) copied.push_back(*first);
    const long at = position == end_data() ? count : position.current - position.first;
    if (!copied.empty() && MakeRoom(at, static_cast<long>(copied.size())))
        std::copy(copied.begin(), copied.end(), data + at);
}

void KPointSource::SetOffset(long x, long y) { offset = CPoint(SaturateToInt32(x), SaturateToInt32(y)); }

void KPointSource::SetStatus(unsigned short* newStatus) {
    if (ownsStatus) std::free(status);
    status = newStatus;
    ownsStatus = false;
}

void KPointSource::TraceKPointSource() {
    double x = 0.0;
    double y = 0.0;
    for (iterator sample = begin_data(); !(sample == end_data()); ++sample) {
        x = sample->x / xScale;
        y = sample->y / yScale;
    }
    static_cast<void>(x);
    static_cast<void>(y);
}
