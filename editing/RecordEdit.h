// Handing edits over to the undo manager. Without a manager no command remains; without memory for the record
// the edit stands and only its record is missing.
#pragma once

#include <memory>
#include <new>
#include <utility>

#include "platform/undo/KUndoManager.h"
#include "sources/IPointSource.h"

inline void HandOver(IPointSource* owner, std::unique_ptr<kelvo::IAction> action) {
    if (const kelvo::KUndoManager* manager = kelvo::GetUndoManager())
        manager->SetLastAction(owner, action.release());
}

// RecordEdit<KDeleteCmd>(source): makes the command for the series and hands it over.
template <class Command, class... Arguments>
void RecordEdit(IPointSource* owner, Arguments... arguments) {
    if (!kelvo::GetUndoManager()) return;
    try {
        HandOver(owner, std::make_unique<Command>(owner, arguments...));
    } catch (const std::bad_alloc&) {
    }
}
