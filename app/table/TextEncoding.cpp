#include "app/table/TextEncoding.h"

#include <unicode/ucnv.h>
#include <unicode/ucsdet.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstring>

namespace app {

namespace {

using namespace std::string_view_literals;

struct Mark {
    std::string_view bytes;
    const char* name;
};
// The longer ones first: a mark of UTF-16 begins one of UTF-32.
constexpr Mark kMarks[] = {{"\xFF\xFE\0\0"sv, "UTF-32LE"},
                           {"\0\0\xFE\xFF"sv, "UTF-32BE"},
                           {"\xFF\xFE"sv, "UTF-16LE"},
                           {"\xFE\xFF"sv, "UTF-16BE"}};

bool IsHigh(char c) { return static_cast<unsigned char>(c) > 127; }

bool IsUtf8(std::string_view text) {
    const auto size = static_cast<std::int32_t>(text.size());
    for (std::int32_t i = 0; i < size;) {
        UChar32 c = 0;
        U8_NEXT(text.data(), i, size, c);
        if (c < 0) return false;
    }
    return true;
}

// The lines that have bytes above 127, as far as a guess needs them.
std::string TellingLines(std::string_view text) {
    constexpr std::size_t kEnough = 1 << 15;
    std::string lines;
    for (std::size_t at = 0; at < text.size() && lines.size() < kEnough;) {
        const auto high = std::find_if(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), IsHigh);
        if (high == text.end()) break;
        const auto place = static_cast<std::size_t>(high - text.begin());
        const std::size_t before = text.find_last_of("\r\n", place);
        const std::size_t begin = std::max(at, before == std::string_view::npos ? 0 : before + 1);
        const std::size_t end = std::min(text.find_first_of("\r\n", place), text.size());
        lines.append(text.substr(begin, std::min(end - begin, kEnough))).append("\n");
        at = end;
    }
    return lines;
}

// What the library thinks of a text of some length; empty where it is not sure.
std::string DetectedName(const std::string& lines) {
    constexpr int kSure = 50;
    std::string name;
    UErrorCode error = U_ZERO_ERROR;
    UCharsetDetector* const detector = ucsdet_open(&error);
    ucsdet_setText(detector, lines.data(), static_cast<std::int32_t>(lines.size()), &error);
    const UCharsetMatch* const match = ucsdet_detect(detector, &error);
    if (U_SUCCESS(error) && match && ucsdet_getConfidence(match, &error) >= kSure) {
        const char* const found = ucsdet_getName(match, &error);
        if (found && std::strncmp(found, "UTF-", 4) != 0 && std::strncmp(found, "ISO-2022", 8) != 0)
            name = found;
    }
    ucsdet_close(detector);
    return name;
}

}  // namespace

struct TextConverter::Converters {
    UConverter* from = nullptr;
    UConverter* to = nullptr;
    ~Converters() {
        ucnv_close(from);
        ucnv_close(to);
    }
};

TextConverter::TextConverter(const std::string& from, const std::string& to)
    : converters_(std::make_unique<Converters>()) {
    UErrorCode error = U_ZERO_ERROR;
    converters_->from = ucnv_open(from.c_str(), &error);
    converters_->to = ucnv_open(to.c_str(), &error);
    if (converters_->from)
        ucnv_setToUCallBack(converters_->from, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    if (converters_->to)
        ucnv_setFromUCallBack(converters_->to, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
}
TextConverter::~TextConverter() = default;
TextConverter::TextConverter(TextConverter&&) noexcept = default;
TextConverter& TextConverter::operator=(TextConverter&&) noexcept = default;

bool TextConverter::Append(std::string_view text, std::string& to) {
    if (!converters_->from || !converters_->to) return false;
    char target[8192];
    UChar pivot[2048];
    UChar* pivotSource = pivot;
    UChar* pivotTarget = pivot;
    const char* source = text.data();
    UBool reset = 1;
    for (;;) {
        char* end = target;
        UErrorCode error = U_ZERO_ERROR;
        ucnv_convertEx(converters_->to, converters_->from, &end, target + sizeof target, &source,
                       text.data() + text.size(), pivot, &pivotSource, &pivotTarget, pivot + std::size(pivot),
                       reset, 1, &error);
        to.append(target, static_cast<std::size_t>(end - target));
        if (error != U_BUFFER_OVERFLOW_ERROR) return U_SUCCESS(error);
        reset = 0;
    }
}

std::string TextEncoding::Shown(std::string_view bytes) const {
    if (IsUtf8() || IsWide() || std::none_of(bytes.begin(), bytes.end(), IsHigh)) return std::string(bytes);
    std::string text;
    return TextConverter(name_, "UTF-8").Append(bytes, text) ? text : std::string(bytes);
}

std::string TextEncoding::Stored(std::string_view text) const {
    if (IsUtf8() || IsWide() || std::none_of(text.begin(), text.end(), IsHigh)) return std::string(text);
    std::string bytes;
    return TextConverter("UTF-8", name_).Append(text, bytes) ? bytes : std::string(text);
}

TextEncoding WideEncodingOf(std::string_view bytes) {
    for (const auto& mark : kMarks)
        if (bytes.substr(0, mark.bytes.size()) == mark.bytes) return TextEncoding(mark.name);
    // Tables are digits and delimiters, whose other byte is 0.
    const auto sample = bytes.substr(0, std::min<std::size_t>(bytes.size() / 2 * 2, 2000));
    std::size_t zeros[2] = {0, 0};
    for (std::size_t i = 0; i < sample.size(); ++i) zeros[i % 2] += sample[i] == '\0';
    if (sample.size() < 8) return TextEncoding();
    if (zeros[0] == 0 && zeros[1] * 10 > sample.size() * 4) return TextEncoding("UTF-16LE");
    if (zeros[1] == 0 && zeros[0] * 10 > sample.size() * 4) return TextEncoding("UTF-16BE");
    return TextEncoding();
}

TextEncoding GuessEncoding(std::string_view text) {
    // Names stand at the start; the bytes of cells are not touched, whatever they mean.
    constexpr std::size_t kSample = std::size_t{1} << 20;
    const bool cut = text.size() > kSample;
    text = text.substr(0, kSample);
    while (cut && !text.empty() && IsHigh(text.back())) text.remove_suffix(1);
    if (IsUtf8(text)) return TextEncoding();
    // A degree sign or two say nothing; the western code has all that other western ones have.
    constexpr std::ptrdiff_t kTelling = 40;
    const std::string lines = TellingLines(text);
    const auto high = std::count_if(lines.begin(), lines.end(), IsHigh);
    const std::string detected = high >= kTelling ? DetectedName(lines) : "";
    if (!detected.empty() && detected != "ISO-8859-1") return TextEncoding(detected);
    const bool windows = std::any_of(text.begin(), text.end(), [](char c) { return (c & 0xE0) == 0x80; });
    return TextEncoding(windows ? "windows-1252" : "ISO-8859-1");
}

bool IsKnownEncoding(const std::string& name) {
    UErrorCode error = U_ZERO_ERROR;
    UConverter* const converter = ucnv_open(name.c_str(), &error);
    ucnv_close(converter);
    return U_SUCCESS(error) && converter;
}

}  // namespace app
