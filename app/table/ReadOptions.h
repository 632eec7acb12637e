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
    std::optional<bool> header = {};        // whether the first row names the columns
    std::string timeFormat = {};            // iso, epoch, epoch-ms, number or a form with % fields
    std::vector<std::string> missing = {};  // further names for no value
    std::string x = {};                     // columns by name or by number from 1
    std::vector<std::string> y = {};        // none: every column of numbers
    // The columns will be edited: with several of them and none named in `y`, the user is asked to choose.
    bool chooseY = false;
};

}  // namespace app
