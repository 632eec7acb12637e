// A feed that is received, read and recorded on a thread of its own. Whoever shows it takes the rows from
// another thread; so many wait for that, then the feed itself waits where it can be made to (streams, files),
// else further rows are not shown. What is recorded never waits for what is shown.
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "app/live/LineReader.h"
#include "app/live/Recorder.h"
#include "platform/feeds/Feed.h"

namespace app {

struct LiveState {
    FeedState feed = FeedState::Connecting;
    std::string message;  // why it is not connected
    LineCounts lines;
    std::uint64_t unshown = 0;   // rows that found nobody to take them
    std::uint64_t recorded = 0;  // rows
    std::string recording;       // the file; empty: none
    std::string recordFault;
    Microseconds lastArrival = 0;      // 0: nothing has arrived
    std::vector<double> lastRow = {};  // x and the values
};

class LiveSource : private FeedSink {
  public:
    struct Wishes {
        ReadOptions read = {};
        bool shown = false;  // rows are kept for Take()
        // Called on the source's thread when there are rows or news after a Take().
        std::function<void()> wake = {};
    };

    LiveSource(FeedAddress address, Wishes wishes);
    ~LiveSource() override;
    LiveSource(const LiveSource&) = delete;
    LiveSource& operator=(const LiveSource&) = delete;

    const std::string& Name() const { return name_; }
    // The clock that arrivals are told by.
    static Microseconds Now();
    // Begins to receive.
    void Start();
    void AskToStop();
    // Ends receiving and recording; the failure is the recording's.
    std::optional<Failure> Stop();

    // The rows since the last call; `rows` gives its memory in exchange.
    void Take(LiveRows& rows);
    std::size_t Waiting() const;
    LiveState State() const;
    // Nothing before the first lines told it.
    std::optional<LineShape> Shape() const;

    // Records from now on, until it is asked to end it. A recorder that does not fit the lines ends by
    // itself; LiveState::recordFault says why.
    void Record(std::unique_ptr<Recorder> recorder);
    std::optional<Failure> EndRecording();

  private:
    void TakeLines(std::string_view lines) override;
    void TakeLostLines(std::size_t count, const char* reason) override;
    void TakeState(FeedState state, const std::string& message) override;
    void TakeTick() override;
    void Publish();
    void HandOver(std::unique_lock<std::mutex>& hold);
    void Heading();
    void RecordRow(std::string_view line, Microseconds arrival);
    bool CanWait() const;

    const FeedAddress address_;
    const std::string name_;
    const Wishes wishes_;
    std::unique_ptr<Feed> feed_;

    // The feed's thread alone.
    LineReader reader_;
    LiveRows fresh_;

    std::mutex recorderLock_;  // of the two below
    std::unique_ptr<Recorder> recorder_;
    bool headingWritten_ = false;

    mutable std::mutex lock_;  // of all below
    std::condition_variable room_;
    LiveState state_;
    LiveRows waiting_;
    std::optional<LineShape> shape_;
    bool told_ = false;
    bool stopping_ = false;
};

}  // namespace app
