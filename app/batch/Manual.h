// The texts that the program prints of itself, made from the commands' tables.
#pragma once

#include <string>
#include <vector>

#include "app/batch/Command.h"

namespace app {

// The manual page, in the macros of man.
std::string ManualPage(const std::vector<Command>& commands);

// A script that completes the command line in the shell.
std::string BashCompletion(const std::vector<Command>& commands);
std::string ZshCompletion(const std::vector<Command>& commands);
std::string FishCompletion(const std::vector<Command>& commands);

// Writes one of them to standard output: manual, bash, zsh or fish.
Result<int> PrintText(const std::string& what, const std::vector<Command>& commands);

}  // namespace app
