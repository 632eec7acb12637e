#include "app/table/StatusText.h"

#include <algorithm>

#include "tavin/tavin.h"

namespace app {

std::string StatusText(unsigned short status) {
    std::string text;
    for (const auto& flag : kPointFlagNames)
        if (status & flag.flag) text.append(text.empty() ? "" : "+").append(flag.name);
    return text;
}

std::optional<unsigned short> StatusFromText(std::string_view text) {
    for (const char* const none : {"", "-", "missing", "unreadable"})
        if (text == none) return static_cast<unsigned short>(0);
    return FlagsFromText(text, '+');
}

std::optional<unsigned short> FlagsFromText(std::string_view text, char separator) {
    unsigned flags = 0;
    while (true) {
        const auto end = std::min(text.find(separator), text.size());
        const unsigned short flag = PointFlagNamed(text.substr(0, end));
        if (flag == 0) return std::nullopt;
        flags |= flag;
        if (end == text.size()) return static_cast<unsigned short>(flags);
        text.remove_prefix(end + 1);
    }
}

std::string StatusColumnName(const Column& column) { return column.name + "_status"; }

int FindStatusField(const Layout& layout, const Column& column) {
    if (!layout.hasHeader) return -1;
    for (const auto& other : layout.columns) {
        const bool holdsWords = other.kind == ColumnKind::Text || other.kind == ColumnKind::Empty;
        if (holdsWords && other.name == StatusColumnName(column)) return other.field;
    }
    return -1;
}

}  // namespace app
