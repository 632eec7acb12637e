#include "platform/feeds/LineBuffer.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t kRead = std::size_t{1} << 18;

}  // namespace

LineBuffer::LineBuffer(FeedSink& sink)
    : sink_(sink), bytes_(kRead + LineBuffer::kLongest + FeedSink::kReach) {}

// A return at the very end may yet be followed by a line feed.
void LineBuffer::TranslateReturns(std::size_t from) {
    const auto begin = bytes_.begin() + static_cast<std::ptrdiff_t>(from);
    const auto end = bytes_.begin() + static_cast<std::ptrdiff_t>(used_);
    if (break_ == Break::Unknown) {
        constexpr char kBreaks[] = {'\r', '\n'};
        const auto first = std::find_first_of(bytes_.begin(), end, std::begin(kBreaks), std::end(kBreaks));
        if (first == end || (*first == '\r' && first + 1 == end)) return;
        break_ = *first == '\r' && *(first + 1) != '\n' ? Break::Return : Break::LineFeed;
        if (break_ == Break::Return) std::replace(bytes_.begin(), end, '\r', '\n');
    } else if (break_ == Break::Return) {
        std::replace(begin, end, '\r', '\n');
    }
}

void LineBuffer::Fill(std::size_t count) {
    const std::size_t from = used_;
    used_ += count;
    if (break_ != Break::LineFeed) TranslateReturns(from);
    const std::size_t searched = break_ == Break::Return ? 0 : from;
    const void* const last = ::memrchr(bytes_.data() + searched, '\n', used_ - searched);
    if (last) HandOver(static_cast<std::size_t>(static_cast<const char*>(last) - bytes_.data()) + 1);
    if (used_ <= kLongest) return;
    if (!skipping_) sink_.TakeLostLines(1, "a line is longer than 65,536 bytes");
    skipping_ = true;
    used_ = 0;
}

void LineBuffer::HandOver(std::size_t end) {
    std::size_t begin = 0;
    if (skipping_) {
        const void* const first = std::memchr(bytes_.data(), '\n', end);
        begin = static_cast<std::size_t>(static_cast<const char*>(first) - bytes_.data()) + 1;
        skipping_ = false;
    }
    if (begin < end) sink_.TakeLines({bytes_.data() + begin, end - begin});
    std::memmove(bytes_.data(), bytes_.data() + end, used_ - end);
    used_ -= end;
}

void LineBuffer::Append(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto room = Room();
        const std::size_t count = std::min(bytes.size(), room.size());
        std::memcpy(room.data(), bytes.data(), count);
        Fill(count);
        bytes.remove_prefix(count);
    }
}

void LineBuffer::EndLine() {
    if (used_ > 0 || skipping_) Append("\n");
}

void LineBuffer::SkipLine() {
    skipping_ = true;
    sink_.TakeLostLines(1, "the first line was heard in part");
}

void LineBuffer::Cut() {
    const std::string_view rest(bytes_.data(), used_);
    if (!skipping_ && rest.find_first_not_of(" \t\r") != std::string_view::npos)
        sink_.TakeLostLines(1, "a line has no end");
    used_ = 0;
    skipping_ = false;
}
