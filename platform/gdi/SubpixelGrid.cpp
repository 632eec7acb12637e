#include "platform/gdi/SubpixelGrid.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "platform/core/Cpu.h"

namespace {

#define TAVIN_INLINE inline __attribute__((always_inline))

constexpr int kGroup = 8;                             // pixel columns that are blended together
constexpr int kWordRows = 64;                         // sub-rows in a word of 64 bits
constexpr std::uint64_t kWhole = 0x4040404040404040;  // eight pixels, each covered whole
constexpr int kFar = 1 << 28;                         // beyond every sub-row

// How many bits each byte has, for `words` words of eight sub-columns that lie `stride` words apart; empties
// them.
TAVIN_INLINE void Shares(std::uint64_t* bits, std::size_t stride, std::size_t words, std::uint64_t* shares) {
    constexpr std::uint64_t kOdd = 0x5555555555555555, kPairs = 0x3333333333333333,
                            kHalves = 0x0f0f0f0f0f0f0f0f;
    std::memset(shares, 0, words * sizeof *shares);
    for (int column = 0; column < kSubpixels; ++column, bits += stride) {
        for (std::size_t i = 0; i < words; ++i) {
            std::uint64_t count = bits[i] - (bits[i] >> 1 & kOdd);
            count = (count & kPairs) + (count >> 2 & kPairs);
            shares[i] += (count + (count >> 4)) & kHalves;
        }
        std::memset(bits, 0, words * sizeof *bits);
    }
}

// Eight words of eight bytes: byte i of word k changes places with byte k of word i.
TAVIN_INLINE void Transpose(std::uint64_t (&words)[kGroup]) {
    const auto exchange = [&words](int near, int far, int bits, std::uint64_t mask) {
        const std::uint64_t differing = (words[near] >> bits ^ words[far]) & mask;
        words[far] ^= differing;
        words[near] ^= differing << bits;
    };
    for (const int i : {0, 1, 2, 3}) exchange(i, i + 4, 32, 0x00000000ffffffff);
    for (const int i : {0, 1, 4, 5}) exchange(i, i + 2, 16, 0x0000ffff0000ffff);
    for (const int i : {0, 2, 4, 6}) exchange(i, i + 1, 8, 0x00ff00ff00ff00ff);
}

typedef std::int32_t Eight __attribute__((vector_size(32)));
typedef std::uint8_t Bytes __attribute__((vector_size(8)));

// target += (pixel - target) * share / 64, rounded, for up to eight pixels.
TAVIN_INLINE void BlendRow(std::uint32_t* target, int width, std::uint32_t pixel, std::uint64_t shares) {
    constexpr std::int32_t kOuter = 0xff00ff, kInner = 0x00ff00;
    if (shares == kWhole && width == kGroup) {
        for (int i = 0; i < kGroup; ++i) target[i] = pixel;
        return;
    }
    const auto bytes = static_cast<std::size_t>(width) * sizeof *target;
    Eight below{};
    std::memcpy(&below, target, bytes);
    Bytes share;
    std::memcpy(&share, &shares, sizeof share);
    const Eight ours = __builtin_convertvector(share, Eight), theirs = 64 - ours;
    const auto outer = static_cast<std::int32_t>(pixel & kOuter),
               inner = static_cast<std::int32_t>(pixel & kInner);
    const Eight redAndBlue = (ours * outer + (below & kOuter) * theirs + 0x200020) >> 6 & kOuter;
    const Eight green = (ours * inner + (below & kInner) * theirs + 0x2000) >> 6 & kInner;
    below = redAndBlue | green | static_cast<std::int32_t>(kOpaque);
    std::memcpy(target, &below, bytes);
}

// Eight pixel columns (or fewer) and the rows of some words.
struct Group {
    std::uint64_t* bits;  // of the first sub-column, from the first of the words on
    std::size_t stride;   // words
    std::size_t words;
    std::uint64_t* shares;  // room for eight times as many
    std::uint32_t* target;
    std::ptrdiff_t targetStride;
    int width, height;  // pixels
    std::uint32_t pixel;
};

TAVIN_INLINE void Blend(const Group& group) {
    for (int i = 0; i < group.width; ++i)
        Shares(group.bits + static_cast<std::size_t>(i * kSubpixels) * group.stride, group.stride,
               group.words, group.shares + static_cast<std::size_t>(i) * group.words);
    std::uint32_t* target = group.target;
    for (std::size_t word = 0; word < group.words; ++word) {
        std::uint64_t rows[kGroup]{};
        for (int i = 0; i < group.width; ++i)
            rows[i] = group.shares[static_cast<std::size_t>(i) * group.words + word];
        Transpose(rows);
        const int height = std::min(kGroup, group.height - static_cast<int>(word) * kGroup);
        for (int y = 0; y < height; ++y, target += group.targetStride)
            if (rows[y] != 0) BlendRow(target, group.width, group.pixel, rows[y]);
    }
}

void BlendPortable(const Group& group) { Blend(group); }

#ifdef __x86_64__
__attribute__((target("avx2"))) void BlendAvx2(const Group& group) { Blend(group); }
#endif

}  // namespace

