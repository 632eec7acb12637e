// The feeds that are streams of bytes: a server's, standard input, and a serial port.
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QEventLoop>
#include <QSerialPort>
#include <cerrno>

#include "platform/feeds/Sockets.h"

FeedEnd ReadTcp(const FeedAddress& address, FeedWork& work) {
    FeedEnd end;
    const OpenFile file = ConnectStream(address.host, address.port, work, end.reason);
    if (!file) return end;
    work.SayConnected();
    end.reason = ReadStream(file.Number(), work);
    if (end.reason.empty()) end.reason = "the other side closed the connection";
    return end;
}

// Also from a file, which poll() finds ready always. The last line may lack its end.
FeedEnd ReadStandardInput(const FeedAddress&, FeedWork& work) {
    work.SayConnected();
    FeedEnd end{true, ReadStream(STDIN_FILENO, work)};
    work.Lines().EndLine();
    return end;
}

namespace {

constexpr FeedWork::Milliseconds kAtOnce(30);

bool Configure(QSerialPort& port, const FeedAddress& address) {
    constexpr std::pair<char, QSerialPort::Parity> kParities[] = {
        {'N', QSerialPort::NoParity}, {'E', QSerialPort::EvenParity}, {'O', QSerialPort::OddParity}};
    QSerialPort::Parity parity = QSerialPort::NoParity;
    for (const auto& [letter, value] : kParities)
        if (address.frame[1] == letter) parity = value;
    const auto flow = address.flow == "hardware"   ? QSerialPort::HardwareControl
                      : address.flow == "software" ? QSerialPort::SoftwareControl
                                                   : QSerialPort::NoFlowControl;
    return port.setBaudRate(address.baud) &&
           port.setDataBits(static_cast<QSerialPort::DataBits>(address.frame[0] - '0')) &&
           port.setParity(parity) &&
           port.setStopBits(address.frame[2] == '2' ? QSerialPort::TwoStop : QSerialPort::OneStop) &&
           port.setFlowControl(flow);
}

}  // namespace

// The port is set up by the toolkit and read here: the toolkit's own reader repeats the error of a device
// that was unplugged for ever.
FeedEnd ReadSerialPort(const FeedAddress& address, FeedWork& work) {
    QEventLoop events;  // which the port asks for, and which never runs
    QSerialPort port;
    port.setPortName(QString::fromStdString(address.path));
    if (!Configure(port, address) || !port.open(QIODevice::ReadOnly))
        return {false, "the port cannot be opened: " + port.errorString().toStdString()};
    work.SayConnected();
    // Bytes that are there at once belong to a line that began before anybody listened.
    if (work.For(static_cast<int>(port.handle()), POLLIN, kAtOnce) == FeedWork::Wait::Ready)
        work.Lines().SkipLine();
    std::string reason = ReadStream(static_cast<int>(port.handle()), work, StreamKind::Terminal);
    return {false, reason.empty() ? "the device is gone" : reason};
}
