#include "platform/window/CommandResources.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

template <class Row>
struct Resource {
    const void* owner;
    UINT id;
    std::span<const Row> rows;
};

template <class Row>
std::vector<Resource<Row>>& Registered() {
    static std::vector<Resource<Row>> resources;
    return resources;
}

// Newest first, so that a search meets the table registered last before the others.
template <class Row>
void Register(const void* owner, UINT id, std::span<const Row> rows) {
    Registered<Row>().insert(Registered<Row>().begin(), {owner, id, rows});
}

template <class Row>
void Unregister(const void* owner) {
    std::erase_if(Registered<Row>(), [owner](const auto& resource) { return resource.owner == owner; });
}

template <class Row>
std::span<const Row> FindTable(UINT id) {
    for (const auto& resource : Registered<Row>())
        if (resource.id == id) return resource.rows;
    return {};
}

template <class Row, class Matches>
const Row* FindRow(Matches matches) {
    for (const auto& resource : Registered<Row>()) {
        const auto row = std::find_if(resource.rows.begin(), resource.rows.end(), matches);
        if (row != resource.rows.end()) return &*row;
    }
    return nullptr;
}

}  // namespace

CommandTable::CommandTable(std::span<const CommandResource> rows) { Register(this, 0, rows); }
CommandTable::~CommandTable() { Unregister<CommandResource>(this); }
MenuTable::MenuTable(UINT id, std::span<const MenuResource> rows) { Register(this, id, rows); }
MenuTable::~MenuTable() { Unregister<MenuResource>(this); }
ToolBarTable::ToolBarTable(UINT id, std::span<const UINT> commands) { Register(this, id, commands); }
ToolBarTable::~ToolBarTable() { Unregister<UINT>(this); }
IconTable::IconTable(std::span<const IconResource> rows) { Register(this, 0, rows); }
IconTable::~IconTable() { Unregister<IconResource>(this); }

const CommandResource* FindCommandResource(UINT id) {
    return FindRow<CommandResource>([id](const CommandResource& row) { return row.id == id; });
}

std::span<const MenuResource> FindMenuResource(UINT id) { return FindTable<MenuResource>(id); }

std::span<const UINT> FindToolBarResource(UINT id) { return FindTable<UINT>(id); }

const char* FindIconResource(const char* name) {
    if (!name) return nullptr;
    const auto* row =
        FindRow<IconResource>([name](const IconResource& icon) { return std::strcmp(icon.name, name) == 0; });
    return row ? row->path : nullptr;
}
