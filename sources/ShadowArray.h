// A copy of an array that somebody else changes, and what leads from one of its states to another. That is
// the exclusive-or of the 8-byte words in which both differ, so that it leads either way. An array reads as
// zeros behind its end: a change of length is a difference like any other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

struct ArrayBytes {
    char* bytes = nullptr;
    std::size_t size = 0;
};

struct ArrayDelta {
    struct Run {
        std::uint32_t first;  // a word's number
        std::uint32_t count;
    };
    std::size_t sizeToggle = 0;  // the exclusive-or of both sizes in bytes
    std::vector<Run> runs;       // ascending, apart by two words or more
    std::unique_ptr<std::uint64_t[]> words;

    bool IsEmpty() const { return runs.empty() && sizeToggle == 0; }
    std::size_t WordCount() const;
    std::size_t Memory() const;
};

class ShadowArray {
  public:
    // Copies up to `budget` bytes that are still missing, and takes them off it.
    void Prepare(const ArrayBytes& present, std::size_t& budget);
    // Becomes a copy of `present`; cheaper where a copy of the same size has been prepared.
    void Assign(const ArrayBytes& present);

    // The rest is for a whole copy. The difference, its words not yet taken; room for what is longer is made.
    ArrayDelta Compare(const ArrayBytes& present);
    // Becomes a copy of `present`, which has not changed since Compare(), and takes the words.
    void Follow(const ArrayBytes& present, ArrayDelta& delta) noexcept;
    // Goes to the other state.
    void Toggle(const ArrayDelta& delta) noexcept;
    // Writes the words that the delta touches to `present`, as far as both have them.
    void CopyTo(const ArrayBytes& present, const ArrayDelta& delta) const noexcept;

  private:
    void Resize(std::size_t size);
    void MakeRoom(std::size_t size);

    std::unique_ptr<std::uint64_t[]> words_;  // what lies behind size_ is 0
    std::size_t room_ = 0;                    // words
    std::size_t size_ = 0;                    // bytes
    std::size_t written_ = 0;                 // bytes copied since the last Resize()
};
