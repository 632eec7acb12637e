#include "platform/feeds/FeedWork.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace {

constexpr FeedWork::Milliseconds kTick(100);
constexpr FeedWork::Milliseconds kNothing(
    5);  // after which a terminal without anything to read is asked again

}  // namespace

FeedWork::FeedWork(FeedSink& sink)
    : sink_(sink),
      lines_(sink),
      stopFile_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      nextTick_(Clock::now() + kTick) {}

FeedWork::~FeedWork() {
    if (stopFile_ >= 0) ::close(stopFile_);
}

// Without the event, which no system refuses that has a file left, a tick's wait ends it.
void FeedWork::Stop() {
    stopped_ = true;
    const std::uint64_t one = 1;
    if (stopFile_ >= 0) [[maybe_unused]]
        const auto written = ::write(stopFile_, &one, sizeof one);
}

void FeedWork::Tick() {
    const auto now = Clock::now();
    if (now < nextTick_) return;
    nextTick_ = now + kTick;
    sink_.TakeTick();
}

FeedWork::Wait FeedWork::For(int file, short events, Milliseconds longest) {
    const auto end = Clock::now() + longest;
    for (;;) {
        if (stopped_) return Wait::Stop;
        Tick();
        const auto left = std::chrono::ceil<Milliseconds>(std::min(end, nextTick_) - Clock::now());
        pollfd files[] = {{stopFile_, POLLIN, 0}, {file, events, 0}};
        const int ready = ::poll(files, 2, static_cast<int>(std::max<std::int64_t>(0, left.count())));
        if (stopped_) return Wait::Stop;
        if (ready > 0 && files[1].revents != 0) return Wait::Ready;
        if (Clock::now() >= end) return Wait::Idle;
    }
}

void FeedWork::SayConnected() {
    if (!connected_) sink_.TakeState(FeedState::Connected, {});
    connected_ = true;
}

void FeedWork::SayLost(FeedState state, const std::string& why) {
    lines_.Cut();
    connected_ = false;
    sink_.TakeState(state, why);
}

static bool HasHungUp(int file) {
    pollfd state{file, POLLIN, 0};
    return ::poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

std::string ReadStream(int file, FeedWork& work, StreamKind kind) {
    while (work.For(file, POLLIN) != FeedWork::Wait::Stop) {
        const auto room = work.Lines().Room();
        const ssize_t count = ::read(file, room.data(), room.size());
        if (count > 0) {
            work.Lines().Fill(static_cast<std::size_t>(count));
        } else if (count == 0) {
            if (kind == StreamKind::Bytes || HasHungUp(file)) return {};
            work.For(-1, 0, kNothing);
        } else if (errno != EAGAIN && errno != EINTR) {
            return SystemFault("cannot be read", errno);
        }
    }
    return {};
}

std::string SystemFault(const char* what, int error) {
    return std::string(what) + ": " + std::generic_category().message(error);
}
