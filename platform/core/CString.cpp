#include "platform/core/CString.h"

#include <strings.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>

#include "platform/core/PlainLocale.h"
#include "platform/core/StringTable.h"

namespace {

// Formats as in the C locale for as long as it lives.
class InPlainLocale {
  public:
    InPlainLocale() : previous_(uselocale(PlainLocale())) {}
    ~InPlainLocale() { uselocale(previous_); }
    InPlainLocale(const InPlainLocale&) = delete;
    InPlainLocale& operator=(const InPlainLocale&) = delete;

  private:
    locale_t previous_;
};

}  // namespace

int CString::CompareNoCase(const char* other) const { return strcasecmp(text_.c_str(), other ? other : ""); }

int CString::Find(const char* part, int start) const {
    if (!part || start < 0 || start > GetLength()) return -1;
    const std::size_t found = text_.find(part, static_cast<std::size_t>(start));
    return found == std::string::npos ? -1 : static_cast<int>(found);
}

int CString::ReverseFind(char ch) const {
    const std::size_t found = text_.rfind(ch);
    return found == std::string::npos ? -1 : static_cast<int>(found);
}

CString CString::Right(int count) const {
    const int kept = std::clamp(count, 0, GetLength());
    return Mid(GetLength() - kept, kept);
}

CString CString::Mid(int first, int count) const {
    const int begin = std::clamp(first, 0, GetLength());
    const int kept = std::clamp(count, 0, GetLength() - begin);
    return CString(
        std::string_view(text_).substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(kept)));
}

void CString::Format(const char* format, ...) {
    // Formatted aside first: an argument may point into this text.
    std::string formatted;
    const InPlainLocale plain;
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = format ? std::vsnprintf(nullptr, 0, format, arguments) : -1;
    if (length > 0) {
        formatted.resize(static_cast<std::size_t>(length));
        std::vsnprintf(formatted.data(), formatted.size() + 1, format, again);
    }
    va_end(again);
    va_end(arguments);
    text_.swap(formatted);
}

bool CString::LoadString(unsigned id) {
    const char* text = FindStringResource(id);
    if (!text) return false;
    text_ = text;
    return true;
}
