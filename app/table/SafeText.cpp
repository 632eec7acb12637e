#include "app/table/SafeText.h"

#include <cstdio>

namespace app {

namespace {

constexpr char32_t kNone = 0xFFFFFFFF;

// Takes the first character off `text`; kNone when its first byte begins none.
char32_t TakeCharacter(std::string_view& text, std::string_view& bytes) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(0);
    const std::size_t length = first < 0x80 ? 1 : first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    char32_t character = first;
    if (length > 1) {
        constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
        character = first & (0x7Fu >> length);
        bool whole = first >= 0xC0 && first < 0xF8 && text.size() >= length;
        for (std::size_t i = 1; whole && i < length; ++i) {
            whole = (byte(i) & 0xC0) == 0x80;
            character = character << 6 | (byte(i) & 0x3Fu);
        }
        if (!whole || character < kLeast[length] || character > 0x10FFFF) {
            bytes = text.substr(0, 1);
            text.remove_prefix(1);
            return kNone;
        }
    }
    bytes = text.substr(0, length);
    text.remove_prefix(length);
    return character;
}

// Those of the first 32, DEL, and those of Unicode's second set.
bool IsControl(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0) || character == kNone;
}

std::string Escaped(std::string_view text, const char* form) {
    std::string safe;
    safe.reserve(text.size());
    while (!text.empty()) {
        std::string_view bytes;
        const char32_t character = TakeCharacter(text, bytes);
        if (!IsControl(character) || character == '\n' || character == '\t') {
            safe += bytes;
            continue;
        }
        const unsigned number =
            character == kNone ? static_cast<unsigned char>(bytes[0]) : static_cast<unsigned>(character);
        char escape[16];
        std::snprintf(escape, sizeof escape, form, number);
        safe += escape;
    }
    return safe;
}

}  // namespace

std::string SafeText(std::string_view text) { return Escaped(text, "\\x%02x"); }

std::string SafeJson(std::string_view json) { return Escaped(json, "\\u%04x"); }

}  // namespace app
