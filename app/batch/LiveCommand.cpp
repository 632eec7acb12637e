#include "app/batch/LiveCommand.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <memory>

#include "app/live/LiveSource.h"
#include "app/table/CellNumber.h"
#include "app/workbench/LiveSession.h"
#include "app/workbench/Workbench.h"
#include "tavin/tavin.h"

namespace app {

namespace {

using Clock = std::chrono::steady_clock;
using Sources = std::vector<std::unique_ptr<LiveSource>>;

// Signals that ask to end are waited for instead of obeyed. Set before any thread is there.
class EndSignals {
  public:
    EndSignals() {
        ::sigemptyset(&set_);
        for (const int each : {SIGINT, SIGTERM, SIGHUP}) ::sigaddset(&set_, each);
        ::pthread_sigmask(SIG_BLOCK, &set_, &before_);
        // A reader that went away is an error of writing.
        ::signal(SIGPIPE, SIG_IGN);
    }
    ~EndSignals() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    // Whether one came within the time.
    bool Wait(std::chrono::milliseconds longest) const {
        const timespec time{longest.count() / 1000, longest.count() % 1000 * 1000000};
        return ::sigtimedwait(&set_, nullptr, &time) > 0;
    }

  private:
    sigset_t set_{};
    sigset_t before_{};
};

std::optional<Failure> Open(const LiveOptions& options, std::vector<FeedAddress> addresses,
                            Sources& sources) {
    if (options.output == "-" && options.sources.size() > 1)
        return UsageError("-o -: one source alone can be recorded to standard output");
    const auto existing = options.append  ? Existing::Continue
                          : options.force ? Existing::Replace
                                          : Existing::Refuse;
    for (auto& address : addresses)
        sources.push_back(std::make_unique<LiveSource>(std::move(address), LiveSource::Wishes{options.read}));
    for (std::size_t i = 0; i < sources.size() && !options.output.empty(); ++i) {
        auto recorder = Recorder::Begin(RecordingName(options.output, i, sources.size()), existing);
        if (!recorder) return recorder.Error();
        sources[i]->Record(std::move(*recorder));
    }
    return std::nullopt;
}

// Tells what changes, and each second what there is.
class Teller {
  public:
    Teller(const Sources& sources, bool stats) : sources_(sources), stats_(stats), seen_(sources.size()) {}

    void TellChanges() {
        for (std::size_t i = 0; i < sources_.size(); ++i) {
            const LiveState state = sources_[i]->State();
            Seen& seen = seen_[i];
            if (state.message != seen.message && !state.message.empty()) Say(i, state.message);
            if (state.recordFault != seen.recordFault && !state.recordFault.empty())
                Say(i, state.recordFault);
            if (seen.message.size() && state.feed == FeedState::Connected && state.message.empty())
                Say(i, "connected again");
            seen.message = state.message;
            seen.recordFault = state.recordFault;
        }
    }

    void TellStats() {
        const auto now = Clock::now();
        if (!stats_ || now < next_) return;
        const double seconds = std::chrono::duration<double>(now - next_).count() + 1;
        for (std::size_t i = 0; i < sources_.size(); ++i) {
            const LiveState state = sources_[i]->State();
            Say(i, StatsText(state, double(state.lines.rows - seen_[i].rows) / seconds));
            seen_[i].rows = state.lines.rows;
        }
        next_ = now + std::chrono::seconds(1);
    }

    void TellEnd() const {
        for (std::size_t i = 0; i < sources_.size(); ++i) {
            const LiveState state = sources_[i]->State();
            const auto count = [](std::uint64_t number) { return static_cast<std::int64_t>(number); };
            std::string text = Counted(count(state.lines.rows), "row");
            if (state.recorded > 0) text += ", " + Grouped(count(state.recorded)) + " recorded";
            if (state.lines.lost > 0) text += ", " + Counted(count(state.lines.lost), "line") + " lost";
            if (state.lines.badCells > 0)
                text += ", " + Counted(count(state.lines.badCells), "unreadable cell");
            if (!state.lines.fault.empty()) text += "; the last: " + state.lines.fault;
            Say(i, text);
        }
    }

