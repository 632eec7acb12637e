// The one way from a file to its table: the text, the guess of its layout, the choice of columns, the rows.
// OpenTable() goes all the way; a dialog that asks on the way takes the steps one by one.
#pragma once

#include <string>
#include <vector>

#include "app/table/Advance.h"
#include "app/table/Bytes.h"
#include "app/table/Layout.h"
#include "app/table/ReadOptions.h"
#include "app/table/Table.h"
#include "app/table/TableReader.h"

namespace app {

struct InputText {
    std::string name;  // of the file, for messages
    Bytes bytes;       // unpacked, and as UTF-8 where the file is in UTF-16 or UTF-32
    TextEncoding encoding = TextEncoding();
    InputDigest input = {};  // of the file, where its bytes are not those above
    std::vector<ReadNote> notes = {};
};
// Reads the file of the options, unpacks and converts it. A file of another kind is refused by its name. With
// `most`, no more than whole lines of about so many bytes are kept.
Result<InputText> LoadText(const ReadOptions& options, std::size_t most = std::string::npos);

struct ReadingPlan {
    Layout layout;
    Choice choice;
};
Result<ReadingPlan> PlanReading(const InputText& text, const ReadOptions& options);

Result<Table> OpenTable(const ReadOptions& options, const Advance& advance = {});

}  // namespace app
