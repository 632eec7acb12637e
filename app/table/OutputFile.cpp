#include "app/table/OutputFile.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>

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

// The file that a chain of symbolic links leads to, so that the link stays and its target is replaced.
std::string FinalTarget(const std::string& path) {
    char* resolved = ::realpath(path.c_str(), nullptr);
    if (!resolved) return path;
    std::string target = resolved;
    std::free(resolved);
    return target;
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
    struct stat about {};
    const bool exists = ::stat(path.c_str(), &about) == 0;
    if (exists && S_ISDIR(about.st_mode)) return Fail("cannot write", EISDIR);
    ownsFile_ = true;
    if (exists && !S_ISREG(about.st_mode)) {
        file_ = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
        return file_ >= 0 || Fail("cannot write", errno);
    }
    path_ = exists ? FinalTarget(path) : path;
    const auto slash = path_.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : path_.substr(0, slash + 1);
    std::string name = folder + "." + path_.substr(folder.size()) + ".XXXXXX";
    file_ = ::mkstemp(name.data());
    if (file_ < 0) return Fail("cannot write", errno);
    temporary_ = name;
    slot_ = Remember(name);
    ::fchmod(file_, exists ? about.st_mode & 07777 : UsualMode());
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

bool OutputFile::WriteOut(std::string_view bytes) {
    if (!error_.empty()) return false;
    while (!bytes.empty()) {
        const ssize_t written = ::write(file_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return Fail("cannot write", errno);
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

bool OutputFile::Commit() {
    if (!Flush()) return false;
    if (!ownsFile_) return true;
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
