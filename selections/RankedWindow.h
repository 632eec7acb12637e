// A window of samples as the set of their ranks in a block that is sorted once: bits, counted by words in a
// tree of sums (P. M. Fenwick, A New Data Structure for Cumulative Frequency Tables, 1994). Every operation
// takes time by the logarithm of the block.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <span>
#include <vector>

namespace selections {

class RankedWindow {
  public:
    // An empty window for samples of this block. Throws std::bad_alloc.
    RankedWindow(std::span<const std::int32_t> block, std::size_t /*capacity*/)
        : ranks_(block.size()), sorted_(block.size()), bits_(block.size() / 64 + 1), sums_(bits_.size() + 1) {
        std::vector<std::uint64_t> keys(block.size());  // the sample in ascending order, then its position
        for (std::size_t i = 0; i < block.size(); ++i)
            keys[i] = std::uint64_t{static_cast<std::uint32_t>(block[i]) ^ 0x80000000u} << 32 | i;
        std::sort(keys.begin(), keys.end());
        for (std::size_t rank = 0; rank < keys.size(); ++rank) {
            const auto position = static_cast<std::uint32_t>(keys[rank]);
            sorted_[rank] = block[position];
            ranks_[position] = static_cast<std::uint32_t>(rank);
        }
    }

    long Size() const { return size_; }
    std::int64_t At(long index) const {
        auto left = static_cast<std::uint32_t>(index);
        std::size_t word = 0;
        for (std::size_t step = std::bit_floor(bits_.size()); step > 0; step /= 2) {
            if (word + step > bits_.size() || sums_[word + step] > left) continue;
            word += step;
            left -= sums_[word];
        }
        return sorted_[word * 64 + BitAt(bits_[word], left)];
    }
    void Add(long position) { Change(position, 1); }
    void Remove(long position) { Change(position, -1); }
    void Replace(long goes, long comes) {
        Remove(goes);
        Add(comes);
    }

  private:
    // Where the bit stands that has so many set ones below it.
    static std::size_t BitAt(std::uint64_t word, std::uint32_t below) {
        std::size_t at = 0;
        for (unsigned half = 32; half > 0; half /= 2) {
            const auto inHalf =
                static_cast<std::uint32_t>(std::popcount(word & ((std::uint64_t{1} << half) - 1)));
            if (below < inHalf) continue;
            below -= inHalf;
            word >>= half;
            at += half;
        }
        return at;
    }
    void Change(long position, int by) {
        const std::uint32_t rank = ranks_[static_cast<std::size_t>(position)];
        bits_[rank / 64] ^= std::uint64_t{1} << (rank & 63);
        size_ += by;
        for (std::size_t i = rank / 64 + 1; i < sums_.size(); i += i & -i)
            sums_[i] += static_cast<std::uint32_t>(by);
    }

    std::vector<std::uint32_t> ranks_;  // by position
    std::vector<std::int32_t> sorted_;  // by rank
    std::vector<std::uint64_t> bits_;   // by rank: whether it is in the window
    std::vector<std::uint32_t> sums_;   // of bits, by words from 1
    long size_ = 0;
};

}  // namespace selections
