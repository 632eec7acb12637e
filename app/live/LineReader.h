// Turns the lines of a feed into rows: first it finds out how they are to be read, from a few of them, then
// it reads them by the rules that files are read by.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/live/LineShape.h"
#include "app/table/RowReader.h"

namespace app {

// Rows one behind the other, each its x and then a value for each channel; no value is not-a-number. An x
// that is a time is in microseconds since 1970.
struct LiveRows {
    std::size_t width = 0;  // of a row
    std::vector<double> cells;
    std::vector<int> decimals = {};  // of each channel, the most that a value so far was written with
    std::size_t Count() const { return width ? cells.size() / width : 0; }
};

// What became of the lines so far.
struct LineCounts {
    std::uint64_t rows = 0;
    std::uint64_t lost = 0;      // lines that are no row
    std::uint64_t badCells = 0;  // of rows, that are no number
    std::string fault;           // the last of either
};

class LineReader {
  public:
    // `name` is the feed's, for messages.
    LineReader(std::string name, ReadOptions options);

    // Null before the first lines told it.
    const LineShape* Shape() const { return shape_ ? &shape_->shape : nullptr; }
    // Called with each line that becomes a row, its end not included, and the time of its arrival.
    using OnRow = std::function<void(std::string_view line, Microseconds arrival)>;
    void SetOnRow(OnRow onRow) { onRow_ = std::move(onRow); }

    // Reads whole lines, behind which FeedSink::kReach bytes may be read, and appends rows. `arrival` is
    // later than before.
    void Read(std::string_view lines, Microseconds arrival, LiveRows& rows);
    // Time passes: lines that wait for company so that their table can be told are read now.
    void Tick(Microseconds now, LiveRows& rows);
    // No more lines come: the same without patience.
    void End(Microseconds now, LiveRows& rows);
    // A line that was lost before it came here.
    void NoteLost(std::size_t count, const char* reason);
    const LineCounts& Counts() const { return counts_; }

  private:
    struct Found {
        explicit Found(LineShape found, const ReadOptions& options)
            : shape(std::move(found)), reader(shape.layout, shape.choice, options), block(reader.NoRows()) {
            reader.AppendTo(block);
        }
        LineShape shape;
        RowReader reader;  // refers to the shape
        Rows block;
    };

    bool IsFull() const;
    void Wait(std::string_view lines, Microseconds arrival, LiveRows& rows);
    void Guess(Microseconds now, LiveRows& rows);
    void ReadBlock(std::string_view lines, Microseconds arrival, LiveRows& rows);
    // Where a line that is not of the usual form ends; `row`: it is one all the same.
    const char* ReadLine(const char* at, const char* end, bool& row);
    void Finish(LiveRows& rows);

    std::string name_;
    ReadOptions options_;
    OnRow onRow_;
    LineCounts counts_;
    std::unique_ptr<Found> shape_;
    Microseconds lastArrival_ = 0;
    std::vector<Microseconds> arrivals_;  // of the rows of a block

    std::string waiting_;  // lines before their shape is known
    std::size_t waitingLines_ = 0;
    struct Piece {
        std::size_t end;
        Microseconds arrival;
    };
    std::vector<Piece> pieces_;  // of them, as they arrived
    Microseconds waitingSince_ = 0;
    Microseconds refusedUntil_ = 0;  // lines that were no table: others are not tried at once
};

}  // namespace app
