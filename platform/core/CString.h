// A text of bytes, UTF-8 by convention, in the framework's shape: it converts to and from const char*, so
// that hosts pass either where the other is asked for. Positions and lengths count bytes. A null pointer
// reads as the empty text.
#pragma once

#include <string>
#include <string_view>

class CString {
  public:
    CString() = default;
    CString(const char* text) : text_(text ? text : "") {}
    CString(const char* text, int length)
        : text_(text && length > 0 ? std::string(text, length) : std::string()) {}
    CString(std::string text) : text_(std::move(text)) {}
    explicit CString(std::string_view text) : text_(text) {}

    // Valid until the next change of this object.
    operator const char*() const { return text_.c_str(); }
    const char* GetString() const { return text_.c_str(); }
    std::string_view View() const { return text_; }

    int GetLength() const { return static_cast<int>(text_.size()); }
    bool IsEmpty() const { return text_.empty(); }
    void Empty() { text_.clear(); }
    // A position outside the text reads as 0.
    char GetAt(int position) const {
        return position >= 0 && position < GetLength() ? text_[static_cast<std::size_t>(position)] : '\0';
    }
    char operator[](int position) const { return GetAt(position); }

    CString& operator+=(const CString& tail) {
        text_ += tail.text_;
        return *this;
    }
    CString& operator+=(const char* tail) {
        if (tail) text_ += tail;
        return *this;
    }
    CString& operator+=(char tail) {
        text_ += tail;
        return *this;
    }

    // Byte order; negative, zero or positive.
    int Compare(const char* other) const { return text_.compare(other ? other : ""); }
    // Ignores the case of ASCII letters.
    int CompareNoCase(const char* other) const;
    // Position of the first match at or after `start`, or -1.
    int Find(const char* part, int start = 0) const;
    int ReverseFind(char ch) const;
    // Parts of the text; counts and positions are held within it.
    CString Left(int count) const { return Mid(0, count); }
    CString Right(int count) const;
    CString Mid(int first, int count = 0x7FFFFFFF) const;

    // printf formatting in the C locale; a text of any length fits. A format that fails leaves the text
    // empty.
    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    // Replaces the text by the string resource `id`; false and unchanged when there is none.
    bool LoadString(unsigned id);

    friend CString operator+(CString a, const CString& b) { return a += b; }
    friend CString operator+(CString a, const char* b) { return a += b; }
    friend CString operator+(const char* a, const CString& b) { return CString(a) += b; }
    friend bool operator==(const CString& a, const CString& b) { return a.text_ == b.text_; }
    friend bool operator==(const CString& a, const char* b) { return a.Compare(b) == 0; }
    friend bool operator==(const char* a, const CString& b) { return b.Compare(a) == 0; }
    friend bool operator!=(const CString& a, const CString& b) { return a.text_ != b.text_; }
    friend bool operator!=(const CString& a, const char* b) { return a.Compare(b) != 0; }
    friend bool operator!=(const char* a, const CString& b) { return b.Compare(a) != 0; }
    friend bool operator<(const CString& a, const CString& b) { return a.text_ < b.text_; }

  private:
    std::string text_;
};
