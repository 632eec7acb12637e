// A data series: samples of two signed 32-bit integers in stored units, a parallel array of 16-bit status
// words and an optional one of 32-bit rejection codes. On each axis the real value is (stored + offset) /
// scale.
//
// Views, data sets and commands refer to a series only through this class and never own it: whoever creates a
// series takes it out of every view and clears its history with the undo manager before destroying it.
//
// The series keeps its own undo history, snapshots of its arrays that cost what differs between them:
//   SaveForUndo(true) before each edit; UndoEdit() and RedoEdit() while CanUndo() and CanRedo().
// Whoever changes the number of samples calls ClearUndoBuffer(). A snapshot of another length restores as
// many samples as both have and never touches memory beyond the present arrays.
//
// Whoever draws a series may keep what it computed from the samples for as long as GetChangeCount() stays the
// same. Appends, inserts, edits, undo and redo move it. Whoever writes through GetData(), GetDrawPoints() or
// GetStatus() calls NoteChange() before anybody draws the series again, and tells the views as ever.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <list>
#include <memory>

#include "platform/core/CObject.h"
#include "platform/core/CString.h"
#include "platform/core/Geometry.h"
#include "sources/PointStatus.h"

class SnapshotHistory;
struct ArrayBytes;

class IPointSource : public CObject {
    DECLARE_DYNAMIC(IPointSource)

  public:
    // Walks the samples. The index of an iterator is current - first.
    struct iterator {
        CPoint* current = nullptr;  // null at the end
        CPoint* first = nullptr;
        CPoint* last = nullptr;

        CPoint& operator*() const { return *current; }
        CPoint* operator->() const { return current; }
        iterator& operator++() {
            current = current == last ? nullptr : current + 1;
            return *this;
        }
        iterator operator++(int) {
            const iterator before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(const iterator& a, const iterator& b) {
            return a.current == b.current && a.last == b.last;
        }
    };

    IPointSource();
    // Unit names of the axes, for read-outs and the texts of edits.
    IPointSource(CString unitX, CString unitY);
    ~IPointSource() override;
    IPointSource(const IPointSource&) = delete;
    IPointSource& operator=(const IPointSource&) = delete;

    // Bracket every change of the arrays and every read that must see them consistent. Return non-zero.
    virtual int Lock() = 0;
    virtual int UnLock() = 0;
    // The samples, in stored units; valid until samples are added.
    virtual CPoint* GetData() = 0;
    // Stores the arrays through the pointers that are not null; returns the number of samples.
    virtual long GetData(CPoint** points, unsigned short** status);
    // The samples as the views draw them.
    virtual CPoint* GetDrawPoints();
    // One status word per sample (PointStatus.h), or null.
    virtual unsigned short* GetStatus() = 0;
    // One rejection code per sample, or null.
    virtual int* GetRejection();
    virtual long GetCount() = 0;
    virtual int GetXBase();
    // Stored counts per real unit.
    virtual double GetXScale() = 0;
    virtual double GetYScale() = 0;
    virtual CPoint GetOffset() = 0;
    // The extent in real units as of the last UpdateStats().
    virtual double GetMaxX() = 0;
    virtual double GetMinY() = 0;
    virtual double GetMaxY() = 0;
    virtual double GetMinX() = 0;
    // The display name.
    virtual CString GetName() = 0;
    // The name under which display settings are stored.
    virtual CString GetKey();
    // Renews the extent; false when the series has none.
    virtual bool UpdateStats();
    // Returns the previous flag. Setting it counts as a change of the samples.
    virtual int SetModified(int modified);
    virtual int GetClosestIndex(long x, bool skipDeleted);
    // The sample whose entry in `xs` (GetCount() ascending values) is nearest to x, the upper one of two as
    // near, and of a series of two always the upper one; deleted samples give way to their nearest neighbour
    // when `skipDeleted`. A negative x gives 0; no `xs`, no samples or nothing left gives -1.
    virtual int GetClosestIndex(long x, long* xs, bool skipDeleted);
    // Saves the arrays on the undo stack and returns the stream behind them, for the caller to append its own
    // state. Without memory the stream is in its error state and the history is as before.
    virtual std::ostream& SaveForUndo(bool clearRedo);
    // Restore the state before the last edit, or the one last undone. The stream returned stands behind the
    // snapshot. It is in its error state when nothing was restored: there was nothing, or no memory to save
    // the present state.
    virtual std::istream& UndoEdit();
    virtual std::istream& RedoEdit();
    // Forgets the history and the modified flag.
    virtual void ClearUndoBuffer();
    virtual int GetSeq();
    // The series that this one is made of; edits of the whole series are recorded for each of them.
    virtual std::list<IPointSource*> GetPointSources();
    virtual void Reset();

    CString GetUnitX() const { return unitX; }
    CString GetUnitY() const { return unitY; }
    void SetUnitX(CString unit) { unitX = unit; }
    void SetUnitY(CString unit) { unitY = unit; }
    int IsModified() const { return modified; }
    int CanUndo() const;
    int CanRedo() const;
    // Copies up to `bytes` of the arrays ahead of the first SaveForUndo(), so that this one takes no longer
    // than those that follow; for the time when nobody waits. False when there is nothing left to copy.
    bool PrepareForUndo(std::size_t bytes);
    // Takes back a SaveForUndo() whose edit changed nothing, with the redo list that it dropped. False when
    // another snapshot, an undo or a redo has followed.
    bool WithdrawSnapshot();
    // The stream of the state that the last UndoEdit() or RedoEdit() left, for the caller to append its own
    // state, as it would behind SaveForUndo(). In its error state when nothing has been left, or another
    // snapshot has followed.
    std::ostream& LeftSnapshot();
    // Bytes that the history holds beyond one copy of the arrays.
    std::size_t GetUndoMemory() const;
    // Differs after every change of samples, status words, offset or their number from what it was before,
    // and from that of every other series.
    std::uint64_t GetChangeCount() const { return changeCount.load(std::memory_order_relaxed); }
    // Says that they were changed from outside. Call it once for any number of samples, holding Lock() where
    // another thread may append.
    void NoteChange() { changeCount.store(GetChangeCount() + 1, std::memory_order_relaxed); }
    iterator begin_data();
    iterator end_data();
    iterator begin_draw();
    iterator end_draw();
    bool empty() { return GetCount() < 1; }

  protected:
    int modified = 0;
    CString unitX;
    CString unitY;
    std::unique_ptr<SnapshotHistory> history;  // null before the first snapshot; no limit
    std::list<IPointSource*> sources;          // not owned

  private:
    static std::uint64_t FirstChangeCount();
    std::array<ArrayBytes, 3> SnapshotArrays();
    SnapshotHistory& History();
    bool SavePresent();

    std::atomic<std::uint64_t> changeCount{FirstChangeCount()};
};
