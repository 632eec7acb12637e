// How large a picture is: in pixels, or in lengths that a number of dots per inch turns into pixels.
#pragma once

#include <string>

#include "app/table/Result.h"
#include "tavin/tavin.h"

namespace app {

constexpr int kScreenDots = 96;  // per inch
constexpr int kLeastDots = 20;
constexpr int kMostDots = 2400;
constexpr int kLeastPixels = 100;  // pixels
constexpr int kMostPixels = 16000;

struct PictureSize {
    CSize pixels;
    int dotsPerInch = kScreenDots;  // texts and lines keep their size on paper
    CSize paper = {};               // 0.01 mm; nothing: what the pixels come to

    CSize Paper() const;
    // As ReadPictureSize takes it.
    std::string Text() const;
};

// From "1200x800" in pixels, or "180x120mm", "18x12cm", "7x5in". Fails with what is expected.
Result<PictureSize> ReadPictureSize(const std::string& text, int dotsPerInch);

}  // namespace app
