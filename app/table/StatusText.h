// Status words of points as the cells of a status column hold them: the names of the flags joined by "+".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/table/ColumnChoice.h"
#include "app/table/Layout.h"

namespace app {

// The names of the flags of a status word, "" for none.
std::string StatusText(unsigned short status);
// The word that a cell holds; none for text that is not from a status column. Cells without a point, which
// say "missing" or "unreadable", and empty ones have the word 0.
std::optional<unsigned short> StatusFromText(std::string_view text);
// The flags whose names stand in the text, separated by that; none where one is no name.
std::optional<unsigned short> FlagsFromText(std::string_view text, char separator);
// What the status column of a value column is called.
std::string StatusColumnName(const Column& column);

// The fields of the status columns that an earlier cleaning left; -1: there is none.
struct StatusFields {
    int names = -1;
    int qartod = -1;
    // The one that says more.
    int Telling() const { return names >= 0 ? names : qartod; }
};
// Those of one of the chosen value columns; a column that is chosen itself is none.
StatusFields FindStatusFields(const Layout& layout, const Choice& choice, const Column& column);

}  // namespace app
