// The one way from a file to its table: the text, the guess of its layout, the choice of columns, the rows.
// OpenTable() goes all the way; a dialog that asks on the way takes the steps one by one.
#pragma once

#include <string>

#include "app/table/Advance.h"
#include "app/table/Bytes.h"
#include "app/table/Layout.h"
#include "app/table/ReadOptions.h"
#include "app/table/Table.h"
#include "app/table/TableReader.h"

namespace app {

struct InputText {
    std::string name;  // of the file, for messages
    Bytes bytes;
};
// Reads the file. With `most`, no more than whole lines of about so many bytes are kept.
Result<InputText> LoadText(const std::string& path, std::size_t most = std::string::npos);

struct ReadingPlan {
    Layout layout;
    Choice choice;
};
Result<ReadingPlan> PlanReading(const InputText& text, const ReadOptions& options);

Result<Table> OpenTable(const ReadOptions& options, const Advance& advance = {});

}  // namespace app