  private:
    struct Seen {
        std::string message;
        std::string recordFault;
        std::uint64_t rows = 0;
    };

    void Say(std::size_t source, const std::string& text) const {
        std::fprintf(stderr, "tavin: %s\n", SafeText(sources_[source]->Name() + ": " + text).c_str());
    }

    static std::string StatsText(const LiveState& state, double rate) {
        std::string text = Grouped(static_cast<std::int64_t>(state.lines.rows)) + " rows, " +
                           NumberText(rate, rate < 10 ? 1 : 0) + " a second";
        std::string values;
        for (std::size_t i = 1; i < state.lastRow.size(); ++i)
            values += (values.empty() ? "" : ", ") +
                      (std::isfinite(state.lastRow[i]) ? ShortNumber(state.lastRow[i]) : std::string("none"));
        if (state.lastArrival > 0) {
            const auto age = LiveSource::Now() - state.lastArrival;
            text += ", last " + values + (values.empty() ? "" : " ") +
                    NumberText(std::max(0.0, double(age) / kSecond), 1) + " s ago";
        }
        return text + ", " + Grouped(static_cast<std::int64_t>(state.lines.lost)) + " lost";
    }

    const Sources& sources_;
    bool stats_;
    std::vector<Seen> seen_;
    Clock::time_point next_ = Clock::now() + std::chrono::seconds(1);
};

bool HaveEnded(const Sources& sources) {
    return std::ranges::all_of(sources,
                               [](const auto& source) { return source->State().feed == FeedState::Ended; });
}

// Nothing is left to record into.
bool CannotRecord(const LiveOptions& options, const Sources& sources) {
    return !options.output.empty() && std::ranges::all_of(sources, [&](const auto& source) {
        const LiveState state = source->State();
        return !state.recordFault.empty() && (state.recording.empty() || options.output == "-");
    });
}

}  // namespace

static Result<int> RecordLive(const LiveOptions& options, std::vector<FeedAddress> addresses) {
    const EndSignals signals;
    EnsureFeedToolkit();
    Sources sources;
    if (const auto failure = Open(options, std::move(addresses), sources)) return *failure;
    const auto end = Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(
                                        options.seconds > 0 ? options.seconds : 1e9));
    Teller teller(sources, options.stats);
    for (const auto& source : sources) source->Start();
    bool signalled = false;
    bool failed = false;
    while (!signalled && !failed && Clock::now() < end && !HaveEnded(sources)) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        signalled =
            signals.Wait(std::clamp(left, std::chrono::milliseconds(0), std::chrono::milliseconds(50)));
        teller.TellChanges();
        teller.TellStats();
        failed = CannotRecord(options, sources);
    }
    std::optional<Failure> failure;
    for (const auto& source : sources) source->AskToStop();
    for (const auto& source : sources)
        if (auto fault = source->Stop()) failure = std::move(fault);
    teller.TellChanges();
    teller.TellEnd();
    if (failure) return *failure;
    std::uint64_t rows = 0;
    bool refused = failed;
    for (const auto& source : sources) {
        rows += source->State().lines.rows;
        refused |= !source->State().recordFault.empty();
    }
    if (refused) return kRefused;
    return rows > 0 ? kDone : kEmpty;
}

Result<int> LiveCommand(const LiveOptions& options, int argc, char** argv) {
    if (options.append && options.force) return UsageError("--append and --force exclude each other");
    if ((options.append || options.force) && options.output.empty())
        return UsageError("--append and --force say what becomes of the file that -o names");
    std::vector<FeedAddress> addresses;
    for (const auto& text : options.sources) {
        std::string fault;
        if (!ReadFeedAddress(text, addresses.emplace_back(), fault)) return UsageError(fault);
    }
    const bool aside = !options.output.empty() || options.seconds > 0 || options.stats;
    if (aside || !IsDisplayAvailable()) return RecordLive(options, std::move(addresses));
    LiveWishes wishes;
    wishes.addresses = std::move(addresses);
    wishes.read = options.read;
    wishes.window = options.window;
    wishes.derived = options.derived;
    return RunLiveWindow(argc, argv, wishes);
}

}  // namespace app
