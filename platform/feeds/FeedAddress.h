// Where lines come from, as a user writes it: a file that grows, tcp://host:port, udp://:port,
// serial:/dev/ttyUSB0?baud=115200, mqtt://host/topic, or - for standard input.
#pragma once

#include <string>
#include <string_view>

enum class FeedKind { File, Tcp, Udp, Serial, Broker, StandardInput };

struct FeedAddress {
    FeedKind kind = FeedKind::File;
    std::string shown;  // as it was written, without a password
    std::string host;   // of udp: the one to listen on, empty for all
    std::string port;
    std::string path;  // of the file or the device; the topic of a broker
    std::string user;
    std::string password;
    int quality = 0;  // of service: 0 at most once, 1 at least once
    int baud = 9600;
    std::string frame = "8N1";  // data bits, parity N, E or O, stop bits
    std::string flow = "none";  // or hardware or software
};

// Reads `text`; else `fault` says what is wrong with it and what was expected.
bool ReadFeedAddress(std::string_view text, FeedAddress& address, std::string& fault);
// The forms of addresses, one a line, for help.
const char* FeedAddressForms();
