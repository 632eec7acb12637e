#include "app/live/LineReader.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "app/table/Zone.h"
#include "platform/feeds/FeedSink.h"

namespace app {

namespace {

constexpr std::size_t kCompany = 20;         // lines that tell their table
constexpr Microseconds kPatience = kSecond;  // before fewer do
constexpr std::size_t kMostWaiting = 200;    // lines; then it is no table
constexpr std::size_t kMostWaitingBytes = 1 << 20;

static_assert(kPlainReach <= FeedSink::kReach);

}  // namespace

LineReader::LineReader(std::string name, ReadOptions options)
    : name_(std::move(name)), options_(std::move(options)) {}

void LineReader::NoteLost(std::size_t count, const char* reason) {
    counts_.lost += count;
    counts_.fault = reason;
}

void LineReader::Read(std::string_view lines, Microseconds arrival, LiveRows& rows) {
    if (shape_)
        ReadBlock(lines, arrival, rows);
    else
        Wait(lines, arrival, rows);
}

void LineReader::Tick(Microseconds now, LiveRows& rows) {
    if (!shape_ && !waiting_.empty() && now >= waitingSince_ + kPatience) Guess(now, rows);
}

void LineReader::End(Microseconds now, LiveRows& rows) {
    if (!shape_ && !waiting_.empty()) Guess(now, rows);
    counts_.lost += waitingLines_;
    waitingLines_ = 0;
    waiting_.clear();
}

// Of many lines that come at once the first tell the table; the others are read when it is known.
void LineReader::Wait(std::string_view lines, Microseconds arrival, LiveRows& rows) {
    while (!lines.empty() && !shape_) {
        if (arrival < refusedUntil_) {
            counts_.lost += static_cast<std::uint64_t>(std::ranges::count(lines, '\n'));
            return;
        }
        if (waiting_.empty()) waitingSince_ = arrival;
        while (!lines.empty() && !IsFull()) {
            const auto end = lines.find('\n') + 1;
            waiting_ += lines.substr(0, end);
            ++waitingLines_;
            lines.remove_prefix(end);
        }
        pieces_.push_back({waiting_.size(), arrival});
        if (waitingLines_ >= kCompany || arrival >= waitingSince_ + kPatience) Guess(arrival, rows);
    }
    if (!lines.empty()) ReadBlock(lines, arrival, rows);
}

bool LineReader::IsFull() const {
    return waitingLines_ >= kMostWaiting || waiting_.size() >= kMostWaitingBytes;
}

void LineReader::Guess(Microseconds now, LiveRows& rows) {
    auto shape = GuessLineShape(waiting_, name_, options_, now);
    if (!shape) {
        counts_.fault = shape.Error().Text();
        waitingSince_ = now;
        if (!IsFull()) return;
        refusedUntil_ = now + kPatience;
        counts_.lost += waitingLines_;
        waiting_.clear();
        pieces_.clear();
        waitingLines_ = 0;
        return;
    }
    counts_.fault.clear();
    shape_ = std::make_unique<Found>(std::move(*shape), options_);
    std::string lines = std::move(waiting_);
    waiting_.clear();
    waitingLines_ = 0;
    lines.append(kPlainReach, '\n');
    for (std::size_t begin = shape_->shape.layout.dataBegin;
         const Piece& piece : std::exchange(pieces_, {})) {
        if (piece.end <= begin) continue;
        ReadBlock(std::string_view(lines).substr(begin, piece.end - begin), piece.arrival, rows);
        begin = piece.end;
    }
}

void LineReader::ReadBlock(std::string_view lines, Microseconds arrival, LiveRows& rows) {
    const bool arrivals = shape_->shape.IsArrival();
    const char* at = lines.data();
    const char* const end = at + lines.size();
    lastArrival_ = std::max(arrival - 1, lastArrival_);
    while (at < end) {
        const char* const begin = at;
        // In a single column it would be a row without a value.
        if (*at == '\n' || (*at == '\r' && at[1] == '\n')) {
            at += *at == '\r' ? 2 : 1;
            continue;
        }
        bool row = true;
        const char* next = shape_->reader.TakePlainRow(at, end, '\n');
        at = next ? next : ReadLine(at, end, row);
        if (!row) continue;
        if (arrivals) arrivals_.push_back(++lastArrival_);
        if (!onRow_) continue;
        const std::string_view line(begin, static_cast<std::size_t>(at - begin));
        onRow_(line.substr(0, LengthWithoutBreak(line)), lastArrival_);
    }
    Finish(rows);
}

const char* LineReader::ReadLine(const char* at, const char* end, bool& row) {
    const void* const lineFeed = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
    const char* const next = static_cast<const char*>(lineFeed) + 1;
    const std::string_view line(at, static_cast<std::size_t>(next - at));
    row = false;
    // The headings come again where a file is begun anew or a device restarts.
    const auto& top = shape_->shape.top;
    if (std::ranges::find(top, line.substr(0, LengthWithoutBreak(line))) != top.end()) return next;
    RowReader& reader = shape_->reader;
    Records records(line, shape_->shape.layout.delimiter);
    Record record;
    reader.BeginRow();
    records.Next(record, [&](int i, std::string_view text) { reader.Field(i, text); });
    if (record.kind == Record::NotText) {
        NoteLost(1, "a line holds a byte of value 0");
        return next;
    }
    if (record.kind == Record::Comment) return next;
    row = reader.EndRow(record);
    counts_.lost += !row;
    return next;
}

// Moves the rows of the block over.
void LineReader::Finish(LiveRows& rows) {
    Rows& block = shape_->block;
    const auto count = static_cast<std::size_t>(block.rows);
    if (block.times.local && !options_.zone.empty()) ToUtc(block.xTimes, options_.zone);
    rows.width = 1 + block.columns.size();
    const std::size_t first = rows.cells.size();
    rows.cells.resize(first + count * rows.width);
    double* const cells = rows.cells.data() + first;
    const auto putColumn = [&](std::size_t place, const auto& values) {
        for (std::size_t i = 0; i < count; ++i)
            cells[i * rows.width + place] = static_cast<double>(values[i]);
    };
    if (shape_->shape.IsArrival())
        putColumn(0, arrivals_);
    else if (shape_->shape.HasTimes())
        putColumn(0, block.xTimes);
    else
        putColumn(0, block.xNumbers);
    rows.decimals.resize(block.columns.size());
    for (std::size_t i = 0; i < block.columns.size(); ++i) {
        putColumn(i + 1, block.columns[i].values);
        rows.decimals[i] = std::max(rows.decimals[i], block.columns[i].decimals);
    }
    // What no value is stands for itself in a file's column; here all of it is not-a-number.
    if (block.unreadableCells > 0)
        for (std::size_t i = first; i < rows.cells.size(); ++i)
            if (!HasValue(rows.cells[i])) rows.cells[i] = kMissing;
    counts_.rows += count;
    counts_.badCells += static_cast<std::uint64_t>(block.unreadableCells);
    if (!block.faults.empty()) counts_.fault = block.faults.back().reason;
    block.Clear();
    arrivals_.clear();
}

}  // namespace app
