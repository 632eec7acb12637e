#include "sources/IPointSource.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

#include "sources/SnapshotHistory.h"

IMPLEMENT_DYNAMIC(IPointSource, CObject)

namespace {

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

// What a snapshot is made of. A series without status words or codes saves none.
std::array<ArrayBytes, 3> IPointSource::SnapshotArrays() {
    const std::size_t n = GetData() ? static_cast<std::size_t>(std::max(GetCount(), 0L)) : 0;
    const auto bytes = [n](auto* values) {
        return ArrayBytes{reinterpret_cast<char*>(values), values ? n * sizeof *values : 0};
    };
    return {bytes(GetData()), bytes(GetStatus()), bytes(GetRejection())};
}

SnapshotHistory& IPointSource::History() {
    if (!history) history = std::make_unique<SnapshotHistory>();
    return *history;
}

int IPointSource::CanUndo() const { return history && history->CanUndo(); }

int IPointSource::CanRedo() const { return history && history->CanRedo(); }

std::ostream& IPointSource::SaveForUndo(bool clearRedo) try {
    return History().Save(SnapshotArrays(), clearRedo);
} catch (const std::bad_alloc&) {
    return NoStream();
}

bool IPointSource::PrepareForUndo(std::size_t bytes) try {
    return History().Prepare(SnapshotArrays(), bytes);
} catch (const std::bad_alloc&) {
    return false;
}

bool IPointSource::WithdrawSnapshot() { return history && history->Withdraw(); }

std::ostream& IPointSource::LeftSnapshot() {
    std::iostream* const left = history ? history->LeftStream() : nullptr;
    return left ? *left : NoStream();
}

std::size_t IPointSource::GetUndoMemory() const { return history ? history->Memory() : 0; }

// Saves the present state ahead of an undo or a redo; all or nothing.
bool IPointSource::SavePresent() {
    const std::size_t before = history->UndoCount();
    if (SaveForUndo(false).good() && history->UndoCount() == before + 1) return true;
    if (history->UndoCount() > before) history->Withdraw();
    return false;
}

std::istream& IPointSource::UndoEdit() try {
    if (!CanUndo()) return NoStream();
    history->ReserveUndo();
    if (!SavePresent()) return NoStream();
    std::istream& stream = history->Undo(SnapshotArrays());
    NoteChange();
    return stream;
} catch (const std::bad_alloc&) {
    return NoStream();
}

std::istream& IPointSource::RedoEdit() {
    if (!CanRedo() || !SavePresent()) return NoStream();
    std::istream& stream = history->Redo(SnapshotArrays());
    NoteChange();
    return stream;
}

void IPointSource::ClearUndoBuffer() {
    history.reset();
    modified = 0;
}

int IPointSource::GetSeq() { return 0; }

std::list<IPointSource*> IPointSource::GetPointSources() { return sources; }

void IPointSource::Reset() { UpdateStats(); }

IPointSource::iterator IPointSource::begin_data() { return Begin(GetData(), GetCount()); }

IPointSource::iterator IPointSource::end_data() { return End(GetData(), GetCount()); }

IPointSource::iterator IPointSource::begin_draw() { return Begin(GetDrawPoints(), GetCount()); }

IPointSource::iterator IPointSource::end_draw() { return End(GetDrawPoints(), GetCount()); }
