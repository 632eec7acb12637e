#include "sources/KPointSource.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

#include "platform/core/CCriticalSection.h"
#include "sources/StoredBox.h"

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
    minX = minY = kNoMinimum;
    maxX = maxY = -kNoMinimum;
    for (const unsigned short skipped : {PS_DELETED, static_cast<unsigned short>(0)}) {
        const StoredBox box = FindStoredBox(data, status, count, skipped);
        if (!box.any) continue;
        // The real value rises or falls with the stored one throughout, so the stored extremes give the real
        // ones.
        for (const std::int32_t x : {box.minX, box.maxX}) Widen(minX, maxX, x, offset.x, GetXScale());
        for (const std::int32_t y : {box.minY, box.maxY}) Widen(minY, maxY, y, offset.y, GetYScale());
        if (minX != kNoMinimum) break;
    }
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

long KPointSource::IndexOf(const iterator& position) const {
    return position.current ? std::clamp(static_cast<long>(position.current - position.first), 0L, count)
                            : count;
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
    NoteChange();
    return true;
}

void KPointSource::push_back(const CPoint& point) {
    const Locked locked;
    const CPoint copied = point;  // it may lie in the array that grows
    if (count == capacity && !Grow(count + 1)) return;
    data[count] = copied;
    if (status) status[count] = 0;
    ++count;
    NoteChange();
}

void KPointSource::insert(iterator position, const CPoint& point) {
    const Locked locked;
    const CPoint copied = point;
    const long at = IndexOf(position);
    if (MakeRoom(at, 1)) data[at] = copied;
}

void KPointSource::insert(iterator position, iterator first, iterator last) {
    const Locked locked;
    try {
        std::vector<CPoint> copied;
        for (; first.current && !(first == last); ++first) copied.push_back(*first);
        const long at = IndexOf(position);
        if (!copied.empty() && MakeRoom(at, static_cast<long>(copied.size())))
            std::copy(copied.begin(), copied.end(), data + at);
    } catch (const std::bad_alloc&) {
    }
}

void KPointSource::SetOffset(long x, long y) {
    offset = CPoint(SaturateToInt32(x), SaturateToInt32(y));
    NoteChange();
}

void KPointSource::SetStatus(unsigned short* newStatus) {
    if (newStatus == status) return;
    if (ownsStatus) std::free(status);
    status = newStatus;
    ownsStatus = false;
    NoteChange();
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
