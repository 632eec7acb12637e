#include "app/batch/Processes.h"

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <vector>

namespace app {

namespace {

struct Running {
    std::size_t index;
    pid_t process;
    int pipe;  // its answer comes out here
    std::string answer;
};

bool WriteAll(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(file, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

[[noreturn]] void RunTask(const std::function<std::string(std::size_t)>& task, std::size_t index, int pipe,
                          pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent) ::_exit(1);
    const bool told = WriteAll(pipe, task(index));
    std::fflush(stderr);
    // Not exit(): what the parent has set up for its own end is not this process's.
    ::_exit(told ? 0 : 1);
}

class Pool {
  public:
    Pool(const std::function<std::string(std::size_t)>& task,
         const std::function<void(std::size_t, const TaskEnd&)>& ended)
        : task_(task), ended_(ended) {}

    std::size_t Size() const { return running_.size(); }

    void Start(std::size_t index) {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0) return NotBegun(index);
        std::fflush(nullptr);
        const pid_t parent = ::getpid();
        const pid_t process = ::fork();
        if (process == 0) {
            for (const auto& other : running_) ::close(other.pipe);
            ::close(ends[0]);
            RunTask(task_, index, ends[1], parent);
        }
        ::close(ends[1]);
        if (process > 0) {
            running_.push_back({index, process, ends[0], {}});
            return;
        }
        ::close(ends[0]);
        NotBegun(index);
    }

    // Takes what has come from the tasks, at least something from one of them.
    void Wait() {
        std::vector<pollfd> waiting;
        for (const auto& one : running_) waiting.push_back({one.pipe, POLLIN, 0});
        if (::poll(waiting.data(), waiting.size(), -1) < 0) return;
        for (std::size_t i = waiting.size(); i-- > 0;)
            if (waiting[i].revents && !Read(running_[i])) End(i);
    }

  private:
    // False at the end.
    static bool Read(Running& one) {
        char buffer[16384];
        const ssize_t got = ::read(one.pipe, buffer, sizeof buffer);
        if (got < 0) return errno == EINTR;
        one.answer.append(buffer, static_cast<std::size_t>(got));
        return got > 0;
    }

    void End(std::size_t place) {
        const Running one = std::move(running_[place]);
        running_.erase(running_.begin() + static_cast<std::ptrdiff_t>(place));
        ::close(one.pipe);
        int status = 0;
        while (::waitpid(one.process, &status, 0) < 0 && errno == EINTR) continue;
        TaskEnd end{one.answer, {}};
        if (WIFSIGNALED(status))
            end.fault = std::string("the process was ended by a signal: ") + ::strsignal(WTERMSIG(status));
        else if (WEXITSTATUS(status) != 0)
            end.fault = "the process ended without a result";
        ended_(one.index, end);
    }

    void NotBegun(std::size_t index) {
        ended_(index, {{}, std::string("cannot begin a process: ") + std::strerror(errno)});
    }

    const std::function<std::string(std::size_t)>& task_;
    const std::function<void(std::size_t, const TaskEnd&)>& ended_;
    std::vector<Running> running_;
};

}  // namespace

int UsableCores() {
    cpu_set_t cores;
    if (::sched_getaffinity(0, sizeof cores, &cores) != 0) return 1;
    return std::max(1, CPU_COUNT(&cores));
}

void RunInProcesses(std::size_t count, int most, const std::function<std::string(std::size_t)>& task,
                    const std::function<void(std::size_t, const TaskEnd&)>& ended) {
    Pool pool(task, ended);
    constexpr int kMost = 256;  // each holds a file descriptor
    const auto room = static_cast<std::size_t>(std::clamp(most, 1, kMost));
    std::size_t next = 0;
    while (next < count || pool.Size() > 0) {
        while (next < count && pool.Size() < room) pool.Start(next++);
        if (pool.Size() > 0) pool.Wait();
    }
}

}  // namespace app
