// The framework's elementary types and flag values, with fixed sizes.
#pragma once

#include <cstdint>

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using LONG = std::int32_t;

constexpr BOOL FALSE = 0;
constexpr BOOL TRUE = 1;

// A colour, 0x00BBGGRR: red in the low byte.
using COLORREF = std::uint32_t;

constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
    return (red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16);
}
constexpr BYTE GetRValue(COLORREF color) { return static_cast<BYTE>(color); }
constexpr BYTE GetGValue(COLORREF color) { return static_cast<BYTE>(color >> 8); }
constexpr BYTE GetBValue(COLORREF color) { return static_cast<BYTE>(color >> 16); }
