#include "selections/PlaceSet.h"

namespace selections {

void PlaceSet::AddRun(long begin, long end) {
    constexpr auto kAll = ~std::uint64_t{0};
    if (begin >= end) return;
    const std::size_t first = Word(begin);
    const std::size_t last = Word(end - 1);
    const std::uint64_t fromBegin = kAll << (begin & 63);
    const std::uint64_t toEnd = kAll >> (63 - ((end - 1) & 63));
    if (first == last) {
        words_[first] |= fromBegin & toEnd;
        return;
    }
    words_[first] |= fromBegin;
    for (std::size_t w = first + 1; w < last; ++w) words_[w] = kAll;
    words_[last] |= toEnd;
}

void PlaceSet::Unite(const PlaceSet& other) {
    for (std::size_t w = 0; w < words_.size(); ++w) words_[w] |= other.words_[w];
}

void PlaceSet::Intersect(const PlaceSet& other) {
    for (std::size_t w = 0; w < words_.size(); ++w) words_[w] &= other.words_[w];
}

void PlaceSet::Subtract(const PlaceSet& other) {
    for (std::size_t w = 0; w < words_.size(); ++w) words_[w] &= ~other.words_[w];
}

void PlaceSet::Complement() {
    for (auto& word : words_) word = ~word;
    if (count_ & 63) words_.back() &= ~std::uint64_t{0} >> (64 - (count_ & 63));
}

long PlaceSet::CountBelow(long end) const {
    long members = 0;
    const std::size_t whole = Word(end);
    for (std::size_t w = 0; w < whole; ++w) members += std::popcount(words_[w]);
    if (end & 63) members += std::popcount(words_[whole] & ((std::uint64_t{1} << (end & 63)) - 1));
    return members;
}

}  // namespace selections
