#include "settings/StoredNumber.h"

#include <cmath>
#include <cstdlib>

#include "platform/core/PlainLocale.h"

namespace {

template <class T, class Parse>
bool ParseFinite(const char* text, T& value, Parse parse) {
    char* end = nullptr;
    const T parsed = parse(text, &end, PlainLocale());
    if (end == text || !std::isfinite(parsed)) return false;
    value = parsed;
    return true;
}

}  // namespace

CString FormatReal(const char* format, double value) {
    CString text;
    text.Format(format, value);
    return text;
}

bool ParseReal(const char* text, float& value) { return ParseFinite(text, value, strtof_l); }
bool ParseReal(const char* text, double& value) { return ParseFinite(text, value, strtod_l); }

bool ParseInteger(const char* text, std::int64_t& value) {
    char* end = nullptr;
    const long long parsed = std::strtoll(text, &end, 0);
    if (end == text) return false;
    value = parsed;
    return true;
}
