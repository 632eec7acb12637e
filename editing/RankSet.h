// A set of the numbers 0 ... size - 1 as a bitmap under bitmaps: a bit of each level tells whether a word of
// the level below has members, so that every operation takes at most one step per level (six for 2^32
// numbers) and nearly always just one.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <vector>

class RankSet {
  public:
    // Room for any size up to `capacity`, which is 1 at least. Throws std::bad_alloc.
    explicit RankSet(std::uint32_t capacity) {
        std::size_t words = 0;
        for (std::uint32_t size = capacity; levels_ == 0 || size > 1; ++levels_) {
            size = WordsFor(size);
            starts_[levels_] = words;
            words += size;
        }
        bits_.resize(words);
    }

    void Clear() { bits_.assign(bits_.size(), 0); }

    void Insert(std::uint32_t rank) {
        for (unsigned level = 0; level < levels_; ++level, rank >>= 6) {
            std::uint64_t& word = Word(level, rank);
            const bool wasEmpty = word == 0;
            word |= Bit(rank);
            if (!wasEmpty) return;
        }
    }

    void Erase(std::uint32_t rank) {
        for (unsigned level = 0; level < levels_; ++level, rank >>= 6) {
            std::uint64_t& word = Word(level, rank);
            word &= ~Bit(rank);
            if (word) return;
        }
    }

    // The least member above `rank`; there has to be one.
    std::uint32_t Next(std::uint32_t rank) const {
        unsigned level = 0;
        std::uint64_t above = 0;
        while ((above = Word(level, rank) & ~(2 * Bit(rank) - 1)) == 0) {
            rank >>= 6;
            ++level;
        }
        rank = (rank & ~63u) + static_cast<std::uint32_t>(std::countr_zero(above));
        while (level > 0) {
            rank <<= 6;
            rank += static_cast<std::uint32_t>(std::countr_zero(Word(--level, rank)));
        }
        return rank;
    }

    // The greatest member below `rank`; there has to be one.
    std::uint32_t Previous(std::uint32_t rank) const {
        unsigned level = 0;
        std::uint64_t below = 0;
        while ((below = Word(level, rank) & (Bit(rank) - 1)) == 0) {
            rank >>= 6;
            ++level;
        }
        rank = (rank | 63u) - static_cast<std::uint32_t>(std::countl_zero(below));
        while (level > 0) {
            rank = (rank << 6) | 63u;
            rank -= static_cast<std::uint32_t>(std::countl_zero(Word(--level, rank)));
        }
        return rank;
    }

  private:
    static std::uint32_t WordsFor(std::uint32_t size) { return size / 64 + (size % 64 != 0); }
    static std::uint64_t Bit(std::uint32_t rank) { return std::uint64_t{1} << (rank & 63); }
    std::uint64_t& Word(unsigned level, std::uint32_t rank) { return bits_[starts_[level] + (rank >> 6)]; }
    std::uint64_t Word(unsigned level, std::uint32_t rank) const {
        return bits_[starts_[level] + (rank >> 6)];
    }

    std::vector<std::uint64_t> bits_;
    std::array<std::size_t, 6> starts_{};
    unsigned levels_ = 0;
};
