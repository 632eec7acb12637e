#include "sources/SnapshotStream.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::size_t kLargeBlock = 8 * kHugePage;

// Large blocks are asked for in huge pages, where the system grants them: a snapshot then costs hundreds of
// page faults instead of tens of thousands. Memory is taken only as it is written; the part of a huge page
// that stays unwritten is small beside such a block. Freed with std::free.
char* AllocateBlock(std::size_t size) {
    if (size < kLargeBlock) return static_cast<char*>(std::malloc(size));
    const std::size_t whole = size / kHugePage * kHugePage;
    if (size > static_cast<std::size_t>(-1) / 2) return nullptr;
    void* block = std::aligned_alloc(kHugePage, whole + kHugePage);
#ifdef MADV_HUGEPAGE
    if (block) madvise(block, whole, MADV_HUGEPAGE);
#endif
    return static_cast<char*>(block);
}

}  // namespace

// One block serves the put and the get area.
class SnapshotStream::Buffer : public std::streambuf {
  public:
    ~Buffer() override { std::free(block_); }

    // Keeps what was written.
    bool Reserve(std::size_t capacity) {
        if (capacity <= capacity_) return true;
        char* grown = AllocateBlock(capacity);
        if (!grown) return false;
        if (written_ > 0) std::memcpy(grown, block_, written_);
        std::free(block_);
        block_ = grown;
        capacity_ = capacity;
        return true;
    }
    // Returns a block far larger than needed, so that a series that has shrunk does not hold on to it.
    void ReleaseBeyond(std::size_t capacity) {
        if (capacity_ / 4 <= std::max(capacity, kHugePage)) return;
        std::free(std::exchange(block_, nullptr));
        capacity_ = 0;
    }
    void Rewrite() {
        written_ = 0;
        read_ = 0;
        setg(block_, block_, block_);
    }
    void SetReadPosition(std::size_t position) {
        read_ = std::min(position, written_);
        setg(block_, block_ + read_, block_ + written_);
    }
    std::size_t Written() const { return written_; }

  protected:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override {
        const auto size = static_cast<std::size_t>(std::max<std::streamsize>(count, 0));
        const std::size_t needed = written_ + size;
        if (needed > capacity_ && !Reserve(std::max(needed, capacity_ + capacity_ / 2))) return 0;
        if (size > 0) std::memcpy(block_ + written_, bytes, size);
        const auto readPosition = static_cast<std::size_t>(gptr() - eback());
        written_ = needed;
        SetReadPosition(readPosition);
        return count;
    }
    int_type overflow(int_type ch) override {
        if (traits_type::eq_int_type(ch, traits_type::eof())) return traits_type::not_eof(ch);
        const char byte = traits_type::to_char_type(ch);
        return xsputn(&byte, 1) == 1 ? ch : traits_type::eof();
    }
    // Tells the positions; seeks only to where reading may go on.
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override {
        if (which & std::ios_base::out) {
            const bool tells = from == std::ios_base::cur && offset == 0;
            return tells ? pos_type(static_cast<off_type>(written_)) : pos_type(off_type(-1));
        }
        const off_type base = from == std::ios_base::beg   ? 0
                              : from == std::ios_base::cur ? gptr() - eback()
                                                           : static_cast<off_type>(written_);
        const off_type target = base + offset;
        if (target < 0 || target > static_cast<off_type>(written_)) return pos_type(off_type(-1));
        SetReadPosition(static_cast<std::size_t>(target));
        return pos_type(target);
    }
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override {
        return seekoff(off_type(position), std::ios_base::beg, which);
    }

  private:
    char* block_ = nullptr;
    std::size_t capacity_ = 0;
    std::size_t written_ = 0;
    std::size_t read_ = 0;
};

SnapshotStream::SnapshotStream(std::size_t capacity)
    : std::iostream(nullptr), buffer_(std::make_unique<Buffer>()) {
    rdbuf(buffer_.get());
    Rewrite(capacity);
}

SnapshotStream::~SnapshotStream() { rdbuf(nullptr); }

void SnapshotStream::Rewrite(std::size_t capacity) {
    clear();
    snapshotSize_ = 0;
    buffer_->Rewrite();
    buffer_->ReleaseBeyond(capacity);
    if (!buffer_->Reserve(capacity)) setstate(std::ios_base::badbit);
    buffer_->Rewrite();
}

void SnapshotStream::Reread() {
    clear();
    buffer_->SetReadPosition(0);
}

void SnapshotStream::EndSnapshot() { snapshotSize_ = buffer_->Written(); }

void SnapshotStream::SkipSnapshot() { buffer_->SetReadPosition(snapshotSize_); }
