#include "sources/SnapshotHistory.h"

#include <algorithm>
#include <sstream>
#include <utility>

void SnapshotHistory::ReserveOne(Stack& stack) {
    if (stack.size() == stack.capacity()) stack.reserve(2 * stack.size() + 8);
}

bool SnapshotHistory::Prepare(const Arrays& present, std::size_t budget) {
    if (CanUndo() || CanRedo()) return false;
    for (std::size_t k = 0; k < present.size(); ++k) shadow_[k].Prepare(present[k], budget);
    return budget == 0;
}

// The copy becomes the present state, and the newest snapshots are led back from it.
void SnapshotHistory::Rebase(const Arrays& present) {
    if (!CanUndo() && !CanRedo()) {
        for (std::size_t k = 0; k < present.size(); ++k) shadow_[k].Assign(present[k]);
        return;
    }
    auto step = std::make_shared<Step>();
    for (std::size_t k = 0; k < present.size(); ++k) (*step)[k] = shadow_[k].Compare(present[k]);
    if (std::all_of(step->begin(), step->end(), [](const ArrayDelta& delta) { return delta.IsEmpty(); }))
        return;
    const std::array<Stack*, 2> stacks{&undoStack, &redoStack};
    for (Stack* stack : stacks)
        if (!stack->empty()) stack->back().steps.reserve(stack->back().steps.size() + 1);
    for (std::size_t k = 0; k < present.size(); ++k) shadow_[k].Follow(present[k], (*step)[k]);
    for (Stack* stack : stacks)
        if (!stack->empty()) stack->back().steps.insert(stack->back().steps.begin(), step);
}

std::iostream& SnapshotHistory::Save(const Arrays& present, bool clearRedo) {
    if (!spareStream) spareStream = std::make_unique<std::stringstream>();
    ReserveOne(undoStack);
    Rebase(present);
    undoStack.push_back({{}, std::move(spareStream)});
    droppedRedo_.clear();
    if (clearRedo) droppedRedo_.swap(redoStack);
    canWithdraw_ = true;
    left_ = nullptr;
    auto& stream = static_cast<std::stringstream&>(*undoStack.back().stream);
    stream.clear();
    stream.str({});
    return stream;
}

bool SnapshotHistory::Withdraw() {
    if (!std::exchange(canWithdraw_, false)) return false;
    undoStack.pop_back();
    if (redoStack.empty()) redoStack.swap(droppedRedo_);
    return true;
}

std::iostream& SnapshotHistory::Restore(Stack& from, Snapshot& here, const Arrays& present) noexcept {
    Snapshot target = std::move(from.back());
    from.pop_back();
    for (const auto& step : target.steps)
        for (std::size_t k = 0; k < present.size(); ++k) shadow_[k].Toggle((*step)[k]);
    for (const auto& step : target.steps)
        for (std::size_t k = 0; k < present.size(); ++k) shadow_[k].CopyTo(present[k], (*step)[k]);
    std::reverse(target.steps.begin(), target.steps.end());
    here.steps = std::move(target.steps);
    left_ = here.stream.get();
    droppedRedo_.clear();
    canWithdraw_ = false;
    spareStream = std::move(target.stream);
    spareStream->clear();
    spareStream->seekg(0);
    return *spareStream;
}

std::iostream& SnapshotHistory::Undo(const Arrays& present) noexcept {
    redoStack.push_back(std::move(undoStack.back()));
    undoStack.pop_back();
    return Restore(undoStack, redoStack.back(), present);
}

std::iostream& SnapshotHistory::Redo(const Arrays& present) noexcept {
    return Restore(redoStack, undoStack.back(), present);
}

std::size_t SnapshotHistory::Memory() const {
    std::size_t sum = 0;
    for (const Stack* stack : {&undoStack, &redoStack, &droppedRedo_}) {
        for (const Snapshot& snapshot : *stack) {
            sum += sizeof snapshot + sizeof(std::stringstream);
            for (const auto& step : snapshot.steps)
                for (const ArrayDelta& delta : *step) sum += sizeof delta + delta.Memory();
        }
    }
    return sum;
}
