#include "app/table/StretchReader.h"

#include <algorithm>
#include <memory>
#include <new>
#include <system_error>

namespace app {

namespace {

constexpr std::size_t kStretch = std::size_t{1} << 20;
constexpr std::size_t kStretchesPerThread = 3;  // begun, ready, or being taken

}  // namespace

StretchReader::Worker::Worker(const StretchReader& owner)
    : rows(owner.layout_, owner.choice_, owner.options_),
      records(owner.text_, owner.layout_.delimiter, owner.lineBreak_, owner.begin_) {}

StretchReader::StretchReader(std::string_view text, std::size_t begin, const Layout& layout,
                             const Choice& choice, const ReadOptions& options)
    : text_(text),
      begin_(begin),
      layout_(layout),
      choice_(choice),
      options_(options),
      lineBreak_(LineBreakOf(text)),
      count_((text.size() - begin + kStretch - 1) / kStretch),
      own_(*this),
      end_(begin) {
    const std::size_t processors = std::max(1u, std::thread::hardware_concurrency());
    const std::size_t threads = count_ < 2 ? 0 : std::min(processors, count_);
    ring_.resize(std::max<std::size_t>(1, threads * kStretchesPerThread));
    for (auto& stretch : ring_) stretch.rows = own_.rows.NoRows();
    try {
        for (std::size_t i = 0; i < threads; ++i) threads_.emplace_back([this] { ReadSome(); });
    } catch (const std::system_error&) {
        // With as many threads as there are; with none, Next() reads.
    }
}

StretchReader::~StretchReader() {
    {
        const std::lock_guard lock(lock_);
        stop_ = true;
    }
    changed_.notify_all();
    for (auto& thread : threads_) thread.join();
}

std::size_t StretchReader::Limit(std::size_t index) const {
    return std::min(text_.size(), begin_ + (index + 1) * kStretch);
}

// Reads the records that begin from `begin` up to before `limit`.
void StretchReader::Read(Worker& worker, Stretch& stretch, std::size_t begin, std::size_t limit) const {
    RowReader& reader = worker.rows;
    Rows& rows = stretch.rows;
    rows.Clear();
    reader.AppendTo(rows);
    const char* const first = text_.data();
    const char* const last = first + text_.size() - std::min<std::size_t>(text_.size(), kPlainReach);
    std::size_t at = begin;
    std::int64_t line = 1;
    while (at < limit) {
        if (const char* const end = reader.TakePlainRow(first + at, last, lineBreak_)) {
            const auto length = static_cast<std::size_t>(end - first) - at;
            rows.records.Add(length, RecordRole::Data);
            at += length;
            ++line;
            continue;
        }
        Record record;
        worker.records.Seek(at, line);
        reader.BeginRow();
        if (!worker.records.Next(record, [&](int i, std::string_view text) { reader.Field(i, text); })) break;
        rows.notText = record.kind == Record::NotText;
        if (rows.notText) break;
        const auto role = record.kind == Record::Comment ? RecordRole::Comment
                          : reader.EndRow(record)        ? RecordRole::Data
                                                         : RecordRole::Skipped;
        rows.records.Add(record.end - record.begin, role);
        at = worker.records.At();
        line = worker.records.Line();
    }
    rows.lines = line - 1;
    stretch.begin = begin;
    stretch.end = at;
}

// What a thread does: takes up one stretch after the other, as far ahead as there is room.
void StretchReader::ReadSome() {
    std::unique_lock lock(lock_);
    std::unique_ptr<Worker> worker;
    for (;;) {
        changed_.wait(lock,
                      [&] { return stop_ || started_ == count_ || started_ < taken_ + ring_.size() - 1; });
        if (stop_ || started_ == count_) return;
        const std::size_t index = started_++;
        Stretch& stretch = ring_[index % ring_.size()];
        lock.unlock();
        bool outOfMemory = false;
        try {
            if (!worker) worker = std::make_unique<Worker>(*this);
            const std::size_t nominal = begin_ + index * kStretch;
            const std::size_t begin = index == 0 ? begin_ : worker->records.LineBegin(nominal);
            Read(*worker, stretch, begin, Limit(index));
        } catch (const std::bad_alloc&) {
            outOfMemory = true;
        }
        lock.lock();
        stretch.outOfMemory = outOfMemory;
        stretch.ready = true;
        changed_.notify_all();
    }
}

const Rows* StretchReader::Take(Stretch& stretch) {
    // The record before may have swallowed all of this stretch, or its first lines.
    if (stretch.begin != end_) Read(own_, stretch, end_, std::max(end_, Limit(taken_)));
    end_ = stretch.end;
    return &stretch.rows;
}

const Rows* StretchReader::Next() {
    if (taken_ == count_) return nullptr;
    Stretch& stretch = ring_[taken_ % ring_.size()];
    if (threads_.empty()) {
        Read(own_, stretch, end_, Limit(taken_));
    } else {
        std::unique_lock lock(lock_);
        changed_.wait(lock, [&] { return stretch.ready; });
        stretch.ready = false;
        if (stretch.outOfMemory) throw std::bad_alloc();
    }
    const Rows* const rows = Take(stretch);
    {
        const std::lock_guard lock(lock_);
        stop_ = rows->notText;
        taken_ = stop_ ? count_ : taken_ + 1;
    }
    changed_.notify_all();
    return rows;
}

}  // namespace app
