#include "platform/window/CommandResources.h"

#include <cstring>

#include "platform/window/ResourceTables.h"

CommandTable::CommandTable(std::span<const CommandResource> rows) { RegisterTable(this, 0, rows); }
CommandTable::~CommandTable() { UnregisterTable<CommandResource>(this); }
MenuTable::MenuTable(UINT id, std::span<const MenuResource> rows) { RegisterTable(this, id, rows); }
MenuTable::~MenuTable() { UnregisterTable<MenuResource>(this); }
ToolBarTable::ToolBarTable(UINT id, std::span<const UINT> commands) { RegisterTable(this, id, commands); }
ToolBarTable::~ToolBarTable() { UnregisterTable<UINT>(this); }
IconTable::IconTable(std::span<const IconResource> rows) { RegisterTable(this, 0, rows); }
IconTable::~IconTable() { UnregisterTable<IconResource>(this); }

const CommandResource* FindCommandResource(UINT id) {
    return FindRow<CommandResource>([id](const CommandResource& row) { return row.id == id; });
}

std::vector<CommandResource> CommandResources() {
    std::vector<CommandResource> all;
    for (const auto& table : RegisteredTables<CommandResource>())
        all.insert(all.end(), table.rows.begin(), table.rows.end());
    return all;
}

std::span<const MenuResource> FindMenuResource(UINT id) { return FindTable<MenuResource>(id); }

std::span<const UINT> FindToolBarResource(UINT id) { return FindTable<UINT>(id); }

const char* FindIconResource(const char* name) {
    if (!name) return nullptr;
    const auto* row =
        FindRow<IconResource>([name](const IconResource& icon) { return std::strcmp(icon.name, name) == 0; });
    return row ? row->path : nullptr;
}
