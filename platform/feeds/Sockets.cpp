#include "platform/feeds/Sockets.h"

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace {

constexpr FeedWork::Milliseconds kPatience(10000);

// A look-up that may outlive who asked for it.
struct LookUp {
    std::string host;
    std::string port;
    addrinfo hints{};
    OpenFile done{::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    std::mutex lock;  // of all below
    std::vector<SocketAddress> found;
    std::string fault;

    void Run() {
        addrinfo* all = nullptr;
        const int code = ::getaddrinfo(host.empty() ? nullptr : host.c_str(), port.c_str(), &hints, &all);
        {
            const std::lock_guard hold(lock);
            if (code != 0) fault = "the host is not known: " + std::string(::gai_strerror(code));
            for (const addrinfo* each = all; each; each = each->ai_next) {
                SocketAddress& address = found.emplace_back();
                std::memcpy(&address.bytes, each->ai_addr, each->ai_addrlen);
                address.length = each->ai_addrlen;
            }
        }
        if (all) ::freeaddrinfo(all);
        const std::uint64_t one = 1;
        [[maybe_unused]] const auto written = ::write(done.Number(), &one, sizeof one);
    }
};

// Zero, or the error.
int Connect(int file, const SocketAddress& address, FeedWork& work) {
    if (::connect(file, address.Get(), address.length) == 0) return 0;
    if (errno != EINPROGRESS) return errno;
    switch (work.For(file, POLLOUT, kPatience)) {
        case FeedWork::Wait::Stop:
            return ECANCELED;
        case FeedWork::Wait::Idle:
            return ETIMEDOUT;
        case FeedWork::Wait::Ready:
            break;
    }
    int error = 0;
    socklen_t length = sizeof error;
    return ::getsockopt(file, SOL_SOCKET, SO_ERROR, &error, &length) == 0 ? error : errno;
}

// A peer that vanished without a word is noticed within a minute.
void KeepAlive(int file) {
    const auto set = [file](int level, int name, int value) {
        ::setsockopt(file, level, name, &value, sizeof value);
    };
    set(SOL_SOCKET, SO_KEEPALIVE, 1);
    set(IPPROTO_TCP, TCP_KEEPIDLE, 20);
    set(IPPROTO_TCP, TCP_KEEPINTVL, 10);
    set(IPPROTO_TCP, TCP_KEEPCNT, 4);
}

}  // namespace

OpenFile& OpenFile::operator=(OpenFile&& other) noexcept {
    if (this != &other) {
        Close();
        file_ = other.Release();
    }
    return *this;
}

int OpenFile::Release() { return std::exchange(file_, -1); }

void OpenFile::Close() {
    if (file_ >= 0) ::close(std::exchange(file_, -1));
}

std::vector<SocketAddress> FindAddresses(const std::string& host, const std::string& port, int socketType,
                                         FeedWork& work, std::string& fault) {
    const auto lookUp = std::make_shared<LookUp>();
    lookUp->host = host;
    lookUp->port = port;
    lookUp->hints.ai_socktype = socketType;
    lookUp->hints.ai_flags = host.empty() ? AI_PASSIVE : 0;
    std::thread([lookUp] { lookUp->Run(); }).detach();
    if (work.For(lookUp->done.Number(), POLLIN, 3 * kPatience) != FeedWork::Wait::Ready) {
        fault = "the look-up of the host takes too long";
        return {};
    }
    const std::lock_guard hold(lookUp->lock);
    fault = lookUp->fault;
    return lookUp->found;
}

OpenFile ConnectStream(const std::string& host, const std::string& port, FeedWork& work, std::string& fault) {
    for (const SocketAddress& address : FindAddresses(host, port, SOCK_STREAM, work, fault)) {
        OpenFile file(::socket(address.bytes.ss_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        const int error = file ? Connect(file.Number(), address, work) : errno;
        if (error != 0) {
            fault = SystemFault("no connection", error);
            continue;
        }
        KeepAlive(file.Number());
        return file;
    }
    return OpenFile();
}

std::string HostOf(const SocketAddress& address) {
    char host[NI_MAXHOST] = "";
    ::getnameinfo(address.Get(), address.length, host, sizeof host, nullptr, 0, NI_NUMERICHOST);
    return host;
}
