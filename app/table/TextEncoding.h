// How the characters of a text file are coded. Codes of one byte a character, and UTF-8, stay as they are in
// memory, where only names are converted for people; UTF-16 and UTF-32 are read as UTF-8 and written back.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "app/table/Result.h"

namespace app {

class TextEncoding {
  public:
    // UTF-8; else a name that ICU knows.
    explicit TextEncoding(std::string name = "UTF-8") : name_(std::move(name)) {}

    const std::string& Name() const { return name_; }
    bool IsUtf8() const { return name_ == "UTF-8"; }
    // Whether its texts are converted as a whole.
    bool IsWide() const { return name_.compare(0, 4, "UTF-") == 0 && !IsUtf8(); }
    // Bytes of the text in memory as UTF-8, and UTF-8 as such bytes; what cannot be converted stays.
    std::string Shown(std::string_view bytes) const;
    std::string Stored(std::string_view text) const;

  private:
    std::string name_;
};

// The encoding of a file's first bytes by its byte-order mark or by its zeros; UTF-8 when it is not wide.
TextEncoding WideEncodingOf(std::string_view bytes);
// The encoding of a text that is not wide: UTF-8, or what its bytes above 127 make likely.
TextEncoding GuessEncoding(std::string_view text);
// Whether there is a converter of this name.
bool IsKnownEncoding(const std::string& name);

// Converts texts from one encoding to another in pieces that end with a whole character.
class TextConverter {
  public:
    TextConverter(const std::string& from, const std::string& to);
    ~TextConverter();
    TextConverter(TextConverter&&) noexcept;
    TextConverter& operator=(TextConverter&&) noexcept;
    // Appends to `to`; false where the text is not of its encoding or has characters that the other lacks.
    bool Append(std::string_view text, std::string& to);

  private:
    struct Converters;
    std::unique_ptr<Converters> converters_;
};

}  // namespace app
