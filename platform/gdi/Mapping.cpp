#include "platform/gdi/Mapping.h"

namespace {

std::int64_t Absolute(std::int64_t value) { return value < 0 ? -value : value; }

}  // namespace

std::int32_t AxisMapping::LengthToDevice(std::int32_t length) const {
    return SaturateToInt32(MulDivHalfAway(length, Absolute(viewportExt), Absolute(windowExt)));
}

std::int32_t AxisMapping::LengthToLogical(std::int32_t length) const {
    return SaturateToInt32(MulDivHalfAway(length, Absolute(windowExt), Absolute(viewportExt)));
}

bool Mapping::SetMode(int newMode, int dotsPerInch) {
    const auto fix = [this](int unitsPerDots, int dots, int dotsUp) {
        x.windowExt = y.windowExt = unitsPerDots;
        x.viewportExt = dots;
        y.viewportExt = dotsUp;
    };
    switch (newMode) {
        case MM_TEXT:
            fix(1, 1, 1);
            break;
        case MM_HIMETRIC:
            fix(2540, dotsPerInch, -dotsPerInch);
            break;
        case MM_TWIPS:
            fix(1440, dotsPerInch, -dotsPerInch);
            break;
        case MM_ISOTROPIC:
        case MM_ANISOTROPIC:
            break;
        default:
            return false;
    }
    mode = newMode;
    if (mode == MM_ISOTROPIC) MakeIsotropic();
    return true;
}

bool Mapping::TakesExtents(CSize ext) const {
    return (mode == MM_ISOTROPIC || mode == MM_ANISOTROPIC) && ext.cx != 0 && ext.cy != 0;
}

void Mapping::SetWindowExt(CSize ext) {
    if (!TakesExtents(ext)) return;
    x.windowExt = ext.cx;
    y.windowExt = ext.cy;
    if (mode == MM_ISOTROPIC) MakeIsotropic();
}

void Mapping::SetViewportExt(CSize ext) {
    if (!TakesExtents(ext)) return;
    x.viewportExt = ext.cx;
    y.viewportExt = ext.cy;
    if (mode == MM_ISOTROPIC) MakeIsotropic();
}

// Shortens the viewport extent of the axis whose units are longer on the device.
void Mapping::MakeIsotropic() {
    const double scaleX = double(Absolute(x.viewportExt)) / double(Absolute(x.windowExt));
    const double scaleY = double(Absolute(y.viewportExt)) / double(Absolute(y.windowExt));
    AxisMapping& longer = scaleX > scaleY ? x : y;
    const double length = double(Absolute(longer.windowExt)) * (scaleX > scaleY ? scaleY : scaleX);
    const std::int32_t shortened = RoundHalfAway(length) > 0 ? RoundHalfAway(length) : 1;
    longer.viewportExt = longer.viewportExt < 0 ? -shortened : shortened;
}
