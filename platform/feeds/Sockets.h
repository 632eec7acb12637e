// Addresses and sockets of the internet for the readers of a feed. Nothing here waits beyond a stop.
#pragma once

#include <sys/socket.h>

#include <string>
#include <vector>

#include "platform/feeds/FeedWork.h"

// A file of the system's that is closed with this object.
class OpenFile {
  public:
    explicit OpenFile(int file = -1) : file_(file) {}
    ~OpenFile() { Close(); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    OpenFile(OpenFile&& other) noexcept : file_(other.Release()) {}
    OpenFile& operator=(OpenFile&& other) noexcept;

    int Number() const { return file_; }
    explicit operator bool() const { return file_ >= 0; }
    int Release();
    void Close();

  private:
    int file_;
};

struct SocketAddress {
    sockaddr_storage bytes{};
    socklen_t length = 0;
    const sockaddr* Get() const { return reinterpret_cast<const sockaddr*>(&bytes); }
};

// All addresses of a host; with an empty one those to listen on. Empty where there are none: `fault` says
// why. Names are looked up beside this thread, for as long as that takes, so that a stop does not wait for
// it.
std::vector<SocketAddress> FindAddresses(const std::string& host, const std::string& port, int socketType,
                                         FeedWork& work, std::string& fault);
// A stream to the first address of the host that answers; else `fault` says why there is none.
OpenFile ConnectStream(const std::string& host, const std::string& port, FeedWork& work, std::string& fault);
// The address in figures.
std::string HostOf(const SocketAddress& address);
