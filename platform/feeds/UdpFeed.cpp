#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/uio.h>

#include <cerrno>
#include <cstring>

#include "platform/feeds/Sockets.h"

namespace {

constexpr int kReceiveBuffer = 8 << 20;

// A group's address is listened on and joined.
int JoinGroup(int file, const SocketAddress& address) {
    if (address.bytes.ss_family == AF_INET) {
        const in_addr group = reinterpret_cast<const sockaddr_in*>(&address.bytes)->sin_addr;
        if (!IN_MULTICAST(ntohl(group.s_addr))) return 0;
        const ip_mreq request{group, {htonl(INADDR_ANY)}};
        return ::setsockopt(file, IPPROTO_IP, IP_ADD_MEMBERSHIP, &request, sizeof request);
    }
    const in6_addr group = reinterpret_cast<const sockaddr_in6*>(&address.bytes)->sin6_addr;
    if (!IN6_IS_ADDR_MULTICAST(&group)) return 0;
    const ipv6_mreq request{group, 0};
    return ::setsockopt(file, IPPROTO_IPV6, IPV6_JOIN_GROUP, &request, sizeof request);
}

OpenFile Listen(const SocketAddress& address) {
    OpenFile file(::socket(address.bytes.ss_family, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!file) return file;
    const auto set = [&](int level, int name, int value) {
        ::setsockopt(file.Number(), level, name, &value, sizeof value);
    };
    set(SOL_SOCKET, SO_REUSEADDR, 1);
    set(SOL_SOCKET, SO_RCVBUF, kReceiveBuffer);
    set(SOL_SOCKET, SO_RXQ_OVFL, 1);
    if (address.bytes.ss_family == AF_INET6) set(IPPROTO_IPV6, IPV6_V6ONLY, 0);
    if (::bind(file.Number(), address.Get(), address.length) != 0 || JoinGroup(file.Number(), address) != 0)
        return OpenFile();
    return file;
}

// How many datagrams the system has dropped so far, told with each that arrives.
std::uint32_t DroppedSoFar(msghdr& message, std::uint32_t before) {
    for (cmsghdr* control = CMSG_FIRSTHDR(&message); control; control = CMSG_NXTHDR(&message, control))
        if (control->cmsg_level == SOL_SOCKET && control->cmsg_type == SO_RXQ_OVFL)
            std::memcpy(&before, CMSG_DATA(control), sizeof before);
    return before;
}

}  // namespace

// A datagram holds whole lines.
FeedEnd ReadUdp(const FeedAddress& address, FeedWork& work) {
    FeedEnd end;
    auto found = FindAddresses(address.host, address.port, SOCK_DGRAM, work, end.reason);
    if (found.empty()) return end;
    // The sixth version's socket hears both.
    for (auto& each : found)
        if (address.host.empty() && each.bytes.ss_family == AF_INET6) std::swap(each, found.front());
    OpenFile file;
    for (std::size_t i = 0; i < found.size() && !file; ++i) file = Listen(found[i]);
    if (!file) return {false, SystemFault("the port cannot be listened on", errno)};
    work.SayConnected();
    std::uint32_t dropped = 0;
    while (work.For(file.Number(), POLLIN) != FeedWork::Wait::Stop) {
        const auto room = work.Lines().Room();
        alignas(cmsghdr) char control[256];
        iovec part{room.data(), room.size()};
        msghdr message{};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        const ssize_t count = ::recvmsg(file.Number(), &message, 0);
        if (count < 0 && errno != EAGAIN && errno != EINTR)
            return {false, SystemFault("cannot be read", errno)};
        if (count <= 0) continue;
        const std::uint32_t nowDropped = DroppedSoFar(message, dropped);
        if (nowDropped != dropped) work.Sink().TakeLostLines(nowDropped - dropped, "datagrams came too fast");
        dropped = nowDropped;
        work.Lines().Fill(static_cast<std::size_t>(count));
        work.Lines().EndLine();
    }
    return end;
}
