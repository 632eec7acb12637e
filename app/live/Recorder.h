// A CSV file that grows with a feed. Whole lines are written at least twice a second, so that after any end
// of the program the file is whole up to then; a thread beside takes them to the disk each second. Where the
// disk takes no more, rows wait in memory and are tried again.
#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include "app/table/Result.h"
#include "app/table/TimeWalker.h"

namespace app {

// What is done with a file that is there already.
enum class Existing { Refuse, Continue, Replace };

// The recording of the source of this index: OUT.csv, of several OUT-1.csv, OUT-2.csv ...
std::string RecordingName(const std::string& output, std::size_t index, std::size_t sources);

class Recorder {
  public:
    using Clock = std::chrono::steady_clock;

    // "-" is standard output.
    static Result<std::unique_ptr<Recorder>> Begin(const std::string& path, Existing existing);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    // Once, before any row: whole lines. A file that is continued has to begin with them.
    std::optional<Failure> WriteHeading(const std::string& heading);
    void AddRow(std::string_view line);
    // A row with the time of its arrival before it.
    void AddRow(Microseconds arrival, char delimiter, std::string_view line);
    // Writes what has waited long enough.
    void Tick();
    // Writes the rest and closes. What could not be written is the failure.
    std::optional<Failure> End();

    const std::string& Path() const { return path_; }
    std::uint64_t Rows() const { return rows_; }
    // Rows that found no room while the disk took none.
    std::uint64_t Dropped() const { return dropped_; }
    // Why the last writing failed; empty since it works again.
    const std::string& Fault() const { return fault_; }

  private:
    explicit Recorder(std::string path) : path_(std::move(path)) {}
    std::optional<Failure> Open(Existing existing);
    std::optional<Failure> FindWholeLines();
    bool HasRoom();
    void EndRow();
    void Write();
    void KeepSafe();

    std::string path_;
    std::string buffer_;
    std::string fault_;
    int file_ = -1;
    bool regular_ = false;
    std::int64_t size_ = 0;  // of the whole lines in the file
    std::uint64_t rows_ = 0;
    std::uint64_t dropped_ = 0;
    Clock::time_point nextWrite_ = {};
    std::string second_;  // text of the second that the last arrival fell in
    Microseconds secondBegin_ = -1;

    std::mutex lock_;  // of the two below
    std::condition_variable changed_;
    bool dirty_ = false;
    bool ending_ = false;
    std::thread keeper_;
};

}  // namespace app
