// Cuts what arrives into whole lines, in memory of fixed size: a line longer than kLongest is thrown away up
// to its end. Lines end with a line feed, or with a carriage return where the first line ends with one alone.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "platform/feeds/FeedSink.h"

class LineBuffer {
  public:
    static constexpr std::size_t kLongest = std::size_t{1} << 16;

    explicit LineBuffer(FeedSink& sink);

    // Where bytes may be put, and how many were: what is a line now goes to the sink.
    std::span<char> Room() {
        return std::span(bytes_).subspan(used_, bytes_.size() - used_ - FeedSink::kReach);
    }
    void Fill(std::size_t count);
    // The same for bytes that are elsewhere.
    void Append(std::string_view bytes);
    // Whatever is there is a whole line, its end or none: the end of a message, of standard input.
    void EndLine();
    // What comes up to the next end of a line is lost: its beginning was not heard.
    void SkipLine();
    // What is there of a line is lost: the connection ended within it.
    void Cut();

  private:
    enum class Break { Unknown, LineFeed, Return };

    void TranslateReturns(std::size_t from);
    void HandOver(std::size_t end);

    FeedSink& sink_;
    std::vector<char> bytes_;
    std::size_t used_ = 0;
    bool skipping_ = false;  // the rest of a line that was too long
    Break break_ = Break::Unknown;
};
