// What a table that was read lets suspect about how it was read.
#pragma once

#include "app/table/ReadOptions.h"
#include "app/table/Result.h"
#include "app/table/Table.h"

namespace app {

// Takes local times of the zone asked for to UTC, and notes what the user should know: hours that the clock
// showed twice, rows that go back in x, values that look like a mark for none. Fails for a zone that does not
// exist and for one that contradicts the file.
std::optional<Failure> FinishReading(Table& table, const ReadOptions& options);

}  // namespace app
