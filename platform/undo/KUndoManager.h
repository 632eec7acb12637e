// The process's history of edits: one list of actions per owner, with the place in it up to which the edits
// are in force. The manager keeps names and results for lists and panels; the data itself is restored by its
// owner.
#pragma once

#include <functional>
#include <memory>

#include "platform/undo/IAction.h"

namespace kelvo {

class KUndoManager {
  public:
    KUndoManager();
    ~KUndoManager();
    KUndoManager(const KUndoManager&) = delete;
    KUndoManager& operator=(const KUndoManager&) = delete;

    // Appends `action` to the history of `owner` and takes ownership; what had been undone is destroyed
    // first. A null action is ignored. Without memory the history stays as it is and the action is destroyed.
    void SetLastAction(const void* owner, IAction* action) const;
    // Step the owner's history by at most `count` actions. Return the steps taken.
    long Undo(const void* owner, long count) const;
    long Redo(const void* owner, long count) const;

    // All actions of the owner, oldest first: the first GetDoneCount() of them are in force, the rest undone.
    long GetCount(const void* owner) const;
    long GetDoneCount(const void* owner) const;
    // Null outside 0 ... GetCount() - 1. Valid until the history changes.
    IAction* GetAction(const void* owner, long index) const;
    // Destroys the owner's history. Call it before the owner dies.
    void Clear(const void* owner) const;

    // A listener is called with the owner after each change of its history. It may add and remove listeners
    // and step or clear histories itself.
    using Listener = std::function<void(const void* owner)>;
    // Returns the number by which RemoveListener knows it; 0 without memory.
    int AddListener(Listener listener) const;
    void RemoveListener(int id) const;

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

// The process's manager; null when the host has set none.
KUndoManager* GetUndoManager();
// Sets the process's manager (null: none), which stays the caller's, and returns the one before it.
KUndoManager* SetUndoManager(KUndoManager* manager);

}  // namespace kelvo
