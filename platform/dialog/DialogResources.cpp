#include "platform/dialog/DialogResources.h"

#include <string_view>

#include "platform/window/ResourceTables.h"

namespace {

HINSTANCE g_current = nullptr;

// Of those that match, the current module's, else the one registered last.
template <class Matches>
const DialogResource* Find(Matches matches) {
    const DialogResource* found = nullptr;
    for (const auto& table : RegisteredTables<DialogResource>()) {
        if (!matches(table)) continue;
        const DialogResource& dialog = table.rows.front();
        if (!g_current || dialog.module == g_current) return &dialog;
        if (!found) found = &dialog;
    }
    return found;
}

}  // namespace

HINSTANCE AfxGetResourceHandle() { return g_current; }

void AfxSetResourceHandle(HINSTANCE module) { g_current = module; }

DialogTable::DialogTable(UINT id, const DialogResource& dialog) {
    RegisterTable(this, id, std::span(&dialog, 1));
}

DialogTable::~DialogTable() { UnregisterTable<DialogResource>(this); }

PictureTable::PictureTable(UINT id, DrawPicture draw) : m_draw(draw) {
    RegisterTable(this, id, std::span(&m_draw, 1));
}

PictureTable::~PictureTable() { UnregisterTable<DrawPicture>(this); }

const DialogResource* FindDialogResource(UINT id) {
    return Find([id](const auto& table) { return table.id == id; });
}

const DialogResource* FindDialogResource(const char* name) {
    return Find([name = std::string_view(name ? name : "")](const auto& table) {
        const char* const its = table.rows.front().name;
        return its && name == its;
    });
}

DrawPicture FindPictureResource(UINT id) {
    const auto found = FindTable<DrawPicture>(id);
    return found.empty() ? nullptr : found.front();
}
