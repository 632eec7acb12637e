// Messages of a broker, each of them whole lines.
#include <mosquitto.h>
#include <poll.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <mutex>

#include "platform/feeds/Sockets.h"

namespace {

constexpr int kKeepAlive = 30;  // seconds

struct Session {
    const FeedAddress& address;
    FeedWork& work;
    std::string fault = {};  // what ended it

    static Session& Of(void* self) { return *static_cast<Session*>(self); }

    // Subscribes with each connection: the broker keeps nothing for this client.
    static void OnConnect(mosquitto* client, void* self, int code) {
        Session& session = Of(self);
        if (code != 0) {
            session.fault = std::string("the broker refuses: ") + mosquitto_connack_string(code);
            return;
        }
        const int asked =
            mosquitto_subscribe(client, nullptr, session.address.path.c_str(), session.address.quality);
        if (asked != MOSQ_ERR_SUCCESS)
            session.fault = "topic \"" + session.address.path + "\": " + mosquitto_strerror(asked);
    }
    static void OnSubscribe(mosquitto*, void* self, int, int count, const int* granted) {
        constexpr int kRefused = 128;
        if (count > 0 && granted[0] < kRefused)
            Of(self).work.SayConnected();
        else
            Of(self).fault = "the broker refuses the topic \"" + Of(self).address.path + "\"";
    }
    static void OnMessage(mosquitto*, void* self, const mosquitto_message* message) {
        LineBuffer& lines = Of(self).work.Lines();
        if (message->payloadlen > 0)
            lines.Append(
                {static_cast<const char*>(message->payload), static_cast<std::size_t>(message->payloadlen)});
        lines.EndLine();
    }
};

std::string FaultText(int code) {
    if (code == MOSQ_ERR_ERRNO) return SystemFault("the connection broke", errno);
    return std::string("the connection broke: ") + mosquitto_strerror(code);
}

bool HasBytes(int file) {
    pollfd ready{file, POLLIN, 0};
    return ::poll(&ready, 1, 0) > 0;
}

// Keeps the session going until it breaks or the work is stopped.
int Serve(mosquitto* client, Session& session) {
    int code = MOSQ_ERR_SUCCESS;
    while (code == MOSQ_ERR_SUCCESS && session.fault.empty()) {
        const int file = mosquitto_socket(client);
        if (file < 0) return MOSQ_ERR_CONN_LOST;
        const auto events = static_cast<short>(POLLIN | (mosquitto_want_write(client) ? POLLOUT : 0));
        if (session.work.For(file, events, FeedWork::Milliseconds(500)) == FeedWork::Wait::Stop) break;
        for (int packets = 0; packets < 1000 && code == MOSQ_ERR_SUCCESS && HasBytes(file); ++packets)
            code = mosquitto_loop_read(client, 1);
        if (code == MOSQ_ERR_SUCCESS && mosquitto_want_write(client)) code = mosquitto_loop_write(client, 1);
        if (code == MOSQ_ERR_SUCCESS) code = mosquitto_loop_misc(client);
    }
    return code;
}

// The library connects with patience of its own, which no stop ends: it is asked only where somebody listens.
std::string ListeningHost(const FeedAddress& address, FeedWork& work, std::string& fault) {
    const OpenFile stream = ConnectStream(address.host, address.port, work, fault);
    SocketAddress peer;
    peer.length = sizeof peer.bytes;
    if (!stream ||
        ::getpeername(stream.Number(), reinterpret_cast<sockaddr*>(&peer.bytes), &peer.length) != 0)
        return {};
    return HostOf(peer);
}

}  // namespace

FeedEnd ReadBroker(const FeedAddress& address, FeedWork& work) {
    static std::once_flag once;
    std::call_once(once, [] { mosquitto_lib_init(); });
    if (mosquitto_sub_topic_check(address.path.c_str()) != MOSQ_ERR_SUCCESS)
        return {true, "\"" + address.path + "\" is no topic; + stands for one level and # for all below"};
    FeedEnd end;
    const std::string host = ListeningHost(address, work, end.reason);
    if (host.empty()) return end;
    Session session{address, work};
    const std::unique_ptr<mosquitto, void (*)(mosquitto*)> client(mosquitto_new(nullptr, true, &session),
                                                                  mosquitto_destroy);
    if (!client) return {false, "there is not enough memory for the connection"};
    if (!address.user.empty())
        mosquitto_username_pw_set(client.get(), address.user.c_str(),
                                  address.password.empty() ? nullptr : address.password.c_str());
    mosquitto_connect_callback_set(client.get(), Session::OnConnect);
    mosquitto_subscribe_callback_set(client.get(), Session::OnSubscribe);
    mosquitto_message_callback_set(client.get(), Session::OnMessage);
    int code = mosquitto_connect(client.get(), host.c_str(), std::atoi(address.port.c_str()), kKeepAlive);
    if (code == MOSQ_ERR_SUCCESS) code = Serve(client.get(), session);
    end.reason = session.fault.empty() ? FaultText(code) : session.fault;
    mosquitto_disconnect(client.get());
    return end;
}
