#include "settings/NumberText.h"

#include <locale.h>

#include <cmath>
#include <cstdlib>

namespace {

// This thread's numbers in the "C" locale for the life of the object.
class PlainNumbers {
  public:
    PlainNumbers() : previous_(uselocale(Plain())) {}
    ~PlainNumbers() { uselocale(previous_); }
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;

    // Kept for the life of the process.
    static locale_t Plain() {
        static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
        return plain;
    }

  private:
    locale_t previous_;
};

template <class T, class Parse>
bool ParseFinite(const char* text, T& value, Parse parse) {
    char* end = nullptr;
    const T parsed = parse(text, &end, PlainNumbers::Plain());
    if (end == text || !std::isfinite(parsed)) return false;
    value = parsed;
    return true;
}

}  // namespace

CString FormatReal(const char* format, double value) {
    const PlainNumbers plain;
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
