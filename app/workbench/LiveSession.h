// What a live window shows: the feeds, their channels as live series, and channels derived from others. All
// of it belongs to the thread of the user interface, which takes what has arrived now and then.
//
// The series share the x axis: times where the first feed that says so has times or arrivals, else numbers.
// Samples on it are counted in parts of a second from an origin that moves on before the counts end.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "app/live/LiveSource.h"
#include "app/workbench/SeriesFile.h"

namespace app {

struct LiveWishes {
    std::vector<FeedAddress> addresses;
    ReadOptions read = {};
    double window = 60;                     // length of the x axis in its units, seconds on times
    long capacity = 1000000;                // samples that each series keeps
    std::vector<std::string> derived = {};  // "A+B" or "A-B", by the channels' names
};

class LiveSession {
  public:
    explicit LiveSession(const LiveWishes& wishes);
    ~LiveSession();
    LiveSession(const LiveSession&) = delete;
    LiveSession& operator=(const LiveSession&) = delete;

    // Appends what has arrived. Series may have been added behind those of before.
    void TakeRows();
    // Rows that have arrived and not been taken.
    std::size_t Waiting() const;
    // Rows so far, counted over all feeds; moves with every TakeRows() that appended.
    std::uint64_t Rows() const { return rows_; }
    SeriesFile& File() { return file_; }
    COnlineSource& Series(std::size_t i) const;
    // Of all series, in stored counts; nothing before the first sample.
    std::optional<std::int32_t> NewestX() const { return newest_; }
    double CountsPerUnit() const { return kCounts; }

    // A channel whose samples are the sum or the difference of the newest values of two channels of feeds,
    // one for each row.
    bool AddDerived(operationtype operation, std::size_t a, std::size_t b);
    // A channel that is corrected (sign, then offset) and from which others are taken, or to which they are
    // added, at its x.
    struct Correction {
        bool invert = false;
        double offset = 0;
        std::vector<std::size_t> add = {};
        std::vector<std::size_t> subtract = {};
    };
    bool AddCorrected(std::size_t channel, const Correction& correction);
    // Whether it comes from a feed itself.
    bool IsReceived(std::size_t i) const;

    // Records every feed, each into a file of its own where there are several.
    std::optional<Failure> Record(const std::string& path, Existing existing);
    std::optional<Failure> EndRecording();
    bool IsRecording() const { return recording_; }

    // One line: rows a second, last values, their age, lost lines; and what is wrong with the connections.
    std::string StatusText() const;
    std::string TroubleText() const;

  private:
    static constexpr double kCounts = 10000;

    struct Corrected {
        std::size_t series;
        KDataAcqSource* source;
    };
    struct Channel {
        COnlinePublishSource* source;
        std::size_t series;
        double scale;
        std::vector<Corrected> corrected = {};
        bool gap = false;  // before the next sample
    };
    struct Received {
        std::unique_ptr<LiveSource> source;
        std::vector<Channel> channels;
        bool known = false;    // its channels are there
        bool refused = false;  // its x is of another kind than that of the others
        bool lost = false;     // the connection was, since the last row
    };

    void MakeChannels(Received& received, const LiveRows& rows);
    void Append(Received& received, const LiveRows& rows);
    void AppendSample(Channel& channel, std::int32_t x, double value);
    void MarkGap(std::size_t series);
    void MakeDerived();
    std::int32_t StoredX(double x);
    void MoveOrigin(double x);
    std::size_t AddSeries(std::unique_ptr<COnlineSource> source, int decimals);
    std::string FreeName(std::string name) const;
    Channel* ChannelOf(std::size_t series);
    std::optional<std::size_t> FindSeries(const std::string& name) const;
    void TakeRate();

    const LiveWishes wishes_;
    SeriesFile file_;
    std::vector<Received> received_;
    std::vector<std::string> wanted_;  // derived channels whose operands are not there yet
    LiveRows rowsTaken_;
    std::uint64_t rows_ = 0;
    std::optional<std::int32_t> newest_;
    bool hasOrigin_ = false;
    double originNumber_ = 0;  // of an x that is a number
    bool recording_ = false;

    using Clock = std::chrono::steady_clock;
    Clock::time_point rateSince_ = Clock::now();
    std::uint64_t rateRows_ = 0;
    double rate_ = 0;
};

}  // namespace app
