// Who takes what a feed receives. Every function is called on the feed's thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

enum class FeedState {
    Connecting,
    Connected,
    Waiting,  // lost, or never there; it is tried again
    Ended     // nothing more comes
};

class FeedSink {
  public:
    // Bytes behind the lines of TakeLines() that may be read, too.
    static constexpr std::size_t kReach = 64;

    virtual ~FeedSink() = default;
    // Whole lines, each ended by a line feed.
    virtual void TakeLines(std::string_view lines) = 0;
    // So many lines were lost on the way here: too long, cut off by the end of a connection, or without room
    // where they arrived.
    virtual void TakeLostLines(std::size_t count, const char* reason) = 0;
    // `message` says why where it is not as one wants it; else it is empty.
    virtual void TakeState(FeedState state, const std::string& message) = 0;
    // At least every tenth of a second, for what waits for time to pass.
    virtual void TakeTick() = 0;
};
