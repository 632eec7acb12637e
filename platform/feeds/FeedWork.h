// What the readers of a feed work with on its thread: waiting that can be ended from outside and ticks
// meanwhile, the lines, and the sink.
#pragma once

#include <atomic>
#include <chrono>
#include <string>

#include "platform/feeds/FeedAddress.h"
#include "platform/feeds/LineBuffer.h"

class FeedWork {
  public:
    using Milliseconds = std::chrono::milliseconds;
    enum class Wait { Ready, Idle, Stop };

    explicit FeedWork(FeedSink& sink);
    ~FeedWork();
    FeedWork(const FeedWork&) = delete;
    FeedWork& operator=(const FeedWork&) = delete;

    // Ends all waiting; called on any thread.
    void Stop();
    bool IsStopped() const { return stopped_; }

    // Waits until `file` has one of `events` (poll), for `longest` at most; without a file (-1) so long.
    Wait For(int file, short events, Milliseconds longest = Milliseconds(1000));
    FeedSink& Sink() { return sink_; }
    LineBuffer& Lines() { return lines_; }
    // Tells the sink, once for each connection.
    void SayConnected();
    bool IsConnected() const { return connected_; }
    void SayLost(FeedState state, const std::string& why);

  private:
    using Clock = std::chrono::steady_clock;

    void Tick();

    FeedSink& sink_;
    LineBuffer lines_;
    int stopFile_;
    std::atomic<bool> stopped_ = false;
    bool connected_ = false;
    Clock::time_point nextTick_;
};

// How reading ended.
struct FeedEnd {
    bool final = false;  // trying again leads nowhere
    std::string reason;
};
// Connects and reads until the connection ends or the work is stopped.
using FeedReader = FeedEnd (*)(const FeedAddress&, FeedWork&);
FeedEnd ReadGrowingFile(const FeedAddress& address, FeedWork& work);
FeedEnd ReadTcp(const FeedAddress& address, FeedWork& work);
FeedEnd ReadUdp(const FeedAddress& address, FeedWork& work);
FeedEnd ReadSerialPort(const FeedAddress& address, FeedWork& work);
FeedEnd ReadBroker(const FeedAddress& address, FeedWork& work);
FeedEnd ReadStandardInput(const FeedAddress& address, FeedWork& work);

// Reads from an open file that poll() can wait for, up to its end; empty: it ended without an error. Of a
// terminal nothing to read is no end while nobody has hung up.
enum class StreamKind { Bytes, Terminal };
std::string ReadStream(int file, FeedWork& work, StreamKind kind = StreamKind::Bytes);
// "cannot be opened: Permission denied"
std::string SystemFault(const char* what, int error);
