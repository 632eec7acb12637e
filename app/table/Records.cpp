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

char LineBreakOf(std::string_view text) {
    const auto sample = text.substr(0, std::size_t{1} << 20);
    const bool onlyReturns =
        sample.find('\n') == std::string_view::npos && sample.find('\r') != std::string_view::npos;
    return onlyReturns ? '\r' : '\n';
}

Records::Records(std::string_view text, char delimiter, std::size_t begin, std::int64_t line)
    : text_(text), at_(begin), line_(line), delimiter_(delimiter), lineBreak_(LineBreakOf(text)) {
    if (csv_init(&parser_, delimiter == kBlanks ? CSV_EMPTY_IS_NULL : 0) != 0) throw std::bad_alloc();
    csv_set_delim(&parser_, static_cast<unsigned char>(delimiter));
    csv_set_blk_size(&parser_, 4096);
}

Records::~Records() { csv_free(&parser_); }

std::size_t Records::LineEnd(std::size_t from) const {
    if (lineBreak_ == '\r') return std::min(text_.find_first_of("\r\n", from), text_.size() - 1) + 1;
    const void* found = std::memchr(text_.data() + from, lineBreak_, text_.size() - from);
    if (!found) return text_.size();
    return static_cast<std::size_t>(static_cast<const char*>(found) - text_.data()) + 1;
}

// A carriage return inside a line counts as a blank.
bool Records::HasStrayReturns(std::string_view line) const {
    if (lineBreak_ == '\r') return false;
    for (auto at = line.find('\r'); at != std::string_view::npos; at = line.find('\r', at + 1))
        if (at + 1 == line.size() || line[at + 1] != '\n') return true;
    return false;
}

void Records::Feed(std::size_t begin, std::size_t end) {
    const char* bytes = text_.data() + begin;
    const std::size_t length = end - begin;
    const bool tabs = delimiter_ == kBlanks && std::memchr(bytes, '\t', length);
    const bool strayReturns = HasStrayReturns({bytes, length});
    if (tabs || strayReturns) {
        unblanked_.assign(bytes, length);
        if (tabs) std::replace(unblanked_.begin(), unblanked_.end(), '\t', ' ');
        if (strayReturns) std::replace(unblanked_.begin(), unblanked_.end(), '\r', ' ');
        bytes = unblanked_.data();
    }
    if (csv_parse(&parser_, bytes, length, sink_.onField, sink_.onRow, sink_.counts) != length)
        throw std::bad_alloc();
}

void Records::Finish() {
    if (csv_fini(&parser_, sink_.onField, sink_.onRow, sink_.counts) != 0) throw std::bad_alloc();
}

void Records::Forget() { csv_fini(&parser_, nullptr, nullptr, nullptr); }

void Records::Report(std::string_view field) {
    sink_.onField(const_cast<char*>(field.data()), field.size(), sink_.counts);
}

void Records::Split(std::string_view line) {
    for (std::size_t at = 0;;) {
        const std::size_t end = std::min(line.find(delimiter_, at), line.size());
        std::size_t first = at;
        std::size_t last = end;
        while (first < last && IsBlank(line[first])) ++first;
        while (last > first && IsBlank(line[last - 1])) --last;
        Report(line.substr(first, last - first));
        if (end == line.size()) return;
        at = end + 1;
    }
}

void Records::SplitAtBlanks(std::string_view line) {
    for (std::size_t at = 0;;) {
        while (at < line.size() && IsBlank(line[at])) ++at;
        if (at == line.size()) return;
        const std::size_t first = at;
        while (at < line.size() && !IsBlank(line[at])) ++at;
        Report(line.substr(first, at - first));
    }
}

void Records::Tokenise(Record& record, int& lines) {
    const std::size_t firstEnd = record.end;
    Feed(record.begin, record.end);
    while (sink_.counts->rows == 0 && record.end < text_.size() && lines < kMostLinesOfARecord) {
        const std::size_t from = record.end;
        record.end = LineEnd(from);
        Feed(from, record.end);
        ++lines;
    }
    // The last line may lack its line break; more than one line left open is a quote that never closes.
    if (sink_.counts->rows == 0 && lines == 1 && !IsEnded(record)) Finish();
    if (sink_.counts->rows > 0) return;
    record.kind = Record::Broken;
    record.fault = "a quote is opened and not closed";
    record.end = firstEnd;
    lines = 1;
    Forget();
}

bool Records::Advance(Record& record) {
    if (at_ >= text_.size()) return false;
    record = {Record::Row, at_, LineEnd(at_), line_, 0, ""};
    const auto line = text_.substr(at_, record.end - at_);
    const auto content = line.substr(0, LengthWithoutBreak(line));
    int lines = 1;
    sink_.counts->skipEmpty = delimiter_ == kBlanks;
    if (line.find('\0') != std::string_view::npos)
        record.kind = Record::NotText;
    else if (IsComment(line))
        record.kind = Record::Comment;
    else if (content.find('"') != std::string_view::npos || content.find('\r') != std::string_view::npos)
        Tokenise(record, lines);
    else if (delimiter_ == kBlanks)
        SplitAtBlanks(content);
    else
        Split(content);
    record.fields = sink_.counts->fields;
    if (record.fields > kMostFields) {
        record.kind = Record::Broken;
        record.fault = "more fields than a table has columns";
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
