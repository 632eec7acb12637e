#include "app/live/LiveSource.h"

#include <utility>

namespace app {

namespace {

constexpr std::size_t kMostWaitingRows = 100000;

}  // namespace

LiveSource::LiveSource(FeedAddress address, Wishes wishes)
    : address_(std::move(address)),
      name_(address_.shown),
      wishes_(std::move(wishes)),
      reader_(name_, wishes_.read) {}

LiveSource::~LiveSource() { Stop(); }

void LiveSource::Start() { feed_ = std::make_unique<Feed>(address_, static_cast<FeedSink&>(*this)); }

void LiveSource::AskToStop() {
    if (feed_) feed_->AskToStop();
    const std::lock_guard hold(lock_);
    stopping_ = true;
    room_.notify_all();
}

std::optional<Failure> LiveSource::Stop() {
    AskToStop();
    if (feed_) feed_->Stop();
    return EndRecording();
}

// The clock of the wall, as it went on since the program began: nobody who sets it turns time back.
Microseconds LiveSource::Now() {
    using namespace std::chrono;
    static const auto ahead = system_clock::now().time_since_epoch() - steady_clock::now().time_since_epoch();
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch() + ahead).count();
}

void LiveSource::TakeLines(std::string_view lines) {
    const Microseconds now = Now();
    {
        const std::lock_guard hold(recorderLock_);
        reader_.Read(lines, now, fresh_);
    }
    {
        const std::lock_guard hold(lock_);
        state_.lastArrival = now;
    }
    Publish();
}

void LiveSource::TakeTick() {
    const bool known = reader_.Shape();
    bool recording = false;
    {
        const std::lock_guard hold(recorderLock_);
        reader_.Tick(Now(), fresh_);
        recording = recorder_ != nullptr;
        if (recording) recorder_->Tick();
    }
    if (recording || !known) Publish();
}

void LiveSource::TakeLostLines(std::size_t count, const char* reason) {
    reader_.NoteLost(count, reason);
    Publish();
}

void LiveSource::TakeState(FeedState feed, const std::string& message) {
    if (feed == FeedState::Ended) {
        const std::lock_guard hold(recorderLock_);
        reader_.End(Now(), fresh_);
    }
    {
        const std::lock_guard hold(lock_);
        // While it is tried again, why it was lost goes on to be shown.
        if (feed == FeedState::Connecting && state_.feed == FeedState::Waiting) return;
        state_.feed = feed;
        state_.message = message;
    }
    Publish();
}

// Called within Read(), with recorderLock_ held.
void LiveSource::RecordRow(std::string_view line, Microseconds arrival) {
    const LineShape& shape = *reader_.Shape();
    if (!headingWritten_) Heading();
    if (!recorder_) return;
    if (shape.IsArrival())
        recorder_->AddRow(arrival, shape.layout.delimiter, line);
    else
        recorder_->AddRow(line);
}

void LiveSource::Heading() {
    headingWritten_ = true;
    const auto failure = recorder_->WriteHeading(reader_.Shape()->Heading());
    if (!failure) return;
    recorder_.reset();
    const std::lock_guard hold(lock_);
    state_.recordFault = failure->Text();
    state_.recording.clear();
}

// What the others may know, and the rows.
void LiveSource::Publish() {
    std::uint64_t recorded = 0;
    std::string fault;
    {
        const std::lock_guard hold(recorderLock_);
        if (recorder_) {
            recorded = recorder_->Rows();
            fault = recorder_->Fault();
        }
    }
    std::unique_lock hold(lock_);
    state_.lines = reader_.Counts();
    if (!state_.recording.empty()) {
        state_.recorded = recorded;
        state_.recordFault = std::move(fault);
    }
    if (!shape_ && reader_.Shape()) shape_ = *reader_.Shape();
    HandOver(hold);
    if (!wishes_.wake || told_) return;
    told_ = true;
    hold.unlock();
    wishes_.wake();
}

void LiveSource::HandOver(std::unique_lock<std::mutex>& hold) {
    if (fresh_.Count() == 0) return;
    state_.lastRow.assign(fresh_.cells.end() - static_cast<std::ptrdiff_t>(fresh_.width), fresh_.cells.end());
    if (wishes_.shown) {
        const auto hasRoom = [this] { return stopping_ || waiting_.Count() < kMostWaitingRows; };
        if (CanWait() && !hasRoom()) room_.wait(hold, hasRoom);
        if (!hasRoom()) {
            state_.unshown += fresh_.Count();
        } else {
            waiting_.width = fresh_.width;
            waiting_.decimals = fresh_.decimals;
            waiting_.cells.insert(waiting_.cells.end(), fresh_.cells.begin(), fresh_.cells.end());
        }
    }
    fresh_.cells.clear();
}

// Who may be made to wait: the others send on, and what nobody takes is lost before it is received.
bool LiveSource::CanWait() const {
    return address_.kind != FeedKind::Udp && address_.kind != FeedKind::Broker;
}

void LiveSource::Take(LiveRows& rows) {
    rows.cells.clear();
    {
        const std::lock_guard hold(lock_);
        std::swap(rows, waiting_);
        told_ = false;
    }
    room_.notify_one();
}

std::size_t LiveSource::Waiting() const {
    const std::lock_guard hold(lock_);
    return waiting_.Count();
}

LiveState LiveSource::State() const {
    const std::lock_guard hold(lock_);
    return state_;
}

std::optional<LineShape> LiveSource::Shape() const {
    const std::lock_guard hold(lock_);
    return shape_;
}

void LiveSource::Record(std::unique_ptr<Recorder> recorder) {
    EndRecording();
    const std::lock_guard hold(recorderLock_);
    recorder_ = std::move(recorder);
    headingWritten_ = false;
    reader_.SetOnRow([this](std::string_view line, Microseconds arrival) { RecordRow(line, arrival); });
    const std::lock_guard holdState(lock_);
    state_.recording = recorder_->Path();
    state_.recorded = 0;
    state_.recordFault.clear();
}

std::optional<Failure> LiveSource::EndRecording() {
    std::unique_ptr<Recorder> recorder;
    {
        const std::lock_guard hold(recorderLock_);
        recorder = std::move(recorder_);
        reader_.SetOnRow({});
    }
    if (!recorder) return std::nullopt;
    auto failure = recorder->End();
    const std::lock_guard hold(lock_);
    state_.recorded = recorder->Rows();
    state_.recording.clear();
    return failure;
}

}  // namespace app
