#include "platform/undo/KUndoManager.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <new>
#include <utility>
#include <vector>

namespace kelvo {

namespace {

struct History {
    std::vector<std::unique_ptr<IAction>> actions;
    std::size_t done = 0;
};

KUndoManager* processManager = nullptr;

}  // namespace

struct KUndoManager::Impl {
    std::map<const void*, History> histories;
    std::map<int, Listener> listeners;
    int nextListener = 1;

    // Walks over a copy: a listener may add and remove listeners, itself included. Without memory for it
    // nobody is told.
    void Changed(const void* owner) const try {
        const auto present = listeners;
        for (const auto& [id, listener] : present)
            if (listener && listeners.contains(id)) listener(owner);
    } catch (const std::bad_alloc&) {
    }
    const History* Find(const void* owner) const {
        const auto found = histories.find(owner);
        return found == histories.end() ? nullptr : &found->second;
    }
    // False, and the history as it was, without memory.
    bool Append(const void* owner, std::unique_ptr<IAction> action) try {
        History& history = histories[owner];
        if (history.done == history.actions.capacity()) history.actions.reserve(2 * history.done + 8);
        history.actions.resize(history.done);
        history.actions.push_back(std::move(action));
        history.done = history.actions.size();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
    // Moves the owner's place by `steps`, held within its list; returns how far it went.
    long Step(const void* owner, long steps) {
        const auto found = histories.find(owner);
        if (found == histories.end()) return 0;
        History& history = found->second;
        const long from = static_cast<long>(history.done);
        const long room = static_cast<long>(history.actions.size()) - from;
        const long taken = std::clamp(steps, -from, room);
        if (taken == 0) return 0;
        history.done = static_cast<std::size_t>(from + taken);
        Changed(owner);
        return taken;
    }
};

KUndoManager::KUndoManager() : impl_(std::make_unique<Impl>()) {}

KUndoManager::~KUndoManager() {
    if (processManager == this) processManager = nullptr;
}

void KUndoManager::SetLastAction(const void* owner, IAction* action) const {
    if (!action) return;
    if (impl_->Append(owner, std::unique_ptr<IAction>(action))) impl_->Changed(owner);
}

long KUndoManager::Undo(const void* owner, long count) const {
    return count > 0 ? -impl_->Step(owner, -count) : 0;
}

long KUndoManager::Redo(const void* owner, long count) const {
    return count > 0 ? impl_->Step(owner, count) : 0;
}

long KUndoManager::GetCount(const void* owner) const {
    const History* history = impl_->Find(owner);
    return history ? static_cast<long>(history->actions.size()) : 0;
}

long KUndoManager::GetDoneCount(const void* owner) const {
    const History* history = impl_->Find(owner);
    return history ? static_cast<long>(history->done) : 0;
}

IAction* KUndoManager::GetAction(const void* owner, long index) const {
    if (index < 0 || index >= GetCount(owner)) return nullptr;
    return impl_->Find(owner)->actions[static_cast<std::size_t>(index)].get();
}

void KUndoManager::Clear(const void* owner) const {
    if (impl_->histories.erase(owner) > 0) impl_->Changed(owner);
}

int KUndoManager::AddListener(Listener listener) const try {
    impl_->listeners.emplace(impl_->nextListener, std::move(listener));
    return impl_->nextListener++;
} catch (const std::bad_alloc&) {
    return 0;
}

void KUndoManager::RemoveListener(int id) const { impl_->listeners.erase(id); }

KUndoManager* GetUndoManager() { return processManager; }

KUndoManager* SetUndoManager(KUndoManager* manager) { return std::exchange(processManager, manager); }

}  // namespace kelvo
