// Holds words of a command line against the commands' tables.
#pragma once

#include <string>
#include <vector>

#include "app/batch/Command.h"

namespace app {

struct Parsed {
    const Command* command =
        nullptr;        // that is to be done; null: --help or --version, and it has been printed
    std::string given;  // a line for each option that shapes the result, in the order of the words
};

// Gives every option its value, in the order of the words, which do not include the program's name.
Result<Parsed> Parse(const std::vector<Command>& commands, const std::vector<std::string>& words);

}  // namespace app
