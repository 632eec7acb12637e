#include "app/table/CalendarNames.h"

#include <unicode/udat.h>
#include <unicode/unistr.h>

#include <iterator>
#include <string>
#include <unordered_map>

namespace app {

namespace {

constexpr const char* kLanguages[] = {"en", "de", "de_AT", "fr", "es", "it", "pt", "nl",
                                      "da", "sv", "nb",    "nn", "fi", "is", "pl", "ca"};

// Beside those that the library knows: office programs cut off otherwise, keyboards lack letters.
constexpr struct {
    const char* name;
    int month;
} kFurther[] = {{"sept", 9}, {"mrz", 3},  {"maerz", 3},     {"marz", 3},  {"jaenner", 1}, {"fevrier", 2},
                {"fevr", 2}, {"aout", 8}, {"decembre", 12}, {"marco", 3}, {"set", 9},     {"dez", 12}};

// Small letters; what is no letter of ASCII, in one byte or in several, is one '?'. No two months differ in
// nothing else.
std::string Folded(std::string_view name) {
    std::string folded;
    for (const char c : name) {
        if (static_cast<unsigned char>(c) < 0x80)
            folded += c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
        else if (folded.empty() || folded.back() != '?')
            folded += '?';
    }
    return folded;
}

using Numbers = std::unordered_map<std::string, int>;

void AddSymbols(const UDateFormat* format, UDateFormatSymbolType type, int first, Numbers& numbers) {
    const std::int32_t count = udat_countSymbols(format, type);
    for (std::int32_t i = first; i < count; ++i) {
        UChar symbol[64];
        UErrorCode error = U_ZERO_ERROR;
        const std::int32_t length =
            udat_getSymbols(format, type, i, symbol, static_cast<std::int32_t>(std::size(symbol)), &error);
        if (U_FAILURE(error)) continue;
        std::string name;
        icu::UnicodeString(symbol, length).toUTF8String(name);
        if (name.ends_with('.')) name.pop_back();
        numbers.emplace(Folded(name), i - first + 1);
    }
}

Numbers NamesOf(std::initializer_list<UDateFormatSymbolType> types, int first) {
    Numbers numbers;
    for (const char* language : kLanguages) {
        UErrorCode error = U_ZERO_ERROR;
        UDateFormat* const format =
            udat_open(UDAT_DEFAULT, UDAT_DEFAULT, language, nullptr, -1, nullptr, 0, &error);
        if (U_FAILURE(error)) continue;
        for (const auto type : types) AddSymbols(format, type, first, numbers);
        udat_close(format);
    }
    return numbers;
}

}  // namespace

int MonthNamed(std::string_view name) {
    static const Numbers months = [] {
        Numbers numbers = NamesOf(
            {UDAT_MONTHS, UDAT_SHORT_MONTHS, UDAT_STANDALONE_MONTHS, UDAT_STANDALONE_SHORT_MONTHS}, 0);
        for (const auto& further : kFurther) numbers.emplace(further.name, further.month);
        return numbers;
    }();
    const auto found = months.find(Folded(name));
    return found == months.end() ? 0 : found->second;
}

bool IsWeekdayName(std::string_view name) {
    // The library counts weekdays from 1.
    static const Numbers days = NamesOf(
        {UDAT_WEEKDAYS, UDAT_SHORT_WEEKDAYS, UDAT_STANDALONE_WEEKDAYS, UDAT_STANDALONE_SHORT_WEEKDAYS}, 1);
    return days.count(Folded(name)) > 0;
}

}  // namespace app
