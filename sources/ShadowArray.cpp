#include "sources/ShadowArray.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kWord = sizeof(std::uint64_t);
constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::size_t kLargeBlock = 8 * kHugePage;

std::size_t Words(std::size_t bytes) { return (bytes + kWord - 1) / kWord; }

// Not initialised. Large blocks are asked for in huge pages, where the system grants them: the first write to
// one then costs some fifty page faults per 100 MB instead of 25,000.
std::unique_ptr<std::uint64_t[]> Allocate(std::size_t count) {
    if (count > std::numeric_limits<std::uint32_t>::max()) throw std::bad_alloc();
    auto words = std::make_unique_for_overwrite<std::uint64_t[]>(count);
#ifdef MADV_HUGEPAGE
    std::size_t space = count * kWord;
    void* aligned = words.get();
    if (space >= kLargeBlock && std::align(kHugePage, kHugePage, aligned, space))
        madvise(aligned, space / kHugePage * kHugePage, MADV_HUGEPAGE);
#endif
    return words;
}

std::uint64_t Load(const char* at) {
    std::uint64_t word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// Any word: the last one may be cut off, behind it all is 0.
std::uint64_t LoadAny(const ArrayBytes& array, std::size_t word) {
    std::uint64_t value = 0;
    const std::size_t at = word * kWord;
    if (at < array.size) std::memcpy(&value, array.bytes + at, std::min(kWord, array.size - at));
    return value;
}

bool Differ64(const char* a, const char* b) {
    std::uint64_t difference = 0;
    for (std::size_t at = 0; at < 64; at += kWord) difference |= Load(a + at) ^ Load(b + at);
    return difference != 0;
}

void AddWord(std::vector<ArrayDelta::Run>& runs, std::size_t word) {
    const auto number = static_cast<std::uint32_t>(word);
    // A gap of one word is cheaper than a run, and runs never take more memory than the array.
    if (!runs.empty() && number - runs.back().first <= runs.back().count + 1)
        runs.back().count = number - runs.back().first + 1;
    else
        runs.push_back({number, 1});
}

// Most of two arrays is equal as a rule: blocks, then lines of the cache, then words.
void FindRuns(const char* a, const char* b, std::size_t words, std::vector<ArrayDelta::Run>& runs) {
    constexpr std::size_t kBlock = 4096;
    const std::size_t size = words * kWord;
    for (std::size_t block = 0; block < size; block += kBlock) {
        const std::size_t blockEnd = std::min(size, block + kBlock);
        if (std::memcmp(a + block, b + block, blockEnd - block) == 0) continue;
        for (std::size_t line = block; line < blockEnd; line += 64) {
            const std::size_t lineEnd = std::min(blockEnd, line + 64);
            if (lineEnd - line == 64 && !Differ64(a + line, b + line)) continue;
            for (std::size_t at = line; at < lineEnd; at += kWord)
                if (Load(a + at) != Load(b + at)) AddWord(runs, at / kWord);
        }
    }
}

}  // namespace

std::size_t ArrayDelta::WordCount() const {
    std::size_t count = 0;
    for (const Run& run : runs) count += run.count;
    return count;
}

std::size_t ArrayDelta::Memory() const { return runs.capacity() * sizeof(Run) + WordCount() * kWord; }

void ShadowArray::Resize(std::size_t size) {
    if (size == size_ && words_) return;
    words_ = Allocate(Words(size));
    room_ = Words(size);
    size_ = size;
    written_ = 0;
    if (room_ > 0) words_[room_ - 1] = 0;
}

void ShadowArray::MakeRoom(std::size_t size) {
    if (Words(size) <= room_) return;
    auto larger = Allocate(Words(size));
    std::copy_n(words_.get(), Words(size_), larger.get());
    std::fill(larger.get() + Words(size_), larger.get() + Words(size), 0);
    words_ = std::move(larger);
    room_ = Words(size);
}

void ShadowArray::Prepare(const ArrayBytes& present, std::size_t& budget) {
    Resize(present.size);
    const std::size_t copied = std::min(budget, size_ - written_);
    if (copied == 0) return;
    std::memcpy(reinterpret_cast<char*>(words_.get()) + written_, present.bytes + written_, copied);
    written_ += copied;
    budget -= copied;
}

void ShadowArray::Assign(const ArrayBytes& present) {
    Resize(present.size);
    // Reading what is there costs less than writing it once more.
    constexpr std::size_t kBlock = 4096;
    char* shadow = reinterpret_cast<char*>(words_.get());
    for (std::size_t at = 0; at < written_; at += kBlock) {
        const std::size_t size = std::min(kBlock, written_ - at);
        if (std::memcmp(shadow + at, present.bytes + at, size) != 0)
            std::memcpy(shadow + at, present.bytes + at, size);
    }
    std::size_t rest = size_ - written_;
    Prepare(present, rest);
}

ArrayDelta ShadowArray::Compare(const ArrayBytes& present) {
    MakeRoom(present.size);
    ArrayDelta delta;
    delta.sizeToggle = size_ ^ present.size;
    const std::size_t shared = std::min(size_, present.size) / kWord;
    FindRuns(present.bytes, reinterpret_cast<const char*>(words_.get()), shared, delta.runs);
    for (std::size_t word = shared; word < Words(std::max(size_, present.size)); ++word)
        if (words_[word] != LoadAny(present, word)) AddWord(delta.runs, word);
    delta.runs.shrink_to_fit();
    delta.words = Allocate(delta.WordCount());
    return delta;
}

void ShadowArray::Follow(const ArrayBytes& present, ArrayDelta& delta) noexcept {
    std::uint64_t* taken = delta.words.get();
    for (const ArrayDelta::Run& run : delta.runs) {
        const std::size_t end = std::size_t{run.first} + run.count;
        const std::size_t whole = std::min(end, present.size / kWord);
        std::size_t word = run.first;
        for (; word < whole; ++word) {
            const std::uint64_t now = Load(present.bytes + word * kWord);
            *taken++ = words_[word] ^ now;
            words_[word] = now;
        }
        for (; word < end; ++word) {
            const std::uint64_t now = LoadAny(present, word);
            *taken++ = words_[word] ^ now;
            words_[word] = now;
        }
    }
    size_ = written_ = present.size;
}

void ShadowArray::Toggle(const ArrayDelta& delta) noexcept {
    const std::uint64_t* taken = delta.words.get();
    for (const ArrayDelta::Run& run : delta.runs) {
        std::uint64_t* words = words_.get() + run.first;
        for (std::size_t i = 0; i < run.count; ++i) words[i] ^= taken[i];
        taken += run.count;
    }
    size_ ^= delta.sizeToggle;
    written_ = size_;
}

void ShadowArray::CopyTo(const ArrayBytes& present, const ArrayDelta& delta) const noexcept {
    const std::size_t limit = std::min(size_, present.size);
    for (const ArrayDelta::Run& run : delta.runs) {
        const std::size_t first = run.first * kWord;
        const std::size_t end = std::min(limit, first + run.count * kWord);
        if (first < end)
            std::memcpy(present.bytes + first, reinterpret_cast<const char*>(words_.get()) + first,
                        end - first);
    }
}
