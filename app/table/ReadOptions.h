// What the user says about a file and how it is to be read. Everything but the path may be left to the
// reader's guesses.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace app {

struct ReadOptions {
    std::string path = {};  // "-" is standard input
    std::optional<char> delimiter = {};
    std::optional<char> decimalSign = {};
    std::string encoding = {};                    // a name such as ISO-8859-1
    int skip = 0;                                 // lines at the start that are no part of the table
    std::optional<std::int64_t> headerLine = {};  // the line that names the columns, from 1; 0: there is none
    std::string timeFormat = {};                  // a name of kTimeFormNames or a form with % fields
    std::string zone = {};                        // of times that name none; empty: they are taken as UTC
    std::vector<std::string> missing = {};        // further names for no value
    // Columns by name or by number from 1; x may be several that compose a time, "A+B".
    std::string x = {};
    std::vector<std::string> y = {};  // none: every column of numbers
    // The columns will be edited: with several of them and none named in `y`, the user is asked to choose.
    bool chooseY = false;
};

}  // namespace app
