// The undo history of a series: its states before the last edits and those undone. One whole copy is kept, of
// the state last saved or restored, and between neighbours only what differs; each state carries bytes of the
// caller. What an edit, or a host that wrote to the arrays without a word, has changed is found by comparing
// with the copy.
//
// Where memory runs out the operations throw std::bad_alloc and leave history and arrays as they were.
#pragma once

#include <array>
#include <cstddef>
#include <iostream>
#include <memory>
#include <vector>

#include "sources/ShadowArray.h"

class SnapshotHistory {
  public:
    // Samples, status words and rejection codes; an array that the series does not keep is empty.
    using Arrays = std::array<ArrayBytes, 3>;

    bool CanUndo() const { return !undoStack.empty(); }
    bool CanRedo() const { return !redoStack.empty(); }
    std::size_t UndoCount() const { return undoStack.size(); }

    // Copies up to `budget` bytes ahead of the first Save(); false when there is nothing left to copy.
    bool Prepare(const Arrays& present, std::size_t budget);
    // Pushes the present state; the stream takes what the caller adds to it.
    std::iostream& Save(const Arrays& present, bool clearRedo);
    // Takes back a Save() that nothing has followed, with what it dropped; false when something has.
    bool Withdraw();
    // Makes sure that the next Undo() finds its memory.
    void ReserveUndo() { ReserveOne(redoStack); }
    // Go from the state just saved, which moves to the other stack in Undo(), to the newest below it or to
    // the newest undone. The stream reads what was added to that one.
    std::iostream& Undo(const Arrays& present) noexcept;
    std::iostream& Redo(const Arrays& present) noexcept;
    // Of the state that the last Undo() or Redo() left; null when another Save() has followed.
    std::iostream* LeftStream() const { return left_; }
    // Bytes beyond the whole copy.
    std::size_t Memory() const;

  private:
    using Step = std::array<ArrayDelta, 3>;
    struct Snapshot {
        // Lead here from the state above on its stack, for the newest of either stack from the copy.
        std::vector<std::shared_ptr<const Step>> steps;
        std::unique_ptr<std::iostream> stream;
    };
    using Stack = std::vector<Snapshot>;

    static void ReserveOne(Stack& stack);
    void Rebase(const Arrays& present);
    std::iostream& Restore(Stack& from, Snapshot& here, const Arrays& present) noexcept;

    std::array<ShadowArray, 3> shadow_;
    Stack undoStack;
    Stack redoStack;
    Stack droppedRedo_;  // by the last Save()
    bool canWithdraw_ = false;
    std::iostream* left_ = nullptr;              // on one of the stacks
    std::unique_ptr<std::iostream> spareStream;  // of the state last restored; the next Save() reuses it
};
