#include "sources/IPointSource.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <utility>

#include "sources/SnapshotStream.h"

IMPLEMENT_DYNAMIC(IPointSource, CObject)

namespace {

constexpr std::size_t kStreamReserve = 1000;
constexpr std::size_t kBytesPerSample = sizeof(CPoint) + sizeof(unsigned short) + sizeof(int);

IPointSource::iterator Begin(CPoint* points, long count) {
    return count < 1 ? IPointSource::iterator{nullptr, points, points}
                     : IPointSource::iterator{points, points, points + (count - 1)};
}

IPointSource::iterator End(CPoint* points, long count) {
    return {nullptr, points, count < 1 ? points : points + (count - 1)};
}

// |a - b| without overflow.
unsigned long Distance(long a, long b) {
    return a > b ? static_cast<unsigned long>(a) - static_cast<unsigned long>(b)
                 : static_cast<unsigned long>(b) - static_cast<unsigned long>(a);
}

template <class T>
void Write(std::ostream& stream, const T* values, std::size_t count) {
    stream.write(reinterpret_cast<const char*>(values), static_cast<std::streamsize>(count * sizeof(T)));
}

// Reads `kept` of the `count` values stored and steps over the rest.
template <class T>
void Read(std::istream& stream, T* values, std::size_t kept, std::size_t count) {
    if (!values) kept = 0;
    if (kept > 0)
        stream.read(reinterpret_cast<char*>(values), static_cast<std::streamsize>(kept * sizeof(T)));
    if (count > kept)
        stream.seekg(static_cast<std::streamoff>((count - kept) * sizeof(T)), std::ios_base::cur);
}

// What there is to return when there is no stream: in its error state for good, with nothing to read.
std::iostream& NoStream() {
    static std::iostream none(nullptr);
    return none;
}

}  // namespace

IPointSource::IPointSource() = default;

IPointSource::IPointSource(CString unitNameX, CString unitNameY)
    : unitX(std::move(unitNameX)), unitY(std::move(unitNameY)) {}

// Each series counts in a range of its own.
std::uint64_t IPointSource::FirstChangeCount() {
    static std::atomic<std::uint64_t> next;
    return next.fetch_add(std::uint64_t{1} << 40);
}

IPointSource::~IPointSource() { IPointSource::ClearUndoBuffer(); }

long IPointSource::GetData(CPoint** points, unsigned short** status) {
    if (points) *points = GetData();
    if (status) *status = GetStatus();
    return GetCount();
}

CPoint* IPointSource::GetDrawPoints() { return GetData(); }

int* IPointSource::GetRejection() { return nullptr; }

int IPointSource::GetXBase() { return 1; }

CString IPointSource::GetKey() { return GetName(); }

bool IPointSource::UpdateStats() { return true; }

int IPointSource::SetModified(int newModified) {
    if (newModified) NoteChange();
    return std::exchange(modified, newModified);
}

int IPointSource::GetClosestIndex(long, bool) { return -1; }

int IPointSource::GetClosestIndex(long x, long* xs, bool skipDeleted) {
    if (!xs) return -1;
    if (x < 0) return 0;
    const long n = GetCount();
    if (n < 1) return -1;

    long lo = 0;
    long hi = n - 1;
    long mid = n / 2;
    while (mid != hi && mid != lo) {
        if (x < xs[mid])
            hi = mid;
        else if (x > xs[mid])
            lo = mid;
        else
            lo = hi = mid;
        mid = (lo + hi) / 2;
    }
    const long nearest = Distance(x, xs[mid]) < Distance(x, xs[hi]) ? mid : hi;
    const unsigned short* status = GetStatus();
    if (!skipDeleted || !status || !(status[nearest] & PS_DELETED)) return static_cast<int>(nearest);

    long below = nearest;
    while (below >= 0 && (status[below] & PS_DELETED)) --below;
    long above = nearest;
    while (above < n && (status[above] & PS_DELETED)) ++above;
    if (above == n) return static_cast<int>(below);
    if (below < 0) return static_cast<int>(above);
    return static_cast<int>(Distance(x, xs[below]) < Distance(x, xs[above]) ? below : above);
}

