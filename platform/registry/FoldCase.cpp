#include "platform/registry/FoldCase.h"

#include <utf8proc.h>

namespace {

utf8proc_int32_t FoldCharacter(utf8proc_int32_t character) {
    utf8proc_int32_t folded[4];
    int boundary = 0;
    const auto count = utf8proc_decompose_char(character, folded, 4, UTF8PROC_CASEFOLD, &boundary);
    // Full folding would lengthen the name; the lower-case letter is the simple folding of these characters.
    return count == 1 ? folded[0] : utf8proc_tolower(character);
}

}  // namespace

std::string FoldCase(std::string_view name) {
    std::string folded;
    folded.reserve(name.size());
    const auto* next = reinterpret_cast<const utf8proc_uint8_t*>(name.data());
    auto left = static_cast<utf8proc_ssize_t>(name.size());
    while (left > 0) {
        utf8proc_int32_t character = 0;
        const auto length = utf8proc_iterate(next, left, &character);
        if (length <= 0) return std::string(name);
        utf8proc_uint8_t bytes[4];
        const auto written = utf8proc_encode_char(FoldCharacter(character), bytes);
        folded.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(written));
        next += length;
        left -= length;
    }
    return folded;
}
