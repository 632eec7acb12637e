#include "app/table/OutputFile.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <ctime>

namespace app {

namespace {

// Names of unfinished files where a signal handler may read them: it can call unlink, but not much more.
struct Unfinished {
    std::atomic<bool> used{false};
    std::array<char, 4096> path{};
};
std::array<Unfinished, 4> unfinished;

int Remember(const std::string& path) {
    for (std::size_t i = 0; i < unfinished.size(); ++i) {
        Unfinished& slot = unfinished[i];
        if (slot.used || path.size() >= slot.path.size()) continue;
        std::memcpy(slot.path.data(), path.c_str(), path.size() + 1);
        slot.used = true;
        return static_cast<int>(i);
    }
    return -1;
}

void Forget(int slot) {
    if (slot >= 0) unfinished[static_cast<std::size_t>(slot)].used = false;
}

extern "C" void EndBySignal(int number) {
    for (auto& slot : unfinished)
        if (slot.used) ::unlink(slot.path.data());
    ::signal(number, SIG_DFL);
    ::raise(number);
}

// The file that a chain of symbolic links leads to, so that the link stays and its target is replaced or
// made. Empty with errno set when the chain has no end.
std::string FinalTarget(std::string path) {
    constexpr int kMostLinks = 40;
    for (int i = 0; i < kMostLinks; ++i) {
        std::array<char, PATH_MAX> target{};
        const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
        if (length < 0) return path;
        const std::string next(target.data(), static_cast<std::size_t>(length));
        const auto slash = path.rfind('/');
        path = next.front() == '/' || slash == std::string::npos ? next : path.substr(0, slash + 1) + next;
    }
    errno = ELOOP;
    return {};
}

// A name that no file has, short whatever the target's is.
std::string TemporaryName(const std::string& folder) {
    static std::atomic<unsigned> made{0};
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    char name[64];
    std::snprintf(name, sizeof name, ".tavin-%lx-%lx-%x", static_cast<unsigned long>(::getpid()),
                  static_cast<unsigned long>(now.tv_nsec), made++);
    return folder + name;
}

mode_t UsualMode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

}  // namespace

void RemoveUnfinishedFilesOnSignals() {
    struct sigaction action {};
    action.sa_handler = EndBySignal;
    sigemptyset(&action.sa_mask);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGQUIT, SIGXFSZ}) {
        struct sigaction before {};
        // A signal that the caller has the program ignore stays ignored.
        if (::sigaction(number, nullptr, &before) == 0 && before.sa_handler == SIG_IGN) continue;
        ::sigaction(number, &action, nullptr);
    }
}

OutputFile::~OutputFile() { Discard(); }

bool OutputFile::Open(const std::string& path) {
    path_ = path;
    buffer_.reserve(kCapacity);
    if (path == "-") {
        file_ = STDOUT_FILENO;
        return true;
    }
    if (IsGzipName(path)) packer_ = std::make_unique<GzipPacker>();
    path_ = FinalTarget(path);
    if (path_.empty()) {
        path_ = path;
        return Fail("cannot write", ELOOP);
    }
    struct stat about {};
    const bool exists = ::stat(path_.c_str(), &about) == 0;
    if (exists && S_ISDIR(about.st_mode)) return Fail("cannot write", EISDIR);
    ownsFile_ = true;
    if (exists && !S_ISREG(about.st_mode)) {
        file_ = ::open(path_.c_str(), O_WRONLY | O_CLOEXEC);
        return file_ >= 0 || Fail("cannot write", errno);
    }
    const auto slash = path_.rfind('/');
    folder_ = slash == std::string::npos ? "" : path_.substr(0, slash + 1);
    if (path_.size() - folder_.size() > NAME_MAX) return Fail("cannot write", ENAMETOOLONG);
    if (!OpenBeside(folder_)) return Fail("cannot write", errno);
    if (exists)
        TakeOver(about);
    else
        ::fchmod(file_, UsualMode());
    return true;
}

