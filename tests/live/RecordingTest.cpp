// Recordings, live sources, and the command that ties them together.
#include <sys/resource.h>

#include <algorithm>
#include <random>

#include "app/live/LiveSource.h"
#include "app/table/CellNumber.h"
#include "tests/app/Files.h"
#include "tests/feeds/FeedFixture.h"

namespace app {
namespace {

std::unique_ptr<Recorder> Begun(const std::string& path, Existing existing = Existing::Refuse) {
    auto recorder = Recorder::Begin(path, existing);
    EXPECT_TRUE(recorder) << recorder.Error().message;
    return recorder ? std::move(*recorder) : nullptr;
}

TEST(Recorder, ContinuesBehindTheLastWholeLine) {
    const TestFolder folder;
    const std::string path = folder.Path("out.csv");
    folder.Write("out.csv", "time,a\n" + std::string(9000, '1') + "\n2,3\n4,");
    {
        const auto recorder = Begun(path, Existing::Continue);
        const auto other = Recorder::Begin(path, Existing::Continue);
        ASSERT_FALSE(other);
        EXPECT_NE(other.Error().message.find("another program"), std::string::npos);
        EXPECT_FALSE(recorder->WriteHeading("time,a\n"));
        recorder->AddRow(0, ',', "5");
        recorder->AddRow(kSecond * 3600 + 7, ',', "6");
        EXPECT_FALSE(recorder->End());
    }
    EXPECT_EQ(folder.Read("out.csv"),
              "time,a\n" + std::string(9000, '1') +
                  "\n2,3\n1970-01-01T00:00:00.000000Z,5\n1970-01-01T01:00:00.000007Z,6\n");
    EXPECT_TRUE(Begun(path, Existing::Continue)->WriteHeading("time,b\n"));
    EXPECT_FALSE(Recorder::Begin(path, Existing::Refuse));
    EXPECT_FALSE(Begun(path, Existing::Replace)->WriteHeading("time,b\n"));
    EXPECT_EQ(folder.Read("out.csv"), "time,b\n");
}

// A file that may not grow stands for a full disk: what was written in part is taken back, and the rest comes
// when there is room again.
TEST(Recorder, KeepsWholeLinesWhereTheDiskIsFull) {
    const TestFolder folder;
    const auto before = ::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    const auto recorder = Begun(folder.Path("out.csv"));
    const rlimit small{1000, limit.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    const std::string line(299, 'x');
    for (int i = 0; i < 300; ++i) recorder->AddRow(line);
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ::signal(SIGXFSZ, before);
    EXPECT_NE(recorder->Fault().find("out.csv: cannot be written"), std::string::npos) << recorder->Fault();
    EXPECT_EQ(folder.Read("out.csv").size(), 900u);
    EXPECT_FALSE(recorder->End());
    EXPECT_EQ(folder.Read("out.csv").size(), 90000u);
    EXPECT_EQ(recorder->Fault(), "");
}

// Whoever shows takes a part of it at a time; the sender waits meanwhile, and nothing is lost.
TEST(LiveSource, HoldsBackASenderThatIsFasterThanWhoShows) {
    const LocalSocket server;
    LiveSource source(AddressOf("tcp://127.0.0.1:" + server.Port()), {{}, true, {}});
    source.Start();
    const int connection = server.Accept();
    constexpr int kLines = 400000;
    std::thread sender([&] {
        LocalSocket::SendAll(connection, "n,a,b\n" + NumberedLines(0, kLines));
        ::shutdown(connection, SHUT_WR);
    });
    LiveRows rows;
    double next = 0;
    std::size_t most = 0;
    while (next < kLines) {
        source.Take(rows);
        most = std::max(most, rows.Count());
        for (std::size_t i = 0; i < rows.Count(); ++i, ++next)
            if (rows.cells[i * rows.width + 1] != next) next = kLines;
    }
    sender.join();
    EXPECT_EQ(next, kLines);
    EXPECT_LT(most, 150000u);
    EXPECT_EQ(source.State().lines.rows, static_cast<std::uint64_t>(kLines));
    EXPECT_EQ(source.State().unshown, 0u);
    // It ends although nobody takes.
    ::close(connection);
    source.Stop();
}

TEST(LiveSource, RecordsWhileItIsShownAndRefusesOtherColumns) {
    const TestFolder folder;
    folder.Write("other.csv", "time,c\n");
    folder.Write("in.csv", "time,a\n2025-11-24T00:00:00Z,1\n2025-11-24T00:00:01Z,2\n");
    LiveSource source(AddressOf(folder.Path("in.csv")), {});
    source.Record(Begun(folder.Path("other.csv"), Existing::Continue));
    source.Start();
    const auto waitFor = [&](const auto& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!condition(source.State()) && std::chrono::steady_clock::now() < end)
            std::this_thread::yield();
        return condition(source.State());
    };
    ASSERT_TRUE(waitFor([](const LiveState& state) { return !state.recordFault.empty(); }));
    EXPECT_NE(source.State().recordFault.find("other columns"), std::string::npos);
    EXPECT_EQ(folder.Read("other.csv"), "time,c\n");
    source.Record(Begun(folder.Path("out.csv")));
    std::ofstream(folder.Path("in.csv"), std::ios::app) << "2025-11-24T00:00:02Z,3\n";
    ASSERT_TRUE(waitFor([](const LiveState& state) { return state.recorded == 1; }));
    EXPECT_FALSE(source.EndRecording());
    EXPECT_EQ(folder.Read("out.csv"), "time,a\n2025-11-24T00:00:02Z,3\n");
    EXPECT_EQ(source.State().lastRow, (std::vector<double>{1763942402e6, 3}));
}

class LiveProgram : public testing::Test {
  protected:
    const Folder folder;
    const LocalSocket server;
    std::vector<std::string> Words(const std::vector<std::string>& more) const {
        std::vector<std::string> words = {TAVIN_PROGRAM, "live", "tcp://127.0.0.1:" + server.Port(), "-o",
                                          folder.Path("out.csv")};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }
    bool WaitForRows(std::size_t rows) const {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        const auto lines = [&] { return std::ranges::count(folder.Read("out.csv"), '\n'); };
        while (lines() <= static_cast<long>(rows) && std::chrono::steady_clock::now() < end)
            std::this_thread::yield();
        return lines() > static_cast<long>(rows);
    }
};

TEST_F(LiveProgram, EndsInOrderWhenItIsAskedTo) {
    for (const int signal : {SIGINT, SIGTERM}) {
        std::filesystem::remove(folder.Path("out.csv"));
        Beside program(Words({}));
        const int connection = server.Accept();
        LocalSocket::SendAll(connection, NumberedLines(0, 1000) + "cut");
        // The rest of the rows are on their way to the file.
        ASSERT_TRUE(WaitForRows(10));
        LocalSocket::SendAll(connection, "\n" + NumberedLines(1000, 2000));
        ASSERT_TRUE(WaitForRows(2000));
        program.Signal(signal);
        EXPECT_EQ(program.Wait(), 0);
        const std::string out = folder.Read("out.csv");
        EXPECT_EQ(std::ranges::count(out, '\n'), 2001);
        EXPECT_NE(out.find("Z,1999,21.5,0.25\n"), std::string::npos);
        ::close(connection);
    }
}

// At any moment the file is whole lines, in order, without one missing.
TEST_F(LiveProgram, LeavesAWholeFileHoweverItEnds) {
    std::mt19937 random(3);
    int next = 0;
    for (int round = 0; round < 5; ++round) {
        Beside program(Words({"--append"}));
        const int connection = server.Accept();
        const int begin = next;
        ASSERT_TRUE(LocalSocket::SendAll(connection, "n,a,b\n" + NumberedLines(begin, begin + 200)));
        const auto rows = static_cast<std::size_t>(std::ranges::count(folder.Read("out.csv"), '\n'));
        ASSERT_TRUE(WaitForRows(std::max<std::size_t>(rows, 1)));
        LocalSocket::SendAll(connection,
                             NumberedLines(begin + 200, begin + 200 + static_cast<int>(random() % 20000)));
        program.End(SIGKILL);
        ::close(connection);
        // The kill may tear the last line, which the next run cuts.
        std::string text = folder.Read("out.csv");
        text.resize(text.rfind('\n') + 1);
        std::istringstream lines(text);
        std::string line;
        std::getline(lines, line);
        EXPECT_EQ(line, "time,n,a,b");
        for (next = 0; std::getline(lines, line); ++next)
            ASSERT_EQ(line.substr(line.find(',')), "," + std::to_string(next) + ",21.5,0.25") << round;
    }
}

TEST(LiveCommand, RecordsEachSourceAndTellsHowItEnded) {
    const Folder folder;
    folder.Write("a.csv", "time,a\n2025-11-24T00:00:00Z,1\n");
    folder.Write("b.csv", "1;2\n3;4\n");
    auto run = folder.Run("live a.csv b.csv -o out.csv --for 2.5s --stats");
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(folder.Read("out-1.csv"), "time,a\n2025-11-24T00:00:00Z,1\n");
    EXPECT_NE(folder.Read("out-2.csv").find("Z;3;4\n"), std::string::npos);
    for (const char* const told :
         {"a.csv: 1 rows, ", "b.csv: 2 rows, ", "last 3, 4 ", "b.csv: 2 rows, 2 recorded"})
        EXPECT_NE(run.err.find(told), std::string::npos) << told << run.err;
    run = folder.Run("live - -o - < b.csv | cat");
    EXPECT_EQ(std::ranges::count(run.out, '\n'), 3) << run.out;
    const std::size_t files = folder.Count();
    const RefusedRun refusals[] = {
        {"live - --stats </dev/null", 4, "0 rows"},
        {"live a.csv -o out-1.csv --for 1s", 1, "out-1.csv is there already; continue it with --append"},
        {"live a.csv -o none/out.csv --for 1s", 1, "none/out.csv: cannot be opened for writing"},
        {"live b.csv -o out-1.csv --append --for 5s", 1, "other columns"},
        {"live a.csv --append --force", 2, "exclude each other"},
        {"live a.csv --append", 2, "the file that -o names"},
        {"live a.csv --for soon", 2, "--for soon: expected a length"},
        {"live a.csv b.csv -o -", 2, "one source alone"},
        {"live tcp://x", 2, "a port from 1 to 65535 is expected"},
        {"live", 2, "SOURCE"},
    };
    for (const auto& refusal : refusals) ExpectRefused(folder, refusal, files);
}

}  // namespace
}  // namespace app
