// Live rows end to end: from a socket of this machine to the rings, and to the picture of a live window of
// 1200 by 800 pixels or so, without a display.
#include <arpa/inet.h>
#include <benchmark/benchmark.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <string>
#include <thread>

#include "app/workbench/CLiveFrame.h"
#include "app/workbench/CWorkbenchFrame.h"
#include "app/workbench/WorkbenchResources.h"

namespace {

using namespace app;
using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

// A server that one feed connects to.
class Server {
  public:
    Server() : listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address);
        ::listen(listener_, 1);
        socklen_t length = sizeof address;
        ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &length);
        port_ = ntohs(address.sin_port);
    }
    ~Server() {
        ::close(connection_);
        ::close(listener_);
    }
    LiveWishes Wishes() const {
        LiveWishes wishes;
        std::string fault;
        wishes.addresses.resize(1);
        ReadFeedAddress("tcp://127.0.0.1:" + std::to_string(port_), wishes.addresses.front(), fault);
        return wishes;
    }
    void Send(const std::string& bytes) {
        if (connection_ < 0) connection_ = ::accept(listener_, nullptr, nullptr);
        for (std::size_t at = 0; at < bytes.size();) {
            const ssize_t count = ::send(connection_, bytes.data() + at, bytes.size() - at, MSG_NOSIGNAL);
            if (count <= 0) return;
            at += static_cast<std::size_t>(count);
        }
    }

  private:
    int listener_;
    int connection_ = -1;
    int port_ = 0;
};

// `channels` values at a time in seconds since 1970, ten thousand rows a second.
std::string Rows(std::int64_t begin, int count, int channels) {
    std::string text;
    char cell[64];
    for (std::int64_t row = begin; row < begin + count; ++row) {
        std::snprintf(cell, sizeof cell, "%.4f", 1764000000 + static_cast<double>(row) * 1e-4);
        text += cell;
        for (int i = 0; i < channels; ++i) {
            std::snprintf(cell, sizeof cell, ",%.3f",
                          i + std::sin(static_cast<double>(row) * 1e-3 + i) +
                              0.001 * static_cast<double>(row * 7919 % 50));
            text += cell;
        }
        text += '\n';
    }
    return text;
}

// Lines of a time and three values, to their rings; the time of the whole, on all threads.
void LinesThroughASocket(benchmark::State& state) {
    constexpr int kLines = 1000000;
    const std::string lines = Rows(0, kLines, 3);
    for (auto _ : state) {
        Server server;
        LiveSession session(server.Wishes());
        const auto begin = Clock::now();
        std::thread sender([&] { server.Send(lines); });
        while (session.Rows() < kLines) session.TakeRows();
        state.SetIterationTime(SecondsSince(begin));
        sender.join();
        if (session.Series(2).GetAppended() != kLines) state.SkipWithError("wrong result");
    }
    state.SetItemsProcessed(state.iterations() * kLines);
}
BENCHMARK(LinesThroughASocket)->UseManualTime()->Unit(benchmark::kMillisecond);

// A main window with one live window. The process has one such program at a time.
struct Program {
    explicit Program(const LiveWishes& wishes) {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
        ::setenv("TAVIN_REGISTRY", "/dev/null/none", 0);
        static int count = 1;
        static char name[] = "tavin_bench";
        static char* names[] = {name, nullptr};
        static CWindowApp application(count, names, "Tavin");
        static const WorkbenchResources resources;
        application.SetRegistryKey("Tavin");
        SetMessageBoxHandler([](const char*, UINT) { return IDOK; });
        frame = new CWorkbenchFrame;
        application.m_pMainWnd = frame;
        frame->CreateWorkbench();
        frame->ShowWindow(SW_SHOWNORMAL);
        live = frame->OpenLive(wishes);
    }
    ~Program() { frame->DestroyWindow(); }
    void Await(std::uint64_t rows) {
        while (live->Session().Rows() < rows) live->TakeRows();
    }
    CWorkbenchFrame* frame = nullptr;
    CLiveFrame* live = nullptr;
};

// One picture: what arrived in a sixtieth of a second at 10 kHz is taken, appended and painted. Of eight
// series 60 s are in the window.
void LivePictureOfEight(benchmark::State& state) {
    constexpr int kChannels = 8;
    constexpr int kPerPicture = 167;
    Server server;
    LiveWishes wishes = server.Wishes();
    wishes.window = 60;
    Program program(wishes);
    std::int64_t sent = 0;
    const auto send = [&](int rows) {
        server.Send(Rows(sent, rows, kChannels));
        sent += rows;
    };
    for (int i = 0; i < 62; ++i) {
        send(10000);
        program.Await(static_cast<std::uint64_t>(sent));
    }
    CLiveView& view = *program.live->LiveView();
    view.UpdateWindow();
    const auto before = view.Pictures();
    for (auto _ : state) {
        send(kPerPicture);
        // What the feed's thread does stays out of the time.
        while (program.live->Session().Waiting() < kPerPicture) std::this_thread::yield();
        const auto begin = Clock::now();
        program.live->TakeRows();
        view.UpdateWindow();
        state.SetIterationTime(SecondsSince(begin));
    }
    const auto after = view.Pictures();
    state.counters["whole"] = after.whole - before.whole;
    if (after.advanced == before.advanced) state.SkipWithError("no picture moved on");
}
BENCHMARK(LivePictureOfEight)->UseManualTime()->Unit(benchmark::kMicrosecond);

// Ten million samples kept, all of them in the window, and a thousand more.
void LivePictureOfTenMillion(benchmark::State& state) {
    constexpr int kKept = 10000000;
    Server server;
    LiveWishes wishes = server.Wishes();
    wishes.window = 1000;
    wishes.capacity = kKept;
    Program program(wishes);
    server.Send(Rows(0, 1000, 1));
    program.Await(1000);
    COnlineSource& series = program.live->Session().Series(0);
    std::int64_t sent = 1000;
    std::vector<CPoint> more;
    for (; sent < kKept; ++sent)
        more.emplace_back(static_cast<int>(sent),
                          static_cast<int>(1000 * std::sin(static_cast<double>(sent) * 1e-3)));
    series.AddData(more.data(), static_cast<long>(more.size()));
    CLiveView& view = *program.live->LiveView();
    std::uint64_t rows = 1000;
    const auto send = [&] {
        server.Send(Rows(sent, 1000, 1));
        sent += 1000;
        rows += 1000;
        while (program.live->Session().Waiting() < 1000) std::this_thread::yield();
    };
    send();
    program.Await(rows);
    view.UpdateWindow();
    for (auto _ : state) {
        send();
        const auto begin = Clock::now();
        program.live->TakeRows();
        view.UpdateWindow();
        state.SetIterationTime(SecondsSince(begin));
    }
    if (series.GetCount() != kKept) state.SkipWithError("wrong result");
}
BENCHMARK(LivePictureOfTenMillion)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(200);

}  // namespace
