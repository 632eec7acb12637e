// A file that is written to while it is read: lines that are appended arrive, one that is cut is read from
// its beginning, and where another file takes its name the old one is read to its end first.
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/feeds/Sockets.h"

namespace {

constexpr FeedWork::Milliseconds kLook(250);  // folders of other machines send no events

class Follower {
  public:
    Follower(const std::string& path, FeedWork& work) : path_(path), work_(work) {}

    // Reads whatever is there now. Empty, or why it will never work.
    std::string Look() {
        if (std::string fault = Drain(); !fault.empty()) return fault;
        struct stat named {};
        if (::stat(path_.c_str(), &named) != 0) {
            if (!file_ && !missing_)
                work_.SayLost(FeedState::Waiting, SystemFault("waiting for the file", errno));
            missing_ = !file_;
            return {};
        }
        struct stat here {};
        if (file_ && ::fstat(file_.Number(), &here) == 0 && here.st_ino == named.st_ino &&
            here.st_dev == named.st_dev)
            return {};
        // What was written between the last look and the new name.
        if (std::string fault = Drain(); !fault.empty()) return fault;
        return Open() ? Drain() : std::string();
    }

    bool Open() {
        file_ = OpenFile(::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        at_ = 0;
        work_.Lines().Cut();
        if (file_) {
            work_.SayConnected();
        } else if (!missing_) {
            work_.SayLost(FeedState::Waiting, SystemFault("cannot be opened", errno));
        }
        missing_ = !file_;
        return !missing_;
    }

  private:
    std::string Drain() {
        struct stat here {};
        if (!file_ || ::fstat(file_.Number(), &here) != 0) return {};
        if (here.st_size < at_) {
            at_ = 0;
            work_.Lines().Cut();
        }
        while (work_.For(-1, 0, FeedWork::Milliseconds(0)) != FeedWork::Wait::Stop) {
            const auto room = work_.Lines().Room();
            const ssize_t count = ::pread(file_.Number(), room.data(), room.size(), at_);
            if (count < 0 && errno != EINTR) return SystemFault("cannot be read", errno);
            if (count == 0) break;
            if (count < 0) continue;
            at_ += count;
            work_.Lines().Fill(static_cast<std::size_t>(count));
        }
        return {};
    }

    const std::string& path_;
    FeedWork& work_;
    OpenFile file_;
    off_t at_ = 0;
    bool missing_ = false;
};

// Pipes and devices are streams.
FeedEnd ReadDevice(const FeedAddress& address, FeedWork& work) {
    const OpenFile file(::open(address.path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file) return {false, SystemFault("cannot be opened", errno)};
    if (::isatty(file.Number()))
        return {true, "this is a serial port; say how it is set up: serial:" + address.path + "?baud=9600"};
    work.SayConnected();
    std::string reason = ReadStream(file.Number(), work);
    work.Lines().EndLine();
    return {false, reason.empty() ? "the writer is gone" : reason};
}

}  // namespace

FeedEnd ReadGrowingFile(const FeedAddress& address, FeedWork& work) {
    struct stat about {};
    if (::stat(address.path.c_str(), &about) == 0) {
        if (S_ISDIR(about.st_mode)) return {true, "this is a folder"};
        if (!S_ISREG(about.st_mode)) return ReadDevice(address, work);
    }
    const auto slash = address.path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : address.path.substr(0, slash + 1);
    const OpenFile events(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (events) ::inotify_add_watch(events.Number(), folder.c_str(), IN_MODIFY | IN_CREATE | IN_MOVED_TO);
    Follower follower(address.path, work);
    for (;;) {
        if (std::string fault = follower.Look(); !fault.empty()) return {false, fault};
        switch (work.For(events.Number(), POLLIN, kLook)) {
            case FeedWork::Wait::Stop:
                return {};
            case FeedWork::Wait::Ready:
                for (char bytes[4096]; ::read(events.Number(), bytes, sizeof bytes) > 0;) continue;
                break;
            case FeedWork::Wait::Idle:
                break;
        }
    }
}
