#include "platform/gdi/Subpixels.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr std::int64_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int32_t>::max();

double Slope(const AxisMapping& mapping) {
    return double(kSubpixels) * mapping.viewportExt / mapping.windowExt;
}

// Where the window's origin comes to lie: on the middle of a pixel.
double Origin(const AxisMapping& mapping) {
    return double(kSubpixels) * mapping.viewportOrg + kSubpixels / 2.0;
}

}  // namespace

// Beyond some zoom the columns of all 32-bit coordinates are no longer told apart from each other's
// neighbours by doubles; there the lattice is tied to the window.
SubpixelColumns::SubpixelColumns(const AxisMapping& mapping)
    : slope_(Slope(mapping)),
      reference_(std::fabs(slope_) < 0x1p18 ? 0.0 : double(mapping.windowOrg)),
      shift_(Origin(mapping) - Column(mapping.windowOrg)) {}

bool SubpixelColumns::Reaches(std::int64_t logical, double column) const {
    const double at = Column(static_cast<std::int32_t>(logical));
    return IsRising() ? at >= column : at <= column;
}

// The first coordinate in this column or behind it, seen in the direction of larger coordinates; one past
// the largest when there is none.
std::int64_t SubpixelColumns::Border(double column) const {
    const double edge = IsRising() ? column - 0.5 : column + 0.5;
    const double guess = reference_ + edge / slope_;
    auto border = static_cast<std::int64_t>(std::clamp(guess, double(kLowest), double(kHighest) + 1.0));
    while (border > kLowest && Reaches(border - 1, column)) --border;
    while (border <= kHighest && !Reaches(border, column)) ++border;
    return border;
}

SubpixelColumns::Interval SubpixelColumns::LogicalOf(double first, double last) const {
    if (IsRising()) return {Border(first), Border(last + 1) - 1};
    return {Border(last), Border(first - 1) - 1};
}

SubpixelRows::SubpixelRows(const AxisMapping& mapping)
    : slope_(Slope(mapping)), origin_(mapping.windowOrg), shift_(Origin(mapping)) {}
