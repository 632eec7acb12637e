// Asks how a file is to be read, beginning with the reader's guesses.
#pragma once

#include <optional>

#include "app/workbench/SeriesFile.h"

namespace app {

// The options to read by; none when the user does not want the file. A file that cannot be opened at all is
// reported.
std::optional<ReadOptions> AskHowToRead(const ReadOptions& start, CWnd* parent);

}  // namespace app
