// The pixels of an off-screen picture, shared by the picture and the contexts that draw on it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Of a screen at scale 1.
constexpr int kScreenDotsPerInch = 96;

struct Picture {
    std::vector<std::uint32_t> pixels;  // 0xffRRGGBB, rows from the top without padding
    int width = 0;
    int height = 0;
    int dotsPerInch = kScreenDotsPerInch;
    unsigned changes = 0;  // drawing operations so far
};
