#include "app/workbench/SeriesKeys.h"

#include <algorithm>
#include <set>

#include "tavin/tavin.h"

namespace app {

std::vector<std::string> KeysApart(const std::vector<std::string>& names) {
    std::set<std::string> taken{FoldCase("Default"), ""};
    std::vector<std::string> keys;
    for (std::string name : names) {
        std::replace(name.begin(), name.end(), '\\', '/');
        std::string key = name;
        for (int n = 2; !taken.insert(FoldCase(key)).second; ++n) key = name + " (" + std::to_string(n) + ")";
        keys.push_back(std::move(key));
    }
    return keys;
}

}  // namespace app
