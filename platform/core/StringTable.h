// String resources. A module registers its table when it is loaded and takes it back when it is unloaded;
// texts are looked up by number over all tables, the table registered last first, so that a host can override
// a text.
#pragma once

#include <cstddef>

struct StringResource {
    unsigned id;
    const char* text;
};

// Keeps `table` registered for its own lifetime. The array stays the caller's and must outlive this object.
class StringTable {
  public:
    template <std::size_t N>
    explicit StringTable(const StringResource (&table)[N]) : StringTable(table, N) {}
    StringTable(const StringResource* table, std::size_t count);
    ~StringTable();
    StringTable(const StringTable&) = delete;
    StringTable& operator=(const StringTable&) = delete;
};

// The text of resource `id`, owned by its table; null when no table has it.
const char* FindStringResource(unsigned id);
