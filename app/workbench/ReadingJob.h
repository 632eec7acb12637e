// A file being read on a thread of its own while the user interface goes on. Every member function is called
// by the user interface's thread.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

#include "app/workbench/SeriesFile.h"
#include "app/workbench/SeriesSketch.h"

namespace app {

class ReadingJob {
  public:
    explicit ReadingJob(ReadOptions options);
    // Stops the reading and waits for its end, which is soon.
    ~ReadingJob();
    ReadingJob(const ReadingJob&) = delete;
    ReadingJob& operator=(const ReadingJob&) = delete;

    const ReadOptions& Options() const { return options_; }
    // The result will be the failure kStopped, unless it has ended already.
    void Stop() { stopping_ = true; }
    // Whether it has ended; waits for that at most so long.
    bool HasEnded(std::chrono::milliseconds patience = {});
    // After it has ended.
    bool HasFailed() const;
    // Once, after it has ended.
    Result<SeriesFile> Take();

    struct State {
        double part = 0;  // of the file, 0 to 1
        std::int64_t rows = 0;
        std::optional<double> secondsLeft;  // none before it can be told
        SeriesSketch sketch;
    };
    State Now() const;

  private:
    using Clock = std::chrono::steady_clock;

    void Read();
    Go Note(const Stage& stage);

    const ReadOptions options_;
    const Clock::time_point begin_ = Clock::now();
    std::atomic<bool> stopping_ = false;
    mutable std::mutex mutex_;  // of all below
    std::condition_variable ended_;
    double part_ = 0;
    std::int64_t rows_ = 0;
    SeriesSketch sketch_;
    std::optional<Result<SeriesFile>> result_;
    std::thread thread_;
};

}  // namespace app
