#include "platform/core/StringTable.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace {

struct Registered {
    const StringTable* owner;
    std::span<const StringResource> table;
};

// Never destroyed: tables of modules that are unloaded late still find it.
std::vector<Registered>& Tables() {
    static auto& tables = *new std::vector<Registered>;
    return tables;
}

}  // namespace

StringTable::StringTable(const StringResource* table, std::size_t count) {
    Tables().push_back({this, {table, count}});
}

StringTable::~StringTable() {
    std::erase_if(Tables(), [this](const Registered& entry) { return entry.owner == this; });
}

const char* FindStringResource(unsigned id) {
    const auto& tables = Tables();
    for (auto entry = tables.rbegin(); entry != tables.rend(); ++entry) {
        const auto found = std::ranges::find(entry->table, id, &StringResource::id);
        if (found != entry->table.end()) return found->text;
    }
    return nullptr;
}
