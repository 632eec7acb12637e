#include "app/table/Records.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace app {

namespace {

// A quote that is opened and not closed would swallow the rest of the file: a record ends at this many lines.
constexpr int kMostLinesOfARecord = 200;

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

bool IsComment(std::string_view line) {
    std::size_t at = 0;
    while (at < line.size() && IsBlank(line[at])) ++at;
    if (at == line.size() || line[at] == '\n') return true;
    return line[at] == '#' || line[at] == '%' || line.substr(at, 2) == "//";
}

// The span of a quoted field whose content starts at `at`; returns where the field ends. A quote closes it
// when, after blanks, a delimiter or the end follows; any other stands for itself.
template <class IsEnd, class SkipBlanks>
std::size_t FindClosingQuote(std::string_view record, std::size_t at, const IsEnd& isEnd,
                             const SkipBlanks& skipBlanks, char delimiter, Span& span) {
    span.begin = at;
    for (;; ++at) {
        at = std::min(record.find('"', at), record.size());
        span.end = at;
        if (at >= record.size()) return at;
        if (at + 1 < record.size() && record[at + 1] == '"') {
            ++at;
            continue;
        }
        const std::size_t after = delimiter == kBlanks ? at + 1 : skipBlanks(at + 1);
        if (isEnd(after)) return after;
    }
}

}  // namespace

Records::Records(std::string_view text, char delimiter, std::size_t begin, std::int64_t line)
    : text_(text), at_(begin), line_(line), delimiter_(delimiter) {
    const bool onlyReturns =
        text.find('\n') == std::string_view::npos && text.find('\r') != std::string_view::npos;
    lineBreak_ = onlyReturns ? '\r' : '\n';
    strayReturns_ = HasStrayReturns();
    if (csv_init(&parser_, delimiter == kBlanks ? CSV_EMPTY_IS_NULL : 0) != 0) throw std::bad_alloc();
    csv_set_delim(&parser_, static_cast<unsigned char>(delimiter));
    csv_set_blk_size(&parser_, 4096);
}

Records::~Records() { csv_free(&parser_); }

std::size_t Records::LineEnd(std::size_t from) const {
    const void* found = std::memchr(text_.data() + from, lineBreak_, text_.size() - from);
    if (!found) return text_.size();
    return static_cast<std::size_t>(static_cast<const char*>(found) - text_.data()) + 1;
}

bool Records::HasStrayReturns() const {
    if (lineBreak_ == '\r') return false;
    for (auto at = text_.find('\r'); at != std::string_view::npos; at = text_.find('\r', at + 1))
        if (at + 1 == text_.size() || text_[at + 1] != '\n') return true;
    return false;
}

void Records::Feed(std::size_t begin, std::size_t end) {
    const char* bytes = text_.data() + begin;
    const std::size_t length = end - begin;
    const bool tabs = delimiter_ == kBlanks && std::memchr(bytes, '\t', length);
    if (tabs || strayReturns_) {
        unblanked_.assign(bytes, length);
        if (tabs) std::replace(unblanked_.begin(), unblanked_.end(), '\t', ' ');
        if (strayReturns_) std::replace(unblanked_.begin(), unblanked_.end(), '\r', ' ');
        bytes = unblanked_.data();
    }
    if (csv_parse(&parser_, bytes, length, sink_.onField, sink_.onRow, sink_.counts) != length)
        throw std::bad_alloc();
}

void Records::Finish() {
    if (csv_fini(&parser_, sink_.onField, sink_.onRow, sink_.counts) != 0) throw std::bad_alloc();
}

void Records::Forget() { csv_fini(&parser_, nullptr, nullptr, nullptr); }

bool Records::Advance(Record& record) {
    if (at_ >= text_.size()) return false;
    record = {Record::Row, at_, LineEnd(at_), line_, 0, ""};
    if (IsComment(text_.substr(at_, record.end - at_))) {
        record.kind = Record::Comment;
        at_ = record.end;
        ++line_;
        return true;
    }
    sink_.counts->skipEmpty = delimiter_ == kBlanks;
    const std::size_t firstEnd = record.end;
    Feed(record.begin, record.end);
    int lines = 1;
    while (sink_.counts->rows == 0 && record.end < text_.size() && lines < kMostLinesOfARecord) {
        const std::size_t from = record.end;
        record.end = LineEnd(from);
        Feed(from, record.end);
        ++lines;
    }
    // The last line may lack its line break; more than one line left open is a quote that never closes.
    if (sink_.counts->rows == 0 && lines == 1 && !IsEnded(record)) Finish();
    record.fields = sink_.counts->fields;
    if (sink_.counts->rows == 0) {
        record.kind = Record::Broken;
        record.fault = "a quote is opened and not closed";
        record.end = firstEnd;
        lines = 1;
        Forget();
    }
    at_ = record.end;
    line_ += lines;
    return true;
}

bool FindField(std::string_view record, char delimiter, int index, Span& span) {
    record = record.substr(0, LengthWithoutBreak(record));
    const auto skipBlanks = [&](std::size_t at) {
        while (at < record.size() && IsBlank(record[at]) && (delimiter == kBlanks || record[at] != delimiter))
            ++at;
        return at;
    };
    const auto isEnd = [&](std::size_t at) {
        return at >= record.size() || record[at] == delimiter ||
               (delimiter == kBlanks && IsBlank(record[at]));
    };
    std::size_t at = 0;
    for (int field = 0;; ++field) {
        at = skipBlanks(at);
        if (delimiter == kBlanks && at >= record.size()) return false;
        if (at < record.size() && record[at] == '"') {
            at = FindClosingQuote(record, at + 1, isEnd, skipBlanks, delimiter, span);
        } else {
            span.begin = at;
            while (!isEnd(at)) ++at;
            span.end = at;
            while (span.end > span.begin && IsBlank(record[span.end - 1])) --span.end;
        }
        if (field == index) return true;
        if (at >= record.size()) return false;
        ++at;
    }
}

std::size_t LengthWithoutBreak(std::string_view record) {
    std::size_t length = record.size();
    if (length > 0 && record[length - 1] == '\n') --length;
    if (length > 0 && record[length - 1] == '\r') --length;
    return length;
}

}  // namespace app
