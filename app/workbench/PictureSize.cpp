#include "app/workbench/PictureSize.h"

#include <algorithm>

#include "app/table/CellNumber.h"

namespace app {

namespace {

constexpr double kHundredthsPerInch = 2540;

struct Unit {
    const char* name;
    double hundredths;
};
constexpr Unit kUnits[] = {{"mm", 100}, {"cm", 1000}, {"in", kHundredthsPerInch}};

double HundredthsPerUnit(std::string& text) {
    for (const Unit& unit : kUnits) {
        const std::string name = unit.name;
        if (text.size() <= name.size() || text.compare(text.size() - name.size(), name.size(), name) != 0)
            continue;
        text.resize(text.size() - name.size());
        return unit.hundredths;
    }
    return 0;
}

Failure WrongSize(const std::string& text, int dotsPerInch) {
    return UsageError(text +
                      ": expected width and height, as in 1200x800 for pixels or 180x120mm, of 100 to " +
                      "16000 pixels at " + std::to_string(dotsPerInch) + " dots per inch");
}

}  // namespace

CSize PictureSize::Paper() const {
    if (paper.cx > 0) return paper;
    const auto hundredths = [this](int length) {
        return RoundHalfAway(length * kHundredthsPerInch / dotsPerInch);
    };
    return {hundredths(pixels.cx), hundredths(pixels.cy)};
}

std::string PictureSize::Text() const {
    if (paper.cx <= 0) return std::to_string(pixels.cx) + "x" + std::to_string(pixels.cy);
    return ShortNumber(paper.cx / 100.0) + "x" + ShortNumber(paper.cy / 100.0) + "mm";
}

Result<PictureSize> ReadPictureSize(const std::string& text, int dotsPerInch) {
    std::string rest = text;
    const double hundredths = HundredthsPerUnit(rest);
    const auto times = rest.find('x');
    double sides[2] = {};
    if (times == std::string::npos || !ReadNumber(rest.substr(0, times), '.', sides[0]) ||
        !ReadNumber(rest.substr(times + 1), '.', sides[1]))
        return WrongSize(text, dotsPerInch);
    PictureSize size;
    size.dotsPerInch = dotsPerInch;
    const auto pixels = [&](double side) {
        return RoundHalfAway(hundredths > 0 ? side * hundredths / kHundredthsPerInch * dotsPerInch : side);
    };
    size.pixels = {pixels(sides[0]), pixels(sides[1])};
    if (hundredths > 0)
        size.paper = {RoundHalfAway(sides[0] * hundredths), RoundHalfAway(sides[1] * hundredths)};
    const auto [least, most] = std::minmax(size.pixels.cx, size.pixels.cy);
    const bool whole = hundredths > 0 || (size.pixels.cx == sides[0] && size.pixels.cy == sides[1]);
    if (!whole || least < kLeastPixels || most > kMostPixels) return WrongSize(text, dotsPerInch);
    return size;
}

}  // namespace app
