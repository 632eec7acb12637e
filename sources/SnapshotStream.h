// An in-memory binary stream for undo snapshots: written from position 0, then read back. What a write did
// not reach since the last Rewrite() cannot be read, so a reused stream never shows an older snapshot's
// bytes. A write that finds no memory sets the stream's error state and leaves what was written before.
#pragma once

#include <cstddef>
#include <iostream>
#include <memory>
#include <streambuf>

class SnapshotStream : public std::iostream {
  public:
    // Reserves `capacity` bytes; memory is taken only as it is written.
    explicit SnapshotStream(std::size_t capacity);
    ~SnapshotStream() override;

    // Clears the error state and starts writing at position 0; nothing is left to read. `capacity` is
    // reserved, and a block more than four times as large (and larger than 8 MB) is given back.
    void Rewrite(std::size_t capacity);
    // Clears the error state and starts reading at position 0.
    void Reread();
    // Marks the present write position as the end of the series' part, behind which the caller's own state
    // follows.
    void EndSnapshot();
    // Puts the read position to the end of the series' part.
    void SkipSnapshot();
    // Bytes of the series' part.
    std::size_t SnapshotSize() const { return snapshotSize_; }

  private:
    class Buffer;
    std::unique_ptr<Buffer> buffer_;
    std::size_t snapshotSize_ = 0;
};
