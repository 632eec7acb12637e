#include "platform/feeds/LineBuffer.h"

#include <gtest/gtest.h>

#include "tests/feeds/FeedFixture.h"

namespace {

TEST(LineBuffer, CutsWholeLinesWhereverThePiecesEnd) {
    const struct {
        const char* bytes;
        const char* lines;
    } cases[] = {{"1\n22\n333\n4", "1\n22\n333\n"},
                 {"1\r\n22\r\n3", "1\r\n22\r\n"},
                 {"1\r22\r333\r4", "1\n22\n333\n"},
                 {"\n\n1\n", "\n\n1\n"}};
    for (const auto& one : cases) {
        const std::string bytes = one.bytes;
        for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
            KeepingSink sink;
            LineBuffer buffer(sink);
            buffer.Append(bytes.substr(0, cut));
            buffer.Append(bytes.substr(cut));
            EXPECT_EQ(sink.text, one.lines) << bytes << " cut at " << cut;
            buffer.Cut();
            EXPECT_EQ(sink.lost, bytes.back() == '\n' ? 0u : 1u) << bytes;
        }
    }
}

TEST(LineBuffer, GoesOnBehindALineWithoutEnd) {
    KeepingSink sink;
    LineBuffer buffer(sink);
    const std::string junk(1 << 20, 'x');
    for (int i = 0; i < 100; ++i) buffer.Append(junk);
    buffer.Append("tail\n1\n" + std::string(LineBuffer::kLongest - 1, 'y') + "\n2\n");
    EXPECT_EQ(sink.lost, 1u);
    EXPECT_EQ(sink.text, "1\n" + std::string(LineBuffer::kLongest - 1, 'y') + "\n2\n");
    buffer.Append("5");
    buffer.EndLine();
    buffer.EndLine();
    EXPECT_EQ(sink.text.substr(sink.text.size() - 4), "2\n5\n");
}

TEST(FeedAddress, IsReadOrRefusedWithWhatWasExpected) {
    const FeedAddress broker = AddressOf("mqtt://me:s%40crt@[::1]:1884/a/%2B/c?qos=1");
    EXPECT_EQ(broker.user + " " + broker.password + " " + broker.host + " " + broker.port + " " + broker.path,
              "me s@crt ::1 1884 a/+/c");
    EXPECT_EQ(broker.quality, 1);
    EXPECT_EQ(broker.shown.find("crt"), std::string::npos);
    EXPECT_EQ(AddressOf("mqtt://host/t").port, "1883");
    const FeedAddress serial = AddressOf("serial:/dev/ttyS0?baud=115200&frame=7E2&flow=hardware");
    EXPECT_EQ(serial.path + " " + std::to_string(serial.baud) + serial.frame + serial.flow,
              "/dev/ttyS0 1152007E2hardware");
    EXPECT_EQ(AddressOf("data?baud=1.csv").path, "data?baud=1.csv");
    EXPECT_EQ(AddressOf("file:tcp://x").path, "tcp://x");
    EXPECT_EQ(AddressOf("-").kind, FeedKind::StandardInput);
    const struct {
        const char* text;
        const char* fault;
    } cases[] = {{"", "address is expected"},
                 {"http://x/y", "no such kind"},
                 {"tcp://host", "port"},
                 {"tcp://host:0", "port"},
                 {"tcp://host:65536", "port"},
                 {"tcp://:90", "host is missing"},
                 {"tcp://h:90/x", "behind the port"},
                 {"tcp://h:90?qos=1", "no setting \"qos\""},
                 {"tcp://me@h:90", "user name"},
                 {"udp://", "port"},
                 {"mqtt://h", "topic"},
                 {"mqtt://h/t?qos=2", "0 or 1"},
                 {"serial:", "device"},
                 {"serial:/dev/x?baud=fast", "a rate"},
                 {"serial:/dev/x?frame=9N1", "8N1"},
                 {"serial:/dev/x?speed=1", "known are baud, frame, flow"}};
    for (const auto& one : cases) {
        FeedAddress address;
        std::string fault;
        EXPECT_FALSE(ReadFeedAddress(one.text, address, fault)) << one.text;
        EXPECT_NE(fault.find(one.fault), std::string::npos) << one.text << ": " << fault;
    }
}

}  // namespace
