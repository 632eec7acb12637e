// Files that are no text tables, told by how they begin; and compressed ones.
#pragma once

#include <string>
#include <string_view>

#include "app/table/Result.h"

namespace app {

bool IsGzip(std::string_view bytes);
// All members of a gzip file. A file that breaks off or is damaged is refused.
Result<std::string> Unpacked(std::string_view bytes, const std::string& name);

// What a file of another kind is and what to do about it; nothing for what may be a table.
struct FileKind {
    const char* name = nullptr;  // "a spreadsheet"
    const char* advice = nullptr;
};
FileKind KindOfFile(std::string_view bytes);

}  // namespace app
