#include "app/live/Recorder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "app/table/TimeText.h"

namespace app {

namespace {

constexpr std::size_t kEnough = std::size_t{1} << 16;
constexpr std::size_t kMostWaiting = std::size_t{1} << 26;
constexpr std::chrono::milliseconds kLongestWait(500);
constexpr std::chrono::seconds kSafeEvery(1);

Failure Refused(const std::string& path, const char* what, int error) {
    return Refusal(path + ": " + what + ": " + std::strerror(error));
}

}  // namespace

std::string RecordingName(const std::string& output, std::size_t index, std::size_t sources) {
    if (sources == 1 || output == "-") return output;
    const auto slash = output.rfind('/');
    const auto dot = output.rfind('.');
    const bool named = dot != std::string::npos && (slash == std::string::npos || dot > slash + 1) && dot > 0;
    std::string path = output;
    return path.insert(named ? dot : path.size(), "-" + std::to_string(index + 1));
}

Result<std::unique_ptr<Recorder>> Recorder::Begin(const std::string& path, Existing existing) {
    std::unique_ptr<Recorder> recorder(new Recorder(path));
    if (const auto failure = recorder->Open(existing)) return *failure;
    return recorder;
}

std::optional<Failure> Recorder::Open(Existing existing) {
    if (path_ == "-") {
        path_ = "standard output";
        file_ = ::dup(STDOUT_FILENO);
        return file_ < 0 ? std::optional(Refused(path_, "cannot be written", errno)) : std::nullopt;
    }
    const int how = O_RDWR | O_CREAT | O_CLOEXEC | (existing == Existing::Refuse ? O_EXCL : 0);
    file_ = ::open(path_.c_str(), how, 0666);
    if (file_ < 0 && errno == EEXIST)
        return Refusal(path_ + " is there already", "continue it with --append, or replace it with --force");
    if (file_ < 0) return Refused(path_, "cannot be opened for writing", errno);
    struct stat about {};
    regular_ = ::fstat(file_, &about) == 0 && S_ISREG(about.st_mode);
    if (!regular_) return std::nullopt;
    if (::flock(file_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return Refusal(path_ + ": another program records into this file");
    if (existing != Existing::Continue && ::ftruncate(file_, 0) != 0)
        return Refused(path_, "cannot be emptied", errno);
    if (existing == Existing::Continue)
        if (auto failure = FindWholeLines()) return failure;
    keeper_ = std::thread([this] { KeepSafe(); });
    return std::nullopt;
}

// The file goes on behind its last whole line: what a sudden end left behind it is no row.
std::optional<Failure> Recorder::FindWholeLines() {
    std::array<char, 4096> bytes{};
    for (std::int64_t end = ::lseek(file_, 0, SEEK_END); end > 0;) {
        const std::int64_t begin = std::max<std::int64_t>(0, end - static_cast<std::int64_t>(bytes.size()));
        const ssize_t count = ::pread(file_, bytes.data(), static_cast<std::size_t>(end - begin), begin);
        if (count != end - begin) return Refused(path_, "cannot be read", errno);
        const std::string_view text(bytes.data(), static_cast<std::size_t>(count));
        const auto last = text.rfind('\n');
        size_ = begin + static_cast<std::int64_t>(last + 1);
        if (last != std::string_view::npos) break;
        end = begin;
    }
    if (::ftruncate(file_, size_) != 0) return Refused(path_, "cannot be written", errno);
    return std::nullopt;
}

Recorder::~Recorder() { End(); }

std::optional<Failure> Recorder::WriteHeading(const std::string& heading) {
    if (size_ == 0) {
        buffer_ += heading;
        nextWrite_ = Clock::now();
        return std::nullopt;
    }
    std::string there(heading.size(), '\0');
    const ssize_t count = ::pread(file_, there.data(), there.size(), 0);
    if (count == static_cast<ssize_t>(there.size()) && there == heading) return std::nullopt;
    return Refusal(path_ + ": the file begins with other columns than the source has",
                   "record into another file, or replace this one with --force");
}

bool Recorder::HasRoom() {
    if (buffer_.size() < kMostWaiting) return true;
    ++dropped_;
    return false;
}

void Recorder::EndRow() {
    buffer_ += '\n';
    ++rows_;
    if (buffer_.size() >= kEnough && fault_.empty()) Write();
}

void Recorder::AddRow(std::string_view line) {
    if (!HasRoom()) return;
    buffer_ += line;
    EndRow();
}

void Recorder::AddRow(Microseconds arrival, char delimiter, std::string_view line) {
    if (!HasRoom()) return;
    if (arrival < secondBegin_ || arrival >= secondBegin_ + kSecond || second_.empty()) {
        secondBegin_ = arrival / kSecond * kSecond;
        second_ = IsoText(secondBegin_, false) + ".";
    }
    char digits[] = "000000Z";
    auto rest = arrival - secondBegin_;
    for (int i = 5; i >= 0; --i, rest /= 10) digits[i] = static_cast<char>('0' + rest % 10);
    buffer_.append(second_).append(digits, 7) += delimiter;
    buffer_ += line;
    EndRow();
}

void Recorder::Tick() {
    if (!buffer_.empty() && Clock::now() >= nextWrite_) Write();
}

// After a failure nothing of a line that was written in part stays.
void Recorder::Write() {
    std::size_t written = 0;
    while (written < buffer_.size()) {
        const ssize_t count = regular_ ? ::pwrite(file_, buffer_.data() + written, buffer_.size() - written,
                                                  size_ + static_cast<std::int64_t>(written))
                                       : ::write(file_, buffer_.data() + written, buffer_.size() - written);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        written += static_cast<std::size_t>(count);
    }
    const int error = errno;
    fault_.clear();
    if (written < buffer_.size()) {
        fault_ = Refused(path_, "cannot be written", error).message;
        if (regular_) {
            if (written > 0) written = buffer_.rfind('\n', written - 1) + 1;
            [[maybe_unused]] const int cut = ::ftruncate(file_, size_ + static_cast<std::int64_t>(written));
        }
    }
    size_ += static_cast<std::int64_t>(written);
    buffer_.erase(0, written);
    nextWrite_ = Clock::now() + kLongestWait;
    const std::lock_guard hold(lock_);
    dirty_ = true;
    changed_.notify_one();
}

void Recorder::KeepSafe() {
    std::unique_lock hold(lock_);
    while (!ending_) {
        changed_.wait(hold, [this] { return ending_ || dirty_; });
        dirty_ = false;
        hold.unlock();
        ::fdatasync(file_);
        hold.lock();
        changed_.wait_for(hold, kSafeEvery, [this] { return ending_; });
    }
}

std::optional<Failure> Recorder::End() {
    if (file_ < 0) return std::nullopt;
    Write();
    {
        const std::lock_guard hold(lock_);
        ending_ = true;
    }
    changed_.notify_one();
    if (keeper_.joinable()) keeper_.join();
    if (regular_) ::fdatasync(file_);
    ::close(file_);
    file_ = -1;
    if (!fault_.empty()) return Refusal(fault_);
    return std::nullopt;
}

}  // namespace app
