// What the tests of feeds need: a sink that can be waited for, programs that run beside, and sockets.
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

#include "platform/feeds/Feed.h"
#include "tests/core/TestFolder.h"

// Keeps what it is given.
class KeepingSink : public FeedSink {
  public:
    void TakeLines(std::string_view lines) override {
        Change([&] { text += lines; });
    }
    void TakeLostLines(std::size_t count, const char*) override {
        Change([&] { lost += count; });
    }
    void TakeState(FeedState now, const std::string& why) override {
        Change([&] {
            state = now;
            if (!why.empty()) message = why;
        });
    }
    void TakeTick() override {
        Change([&] { ++ticks; });
    }

    template <class Condition>
    bool WaitFor(Condition&& condition) {
        std::unique_lock hold(lock_);
        return changed_.wait_for(hold, std::chrono::seconds(60), condition);
    }
    bool WaitForText(const std::string& wanted) {
        const bool came = WaitFor([&] { return text == wanted; });
        EXPECT_EQ(text, wanted) << message;
        return came;
    }
    bool WaitForState(FeedState wanted) {
        return WaitFor([&] { return state == wanted; });
    }

    std::string text;
    std::size_t lost = 0;
    FeedState state = FeedState::Connecting;
    std::string message;
    int ticks = 0;

  private:
    template <class Work>
    void Change(Work&& work) {
        const std::lock_guard hold(lock_);
        work();
        changed_.notify_all();
    }

    std::mutex lock_;
    std::condition_variable changed_;
};

// A program that runs beside the test and ends with it.
class Beside {
  public:
    explicit Beside(std::vector<std::string> words) {
        std::vector<char*> raw;
        for (auto& word : words) raw.push_back(word.data());
        raw.push_back(nullptr);
        const pid_t parent = ::getpid();
        process_ = ::fork();
        if (process_ != 0) return;
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent) ::_exit(127);
        ::execvp(raw[0], raw.data());
        ::_exit(127);
    }
    ~Beside() { End(SIGKILL); }
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;

    void Signal(int signal) const { ::kill(process_, signal); }
    // Its exit code.
    int Wait() {
        int status = 0;
        ::waitpid(process_, &status, 0);
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    void End(int signal) {
        if (process_ <= 0) return;
        Signal(signal);
        Wait();
    }

  private:
    pid_t process_ = -1;
};

// A socket on 127.0.0.1: a server of streams, or one that receives datagrams.
class LocalSocket {
  public:
    explicit LocalSocket(int type = SOCK_STREAM, int port = 0)
        : file_(::socket(AF_INET, type | SOCK_CLOEXEC, 0)) {
        const int yes = 1;
        ::setsockopt(file_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        sockaddr_in address = Address(port);
        bound_ = ::bind(file_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
        if (type == SOCK_STREAM) ::listen(file_, 4);
        socklen_t length = sizeof address;
        ::getsockname(file_, reinterpret_cast<sockaddr*>(&address), &length);
        port_ = ntohs(address.sin_port);
    }
    ~LocalSocket() { ::close(file_); }
    LocalSocket(const LocalSocket&) = delete;
    LocalSocket& operator=(const LocalSocket&) = delete;

    bool IsBound() const { return bound_; }
    std::string Port() const { return std::to_string(port_); }
    // The connection that somebody makes.
    int Accept() const { return ::accept(file_, nullptr, nullptr); }
    void SendTo(const std::string& port, const std::string& bytes) const {
        const sockaddr_in address = Address(std::stoi(port));
        ::sendto(file_, bytes.data(), bytes.size(), 0, reinterpret_cast<const sockaddr*>(&address),
                 sizeof address);
    }
    static bool SendAll(int file, std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t count = ::send(file, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (count <= 0) return false;
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }
    // A port that nobody has.
    static std::string FreePort(int type = SOCK_STREAM) { return LocalSocket(type).Port(); }

  private:
    static sockaddr_in Address(int port) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return address;
    }
    int file_;
    bool bound_ = false;
    int port_ = 0;
};

inline FeedAddress AddressOf(const std::string& text) {
    FeedAddress address;
    std::string fault;
    EXPECT_TRUE(ReadFeedAddress(text, address, fault)) << fault;
    return address;
}

// Lines "0", "1" ... with something behind to make them longer.
inline std::string NumberedLines(int begin, int end) {
    std::string lines;
    for (int i = begin; i < end; ++i) lines += std::to_string(i) + ",21.5,0.25\n";
    return lines;
}
