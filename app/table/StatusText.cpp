#include "app/table/StatusText.h"

#include <algorithm>

#include "app/table/QartodFlag.h"
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

StatusFields FindStatusFields(const Layout& layout, const Choice& choice, const Column& column) {
    StatusFields fields;
    if (!layout.hasHeader) return fields;
    for (const auto& other : layout.columns) {
        const bool isChosen = std::any_of(choice.columns.begin(), choice.columns.end(),
                                          [&](const Column& one) { return one.field == other.field; });
        if (isChosen || IsPartOf(other, choice.x)) continue;
        if (other.kind != ColumnKind::Number && other.name == StatusColumnName(column))
            fields.names = other.field;
        if (other.kind != ColumnKind::Text && other.name == QartodColumnName(column))
            fields.qartod = other.field;
    }
    return fields;
}

}  // namespace app
