// Text from files, names and arguments as a terminal may show it.
#pragma once

#include <string>
#include <string_view>

namespace app {

// Control characters, which a terminal would obey, become visible: "\x1b". Line feeds and tabs stay, and so
// does all other text in UTF-8; bytes that are none are shown as they are numbered.
std::string SafeText(std::string_view text);
// The same for text in JSON, whose strings hold them as \u001b.
std::string SafeJson(std::string_view json);

}  // namespace app
