#include "platform/core/NearestName.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace {

// Edits needed to turn one name into the other (Levenshtein, 1966; neighbours that changed places count as
// one edit, as in Damerau, 1964), letters of either case alike.
std::size_t Distance(const std::string& a, const std::string& b) {
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    const auto same = [&](std::size_t i, std::size_t j) { return lower(a[i]) == lower(b[j]); };
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j - 1] + (same(i - 1, j - 1) ? 0 : 1), last[j] + 1, row[j - 1] + 1});
            const bool swapped = i > 1 && j > 1 && same(i - 1, j - 2) && same(i - 2, j - 1);
            if (swapped) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
        std::swap(beforeLast, last);
        std::swap(last, row);
    }
    return last.back();
}

}  // namespace

std::string NearestName(const std::string& wanted, const std::vector<std::string>& names) {
    std::string nearest;
    std::size_t least = std::max<std::size_t>(2, wanted.size() / 3) + 1;
    for (const auto& name : names) {
        const std::size_t distance = Distance(wanted, name);
        if (distance >= least) continue;
        least = distance;
        nearest = name;
    }
    return nearest;
}
