// Reading numbers of the usual form, eight digits at a time.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace app {

// Bytes that ReadPlainDecimal() may look at from where it starts.
constexpr int kPlainReach = 64;

// Adds up to eight digits at `at` to `mantissa`; returns where they end. After Daniel Lemire, "Number parsing
// at a gigabyte per second", 2021, for any number of digits: those found are shifted to the high end, zeros
// before them.
inline const char* AddDigits(const char* at, std::uint64_t& mantissa) {
    constexpr std::uint64_t kPowers[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
    const std::uint64_t others =
        ((word + 0x4646464646464646u) | (word - 0x3030303030303030u)) & 0x8080808080808080u;
    const int count = others ? __builtin_ctzll(others) >> 3 : 8;
    if (count == 0) return at;
    word <<= 64 - 8 * count;
    word = (word & 0x0F0F0F0F0F0F0F0Fu) & (~std::uint64_t{0} << (64 - 8 * count));
    word = (word * 10 + (word >> 8)) & 0x00FF00FF00FF00FFu;
    word = (word * 100 + (word >> 16)) & 0x0000FFFF0000FFFFu;
    word = (word * 10000 + (word >> 32)) & 0xFFFFFFFFu;
    mantissa = mantissa * kPowers[count] + word;
    return at + count;
}

struct PlainDecimal {
    std::int64_t mantissa = 0;
    int decimals = 0;
};

// Reads a sign, digits, and after `decimalSign` (-1: never) further digits, 18 at most and no more than a
// double holds exactly; returns where it ends, null when there is no such number. Looks at the kPlainReach
// bytes from `at`.
inline const char* ReadPlainDecimal(const char* at, int decimalSign, PlainDecimal& number) {
    const bool negative = *at == '-';
    if (negative || *at == '+') ++at;
    std::uint64_t mantissa = 0;
    const char* end = AddDigits(at, mantissa);
    if (end - at == 8) end = AddDigits(end, mantissa);
    auto digits = end - at;
    number.decimals = 0;
    if (static_cast<unsigned char>(*end) == decimalSign) {
        const char* const fraction = ++end;
        end = AddDigits(end, mantissa);
        if (end - fraction == 8) end = AddDigits(end, mantissa);
        number.decimals = static_cast<int>(end - fraction);
        digits += end - fraction;
    }
    constexpr std::uint64_t kExact = std::uint64_t{1} << 53;
    if (digits == 0 || digits > 18 || mantissa > kExact) return nullptr;
    number.mantissa = negative ? -static_cast<std::int64_t>(mantissa) : static_cast<std::int64_t>(mantissa);
    return end;
}

}  // namespace app
