#include "platform/dialog/DialogResources.h"

#include "platform/window/ResourceTables.h"

DialogTable::DialogTable(UINT id, const DialogResource& dialog) {
    RegisterTable(this, id, std::span(&dialog, 1));
}

DialogTable::~DialogTable() { UnregisterTable<DialogResource>(this); }

const DialogResource* FindDialogResource(UINT id) {
    const std::span<const DialogResource> found = FindTable<DialogResource>(id);
    return found.empty() ? nullptr : &found.front();
}