bool OutputFile::OpenBeside(const std::string& folder) {
    const char* const place = folder.empty() ? "." : folder.c_str();
    // Naming the file later goes through this folder.
    if (::access("/proc/self/fd", X_OK) == 0) file_ = ::open(place, O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
    unnamed_ = file_ >= 0;
    if (unnamed_) return true;
    const std::string name = TemporaryName(folder);
    file_ = ::open(name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600);
    if (file_ < 0) return false;
    temporary_ = name;
    slot_ = Remember(name);
    return true;
}

void OutputFile::TakeOver(const struct stat& about) {
    struct stat own {};
    ::fstat(file_, &own);
    const bool owner =
        own.st_uid == about.st_uid || ::fchown(file_, about.st_uid, static_cast<gid_t>(-1)) == 0;
    const bool group =
        own.st_gid == about.st_gid || ::fchown(file_, static_cast<uid_t>(-1), about.st_gid) == 0;
    // The permissions of a group that could not be kept would go to another one.
    const bool mode = ::fchmod(file_, about.st_mode & (group ? 0777 : 0707)) == 0;
    if (!owner)
        lost_ = path_ + " belongs to you now: its owner could not be kept";
    else if (!group)
        lost_ = path_ + " has your group now: its group could not be kept";
    else if (!mode)
        lost_ = "the permissions of " + path_ + " could not be kept";
}

// Gives a file without a name one beside its target.
bool OutputFile::Name() {
    if (!unnamed_) return true;
    const std::string self = "/proc/self/fd/" + std::to_string(file_);
    const std::string name = TemporaryName(folder_);
    if (::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) != 0) return false;
    unnamed_ = false;
    temporary_ = name;
    slot_ = Remember(name);
    return true;
}

bool OutputFile::WriteThrough(std::string_view bytes) {
    if (!Flush()) return false;
    if (bytes.size() > kCapacity) return WriteOut(bytes);
    buffer_.append(bytes);
    return true;
}

bool OutputFile::Flush() {
    const bool written = WriteOut(buffer_);
    buffer_.clear();
    return written;
}

bool OutputFile::WriteOut(std::string_view bytes, bool isLast) {
    if (!error_.empty()) return false;
    if (text_) {
        text_->append(bytes);
        return true;
    }
    if (!packer_) return WriteRaw(bytes);
    const bool packed = packer_->Add(bytes, isLast, [&](std::string_view piece) { return WriteRaw(piece); });
    return packed || !error_.empty() ? packed : Fail("cannot write", ENOMEM);
}

bool OutputFile::WriteRaw(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return Fail("cannot write", errno);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool OutputFile::Commit() {
    if (!Flush() || (packer_ && !WriteOut({}, true))) return false;
    if (!ownsFile_) return true;
    const bool regular = unnamed_ || !temporary_.empty();
    if (regular && (::fsync(file_) != 0 || !Name())) return Fail("cannot write", errno);
    if (::close(std::exchange(file_, -1)) != 0) return Fail("cannot write", errno);
    if (temporary_.empty()) return true;
    if (::rename(temporary_.c_str(), path_.c_str()) != 0) return Fail("cannot write", errno);
    Forget(std::exchange(slot_, -1));
    temporary_.clear();
    return true;
}

bool OutputFile::Fail(const char* what, int error) {
    const std::string name = path_ == "-" ? "standard output" : path_;
    if (error_.empty()) error_ = std::string(what) + " " + name + ": " + std::strerror(error);
    Discard();
    return false;
}

void OutputFile::Discard() {
    if (ownsFile_ && file_ >= 0) ::close(std::exchange(file_, -1));
    if (temporary_.empty()) return;
    ::unlink(temporary_.c_str());
    temporary_.clear();
    Forget(std::exchange(slot_, -1));
}

}  // namespace app