// The snapshot: the number of samples in 4 bytes, then the samples, status words and, where the series keeps
// them, rejection codes. A series without status words saves words of 0.
bool IPointSource::WriteSnapshot(SnapshotStream& stream) {
    const CPoint* points = GetData();
    const unsigned short* status = GetStatus();
    const int* rejection = GetRejection();
    const std::size_t n = points && GetCount() > 0 ? static_cast<std::size_t>(GetCount()) : 0;
    stream.Rewrite(kStreamReserve + n * kBytesPerSample);
    const auto count = static_cast<std::int32_t>(n);
    Write(stream, &count, 1);
    if (n > 0) {
        Write(stream, points, n);
        if (status) {
            Write(stream, status, n);
        } else {
            constexpr std::size_t kBlock = 4096;
            static constexpr unsigned short kNone[kBlock] = {};
            for (std::size_t i = 0; i < n; i += kBlock) Write(stream, kNone, std::min(kBlock, n - i));
        }
        if (rejection) Write(stream, rejection, n);
    }
    stream.EndSnapshot();
    return stream.good();
}

void IPointSource::ReadSnapshot(SnapshotStream& stream) {
    stream.Reread();
    std::int32_t stored = 0;
    stream.read(reinterpret_cast<char*>(&stored), sizeof stored);
    const auto n = static_cast<std::size_t>(std::max(stored, 0));
    const std::size_t kept = std::min(n, static_cast<std::size_t>(std::max(GetCount(), 0L)));
    const std::size_t withoutCodes = sizeof stored + n * (sizeof(CPoint) + sizeof(unsigned short));
    Read(stream, GetData(), kept, n);
    Read(stream, GetStatus(), kept, n);
    if (stream.SnapshotSize() > withoutCodes) Read(stream, GetRejection(), kept, n);
    stream.SkipSnapshot();
    NoteChange();
}

std::ostream& IPointSource::SaveForUndo(bool clearRedo) try {
    if (!spareStream) spareStream = std::make_unique<SnapshotStream>(0);
    SnapshotStream& stream = *spareStream;
    if (!WriteSnapshot(stream)) return stream;
    undoStack.push_back(std::move(spareStream));
    if (clearRedo) redoStack.clear();
    return stream;
} catch (const std::bad_alloc&) {
    return NoStream();
}

// Restores the newest snapshot of `from`, which becomes the spare stream.
std::istream& IPointSource::Restore(Snapshots& from) {
    spareStream = std::move(from.back());
    from.pop_back();
    ReadSnapshot(*spareStream);
    return *spareStream;
}

std::istream& IPointSource::UndoEdit() try {
    if (!CanUndo()) return NoStream();
    redoStack.emplace_back();  // the place first: from the save on nothing can fail
    if (!SaveForUndo(false).good()) {
        redoStack.pop_back();
        return NoStream();
    }
    redoStack.back() = std::move(undoStack.back());
    undoStack.pop_back();
    return Restore(undoStack);
} catch (const std::bad_alloc&) {
    return NoStream();
}

std::istream& IPointSource::RedoEdit() {
    const bool saved = CanRedo() && SaveForUndo(false).good();
    return saved ? Restore(redoStack) : NoStream();
}

void IPointSource::ClearUndoBuffer() {
    redoStack.clear();
    undoStack.clear();
    spareStream.reset();
    modified = 0;
}

int IPointSource::GetSeq() { return 0; }

std::list<IPointSource*> IPointSource::GetPointSources() { return sources; }

void IPointSource::Reset() { UpdateStats(); }

IPointSource::iterator IPointSource::begin_data() { return Begin(GetData(), GetCount()); }

IPointSource::iterator IPointSource::end_data() { return End(GetData(), GetCount()); }

IPointSource::iterator IPointSource::begin_draw() { return Begin(GetDrawPoints(), GetCount()); }

IPointSource::iterator IPointSource::end_draw() { return End(GetDrawPoints(), GetCount()); }
