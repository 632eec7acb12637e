// Reads the rows of a text in stretches, on all processors, and hands them over in their order.
//
// Where records begin is certain only behind the record before, for a quoted field may hold line breaks.
// Every stretch is begun at a line, in the hope that a record begins there; one that turns out to begin
// inside a record is read again.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string_view>
#include <thread>
#include <vector>

#include "app/table/RowReader.h"

namespace app {

class StretchReader {
  public:
    // What the constructor gets must outlive this object. Reading begins at the byte `begin`.
    StretchReader(std::string_view text, std::size_t begin, const Layout& layout, const Choice& choice,
                  const ReadOptions& options);
    ~StretchReader();
    StretchReader(const StretchReader&) = delete;
    StretchReader& operator=(const StretchReader&) = delete;

    // The rows of the next stretch, until the next call; null behind the last one, and behind one that is not
    // text. Throws std::bad_alloc.
    const Rows* Next();
    // Where the stretch that Next() returned ends.
    std::size_t End() const { return end_; }

  private:
    struct Stretch {
        Rows rows;
        std::size_t begin = 0;
        std::size_t end = 0;
        bool ready = false;
        bool outOfMemory = false;
    };
    struct Worker {
        explicit Worker(const StretchReader& owner);
        RowReader rows;
        Records records;
    };

    std::size_t Limit(std::size_t index) const;
    void Read(Worker& worker, Stretch& stretch, std::size_t begin, std::size_t limit) const;
    void ReadSome();
    const Rows* Take(Stretch& stretch);

    std::string_view text_;
    std::size_t begin_;
    const Layout& layout_;
    const Choice& choice_;
    const ReadOptions& options_;
    char lineBreak_;
    std::size_t count_;  // of stretches
    Worker own_;

    std::vector<Stretch> ring_;
    std::vector<std::thread> threads_;
    std::mutex lock_;
    std::condition_variable changed_;
    std::size_t started_ = 0;  // stretches that a thread has taken up
    std::size_t taken_ = 0;    // that Next() has returned
    std::size_t end_;
    bool stop_ = false;
};

}  // namespace app
