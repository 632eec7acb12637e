#include "app/table/CellNumber.h"

#include <fast_float/fast_float.h>
#include <strings.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace app {

namespace {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool SameWord(std::string_view a, std::string_view b) {
    return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

}  // namespace

bool ReadNumber(std::string_view text, char decimalSign, double& value) {
    if (text.empty()) return false;
    const char* first = text.data();
    const char* const last = first + text.size();
    if (*first == '+') ++first;
    // Words such as "nan" and "infinity" are not numbers here, and neither is "+-1".
    const char* digit = first + (first != last && *first == '-' && first == text.data() ? 1 : 0);
    if (digit == last || !(IsDigit(*digit) || *digit == decimalSign)) return false;
    const fast_float::parse_options options(fast_float::chars_format::general, decimalSign);
    const auto read = fast_float::from_chars_advanced(first, last, value, options);
    return read.ec == std::errc() && read.ptr == last && std::isfinite(value);
}

bool ReadGrouped(std::string_view text, char decimalSign, char grouping, double& value) {
    const std::size_t sign = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    const std::size_t end = std::min(text.find(decimalSign), text.size());
    const std::size_t first = text.find(grouping);
    if (first == std::string_view::npos || first <= sign || first > sign + 3 || text[sign] == '0')
        return false;
    std::string plain(text.substr(0, first));
    for (std::size_t at = first; at < end; at += 4) {
        if (text[at] != grouping || end - at < 4) return false;
        const auto group = text.substr(at + 1, 3);
        if (!std::all_of(group.begin(), group.end(), IsDigit)) return false;
        plain += group;
    }
    plain += text.substr(end);
    return ReadNumber(plain, decimalSign, value);
}

int DecimalsOf(std::string_view text, char decimalSign) {
    static constexpr int kMost = 400;  // more than any double has
    const auto within = [](int decimals) { return std::clamp(decimals, 0, kMost); };
    int exponent = 0;
    int size = static_cast<int>(std::min<std::size_t>(text.size(), kMost));
    for (int i = size - 1; i >= 0; --i) {
        const char c = text[static_cast<std::size_t>(i)];
        if (c == decimalSign) return within(size - 1 - i - exponent);
        if (c != 'e' && c != 'E') continue;
        const int signs = i + 1 < size && text[static_cast<std::size_t>(i) + 1] == '+' ? 1 : 0;
        std::from_chars(text.data() + i + 1 + signs, text.data() + size, exponent);
        exponent = std::clamp(exponent, -kMost, kMost);
        size = i;
    }
    return within(-exponent);
}

std::string NumberText(double value, int decimals, char decimalSign) {
    char digits[400];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed,
                                   std::clamp(decimals, 0, 20));
    std::string text(digits, end.ptr);
    if (text.find_first_not_of("-0.") == std::string::npos && text.front() == '-') text.erase(0, 1);
    if (decimalSign != '.') std::replace(text.begin(), text.end(), '.', decimalSign);
    return text;
}

std::string ShortNumber(double value) {
    char digits[64];
    const auto end = std::to_chars(digits, digits + sizeof digits, value);
    return {digits, end.ptr};
}

std::string Grouped(std::int64_t count) {
    std::string digits = std::to_string(count);
    for (auto at = static_cast<std::ptrdiff_t>(digits.size()) - 3; at > (count < 0 ? 1 : 0); at -= 3)
        digits.insert(static_cast<std::size_t>(at), 1, ',');
    return digits;
}

std::string Counted(std::int64_t count, const char* singular, const char* plural) {
    if (count == 1) return "1 " + std::string(singular);
    return Grouped(count) + " " + (plural ? std::string(plural) : std::string(singular) + "s");
}

MissingValues::MissingValues(const std::vector<std::string>& names, char decimalSign)
    : names_{"", "nan", "na", "n/a", "null", "none", "-", "#n/a", "missing"} {
    for (const auto& name : names) {
        names_.push_back(name);
        double number = 0;
        if (ReadNumber(name, decimalSign, number) || ReadNumber(name, '.', number))
            numbers_.push_back(number);
    }
}

bool MissingValues::IsMissing(std::string_view text) const {
    return std::any_of(names_.begin(), names_.end(), [&](const auto& name) { return SameWord(name, text); });
}

bool MissingValues::IsMissing(double value) const {
    return std::find(numbers_.begin(), numbers_.end(), value) != numbers_.end();
}

}  // namespace app