void SubpixelGrid::Cover(const CRect& pixels) {
    const auto columns = static_cast<std::size_t>(pixels.Width()) * kSubpixels;
    // Not a power of two, or neighbouring sub-columns would push each other out of the cache.
    const std::size_t stride = (static_cast<std::size_t>(pixels.Height()) / kWordRows + 2) * kWordRows;
    if (columns * stride > capacity_) {
        capacity_ = 0;
        bits_.reset();
        bits_ = std::make_unique<std::uint64_t[]>(columns * stride / sizeof(std::uint64_t));
        capacity_ = columns * stride;
    }
    stride_ = stride;
    pixels_ = pixels;
    shares_.resize(stride);
    coveredFrom_.assign(columns + 2 * kMargin, -kFar);
    coveredTo_.assign(columns + 2 * kMargin, kFar);
    touchedFrom_.resize(columns);
    touchedTo_.resize(columns);
    for (int column = 0; column < static_cast<int>(columns); ++column) Forget(column);
}

void SubpixelGrid::Forget(int column) {
    CoveredFrom()[column] = CoveredTo()[column] = 0;
    touchedFrom_[static_cast<std::size_t>(column)] = INT_MAX;
    touchedTo_[static_cast<std::size_t>(column)] = 0;
}

// The bytes of a sub-column that a span lies in, and its bits in the first and the last of them.
struct SubpixelGrid::Span {
    std::uint8_t *first, *last;
    std::uint8_t head, tail;

    Span(SubpixelGrid& grid, int column, int from, int to)
        : first(reinterpret_cast<std::uint8_t*>(grid.bits_.get()) +
                static_cast<std::size_t>(column) * grid.stride_ + from / kSubpixels),
          last(first + ((to - 1) / kSubpixels - from / kSubpixels)),
          head(static_cast<std::uint8_t>(0xff << from % kSubpixels)),
          tail(static_cast<std::uint8_t>(0xff >> (kSubpixels - 1 - (to - 1) % kSubpixels))) {
        if (first == last) head = tail &= head;
    }
    bool IsFull() const {
        if ((*first & head) != head || (*last & tail) != tail) return false;
        return std::all_of(first + (first != last), last, [](std::uint8_t byte) { return byte == 0xff; });
    }
    void Fill() const {
        *first |= head;
        *last |= tail;
        if (last - first > 1) std::memset(first + 1, 0xff, static_cast<std::size_t>(last - first - 1));
    }
};

void SubpixelGrid::Settle(int column) {
    const int from = CoveredFrom()[column], to = CoveredTo()[column];
    if (from >= to) return;
    const auto i = static_cast<std::size_t>(column);
    touchedFrom_[i] = std::min(touchedFrom_[i], from);
    touchedTo_[i] = std::max(touchedTo_[i], to);
    Span(*this, column, from, to).Fill();
}

// A line that runs over what is covered soon leaves it again: only news, and what is longer, is worth it.
void SubpixelGrid::Begin(int column, int from, int to) {
    const int length = CoveredTo()[column] - CoveredFrom()[column];
    if (to - from <= length && Span(*this, column, from, to).IsFull()) return;
    Settle(column);
    CoveredFrom()[column] = from;
    CoveredTo()[column] = to;
}

void SubpixelGrid::Blend(const Canvas& canvas, std::uint32_t pixel) {
    const int width = pixels_.Width();
    for (int first = 0; first < width; first += kGroup)
        BlendGroup(canvas, pixel, first, std::min(kGroup, width - first));
}

void SubpixelGrid::BlendGroup(const Canvas& canvas, std::uint32_t pixel, LONG first, int width) {
    int top = INT_MAX, bottom = 0;
    for (int column = first * kSubpixels; column < (first + width) * kSubpixels; ++column) {
        Settle(column);
        top = std::min(top, touchedFrom_[static_cast<std::size_t>(column)]);
        bottom = std::max(bottom, touchedTo_[static_cast<std::size_t>(column)]);
        Forget(column);
    }
    if (top >= bottom) return;
    const int firstWord = top / kWordRows, words = (bottom + kWordRows - 1) / kWordRows - firstWord;
    const int y = firstWord * kGroup;
    Group group{};
    group.stride = stride_ / sizeof(std::uint64_t);
    group.bits = bits_.get() + static_cast<std::size_t>(first * kSubpixels) * group.stride + firstWord;
    group.words = static_cast<std::size_t>(words);
    group.shares = shares_.data();
    group.target = canvas.Row(pixels_.top + y) + pixels_.left + first;
    group.targetStride = canvas.stride;
    group.width = width;
    group.height = std::min(pixels_.Height() - y, words * kGroup);
    group.pixel = pixel;
#ifdef __x86_64__
    if (HasAvx2()) return BlendAvx2(group);
#endif
    BlendPortable(group);
}
