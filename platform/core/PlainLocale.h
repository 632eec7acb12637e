// The C locale, for numbers that must not change with the process's: a window toolkit sets that to the
// user's.
#pragma once

#include <locale.h>

// Kept for the life of the process.
inline locale_t PlainLocale() {
    static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
    return plain;
}
