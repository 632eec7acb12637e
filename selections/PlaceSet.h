// A set of the places 0 ... count - 1, one bit each.
#pragma once

#include <bit>
#include <cstdint>
#include <vector>

namespace selections {

class PlaceSet {
  public:
    PlaceSet() = default;
    // Empty, with room for `count` places. Throws std::bad_alloc.
    explicit PlaceSet(long count) : words_(static_cast<std::size_t>((count + 63) / 64)), count_(count) {}

    long PlaceCount() const { return count_; }
    bool Has(long place) const { return words_[Word(place)] >> (place & 63) & 1; }
    void Add(long place) { words_[Word(place)] |= std::uint64_t{1} << (place & 63); }
    // The places `begin` to `end` (exclusive).
    void AddRun(long begin, long end);
    // Adds the places below `end` for which wanted(place) holds.
    template <class Wanted>
    void AddWhere(long end, Wanted wanted) {
        for (long base = 0; base < end; base += 64) {
            const long bits = end - base < 64 ? end - base : 64;
            std::uint64_t word = 0;
            for (long bit = 0; bit < bits; ++bit) word |= std::uint64_t{wanted(base + bit)} << bit;
            words_[Word(base)] |= word;
        }
    }
    void Unite(const PlaceSet& other);
    void Intersect(const PlaceSet& other);
    void Subtract(const PlaceSet& other);
    void Complement();
    void Clear() { words_.assign(words_.size(), 0); }

    bool IsEmpty() const { return Count() == 0; }
    long Count() const { return CountBelow(count_); }
    // How many members are below `end`.
    long CountBelow(long end) const;
    // visit(place) for the members, ascending.
    template <class Visit>
    void ForEach(Visit visit) const {
        for (std::size_t w = 0; w < words_.size(); ++w)
            for (std::uint64_t word = words_[w]; word; word &= word - 1)
                visit(static_cast<long>(w * 64) + std::countr_zero(word));
    }

    friend bool operator==(const PlaceSet&, const PlaceSet&) = default;

  private:
    static std::size_t Word(long place) { return static_cast<std::size_t>(place) / 64; }

    std::vector<std::uint64_t> words_;  // no bit is set behind the last place
    long count_ = 0;
};

}  // namespace selections
