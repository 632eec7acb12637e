#include "app/workbench/ReadingJob.h"

#include <exception>
#include <new>

namespace app {

ReadingJob::ReadingJob(ReadOptions options) : options_(std::move(options)), thread_([this] { Read(); }) {}

ReadingJob::~ReadingJob() {
    Stop();
    thread_.join();
}

void ReadingJob::Read() {
    std::optional<Result<SeriesFile>> result;
    try {
        result = ReadSeriesFile(options_, [this](const Stage& stage) { return Note(stage); });
    } catch (const std::bad_alloc&) {
        result = Refusal(options_.path + ": there is not enough memory to read the file");
    } catch (const std::exception& failure) {
        result = Refusal(options_.path + ": " + failure.what());
    }
    if (stopping_) result = Failure{kStopped, options_.path + ": stopped", {}};
    const std::lock_guard lock(mutex_);
    result_ = std::move(result);
    ended_.notify_all();
}

Go ReadingJob::Note(const Stage& stage) {
    const std::lock_guard lock(mutex_);
    part_ = stage.part;
    rows_ = stage.rows;
    if (stage.table) sketch_.Follow(*stage.table);
    return stopping_ ? Go::Stop : Go::On;
}

bool ReadingJob::HasEnded(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    return ended_.wait_for(lock, patience, [this] { return result_.has_value(); });
}

bool ReadingJob::HasFailed() const {
    const std::lock_guard lock(mutex_);
    return !result_->operator bool();
}

Result<SeriesFile> ReadingJob::Take() {
    const std::lock_guard lock(mutex_);
    return std::move(*result_);
}

ReadingJob::State ReadingJob::Now() const {
    const std::lock_guard lock(mutex_);
    State state{part_, rows_, {}, sketch_};
    const double seconds = std::chrono::duration<double>(Clock::now() - begin_).count();
    constexpr double kTellingPart = 0.02;  // before, an estimate would jump about
    if (part_ > kTellingPart) state.secondsLeft = seconds * (1 - part_) / part_;
    return state;
}

}  // namespace app
