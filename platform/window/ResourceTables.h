// Resources of one kind, registered by their modules for their own lifetimes; not for programs. The one
// registered last is found first.
#pragma once

#include <algorithm>
#include <span>
#include <vector>

#include "platform/core/Types.h"

template <class Row>
struct RegisteredTable {
    const void* owner;
    UINT id;
    std::span<const Row> rows;
};

template <class Row>
std::vector<RegisteredTable<Row>>& RegisteredTables() {
    static std::vector<RegisteredTable<Row>> tables;
    return tables;
}

template <class Row>
void RegisterTable(const void* owner, UINT id, std::span<const Row> rows) {
    RegisteredTables<Row>().insert(RegisteredTables<Row>().begin(), {owner, id, rows});
}

template <class Row>
void UnregisterTable(const void* owner) {
    std::erase_if(RegisteredTables<Row>(), [owner](const auto& table) { return table.owner == owner; });
}

// Empty when there is none.
template <class Row>
std::span<const Row> FindTable(UINT id) {
    for (const auto& table : RegisteredTables<Row>())
        if (table.id == id) return table.rows;
    return {};
}

template <class Row, class Matches>
const Row* FindRow(Matches matches) {
    for (const auto& table : RegisteredTables<Row>()) {
        const auto row = std::find_if(table.rows.begin(), table.rows.end(), matches);
        if (row != table.rows.end()) return &*row;
    }
    return nullptr;
}
