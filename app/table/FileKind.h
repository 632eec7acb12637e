// Files that are no text tables, told by how they begin.
#pragma once

#include <string_view>

namespace app {

// What a file of another kind is and what to do about it; nothing for what may be a table.
struct FileKind {
    const char* name = nullptr;  // "a spreadsheet"
    const char* advice = nullptr;
};
FileKind KindOfFile(std::string_view bytes);

}  // namespace app
