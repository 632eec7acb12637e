#include "platform/feeds/Feed.h"

#include <signal.h>

#include <QCoreApplication>
#include <algorithm>
#include <exception>
#include <thread>
#include <utility>

#include "platform/feeds/FeedWork.h"

namespace {

constexpr FeedWork::Milliseconds kFirstPause(250);
constexpr FeedWork::Milliseconds kLongestPause(5000);

FeedReader ReaderOf(FeedKind kind) {
    switch (kind) {
        case FeedKind::Tcp:
            return ReadTcp;
        case FeedKind::Udp:
            return ReadUdp;
        case FeedKind::Serial:
            return ReadSerialPort;
        case FeedKind::Broker:
            return ReadBroker;
        case FeedKind::StandardInput:
            return ReadStandardInput;
        case FeedKind::File:
            break;
    }
    return ReadGrowingFile;
}

std::string InTenths(FeedWork::Milliseconds pause) {
    const auto tenths = (pause.count() + 50) / 100;
    return std::to_string(tenths / 10) + (tenths % 10 ? "." + std::to_string(tenths % 10) : "") + " s";
}

void Receive(const FeedAddress& address, FeedWork& work) {
    const FeedReader read = ReaderOf(address.kind);
    for (auto pause = kFirstPause;;) {
        work.SayLost(FeedState::Connecting, {});
        const FeedEnd end = read(address, work);
        if (work.IsStopped()) return work.SayLost(FeedState::Ended, {});
        if (end.final) return work.SayLost(FeedState::Ended, end.reason);
        if (work.IsConnected()) pause = kFirstPause;
        work.SayLost(FeedState::Waiting, end.reason + "; trying again in " + InTenths(pause));
        work.For(-1, 0, pause);
        pause = std::min(2 * pause, kLongestPause);
    }
}

}  // namespace

struct Feed::Running {
    Running(FeedAddress from, FeedSink& sink) : address(std::move(from)), work(sink) {
        thread = std::thread([this] {
            // Signals are for the main thread.
            sigset_t all;
            ::sigfillset(&all);
            ::pthread_sigmask(SIG_BLOCK, &all, nullptr);
            try {
                Receive(address, work);
            } catch (const std::exception& failure) {
                work.Sink().TakeState(FeedState::Ended, std::string("ended: ") + failure.what());
            }
        });
    }

    const FeedAddress address;
    FeedWork work;
    std::thread thread;
};

Feed::Feed(FeedAddress address, FeedSink& sink)
    : running_(std::make_unique<Running>(std::move(address), sink)) {}

Feed::~Feed() { Stop(); }

const FeedAddress& Feed::Address() const { return running_->address; }

void Feed::AskToStop() { running_->work.Stop(); }

void Feed::Stop() {
    AskToStop();
    if (running_->thread.joinable()) running_->thread.join();
}

void EnsureFeedToolkit() {
    if (QCoreApplication::instance()) return;
    static int count = 1;
    static char name[] = "tavin";
    static char* names[] = {name, nullptr};
    new QCoreApplication(count, names);  // to the end of the process, as windows would have it
}
