#pragma once

#include <string>
#include <string_view>

// What two spellings of one registry name have in common. Names compare by Unicode's simple case folding, one
// character to one character: "Ærø" is "ÆRØ", while "Maße" and "Masse" stay two names. A name that is not
// valid UTF-8 folds to its own bytes.
std::string FoldCase(std::string_view name);
