// Tables that have no row yet: headings or remarks alone, as a logger leaves them before its first reading.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/table/LayoutTrial.h"
#include "app/table/Result.h"

namespace app {

// What to say of a text in which no table was found, where it is one without rows; nothing for other texts.
std::optional<Failure> EmptyTable(std::string_view text, const std::string& name, Start start,
                                  const ReadOptions& options);

}  // namespace app
