#include "app/batch/Command.h"

#include <algorithm>
#include <charconv>
#include <sstream>

#include "tavin/tavin.h"

namespace app {

std::vector<std::string> BoundOption::Names() const {
    std::vector<std::string> names;
    std::istringstream all(text.names);
    for (std::string name; std::getline(all, name, ',');) names.push_back(name);
    return names;
}

std::string BoundOption::LongestName() const {
    const auto names = Names();
    return *std::max_element(names.begin(), names.end(),
                             [](const auto& a, const auto& b) { return a.size() < b.size(); });
}

Failure UnknownWord(const std::string& option, const std::string& value, const std::string& words) {
    std::istringstream all(words);
    const std::vector<std::string> known{std::istream_iterator<std::string>(all), {}};
    std::string list;
    for (std::size_t i = 0; i < known.size(); ++i)
        list += (i == 0 ? "" : i + 1 < known.size() ? ", " : " or ") + known[i];
    const std::string nearest = NearestName(value, known);
    return UsageError(option + " " + value + ": expected " + list +
                      (nearest.empty() ? "" : "; did you mean " + nearest + "?"));
}

Result<int> ReadWholeNumber(const OptionText& option, const std::string& value) {
    int number = 0;
    const char* const end = value.data() + value.size();
    const auto read = std::from_chars(value.data(), end, number);
    if (read.ec == std::errc() && read.ptr == end && number >= 0) return number;
    return UsageError(BoundOption{option, {}}.LongestName() + " " + value +
                      ": expected a whole number from 0 on");
}

}  // namespace app
