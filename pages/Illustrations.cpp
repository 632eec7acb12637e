#include "pages/Illustrations.h"

#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

#include "platform/core/Rounding.h"
#include "platform/dialog/DialogResources.h"
#include "platform/gdi/CDC.h"
#include "platform/gdi/Selected.h"
#include "platform/window/SystemColors.h"

namespace {

// The curve runs over x 0 ... 1; y 0 ... 1 fills the picture.
struct Illustration {
    double middle;                // of the curve
    double amplitude;             // its own
    std::optional<double> level;  // what the method measures from
    double (*after)(double x, double y);
};

constexpr double kLevel = 0.8;
constexpr double kMiddle = 0.5;
constexpr double kLow = 0.12;

// Each method with a figure that shows well.
constexpr Illustration kSet = {0.35, 0.16, {}, [](double, double) { return kLevel; }};
constexpr Illustration kMove = {0.3, 0.16, {}, [](double, double y) { return y + 0.4; }};
constexpr Illustration kScaleWithOffset = {kMiddle, 0.15, kMiddle,
                                           [](double, double y) { return kMiddle + (y - kMiddle) * 2.6; }};
constexpr Illustration kRamp = {0.3, 0.12, {}, [](double x, double y) { return y + 0.5 * x; }};
constexpr Illustration kDrift = {0.33, 0.12, 0.0, [](double x, double y) { return y + y * 1.0 * x; }};
constexpr Illustration kCustomScale = {0.38, 0.12, kLow,
                                       [](double, double y) { return y + (y - kLow) * 0.75; }};

class Sketch {
  public:
    Sketch(CDC& dc, CSize size) : dc_(dc), size_(size), margin_(size.cy / 10) {}

    CPoint At(double x, double y) const {
        return {RoundHalfAway(margin_ + x * (size_.cx - 2 * margin_ - 1)),
                RoundHalfAway(size_.cy - 1 - margin_ - y * (size_.cy - 2 * margin_ - 1))};
    }
    template <class Curve>
    void DrawCurve(Curve curve, COLORREF color, int width) {
        std::vector<CPoint> points;
        for (int i = 0; i <= kSteps; ++i) {
            const double x = double{1.0} * i / kSteps;
            points.push_back(At(x, curve(x)));
        }
        CPen pen(PS_SOLID, width, color);
        const Selected usePen(dc_, pen);
        dc_.SmoothPolyline(points.data(), static_cast<int>(points.size()));
    }
    void DrawLevel(double level, COLORREF color) {
        CPen pen(PS_DASH, 0, color);
        const Selected usePen(dc_, pen);
        dc_.MoveTo(At(0, level));
        dc_.LineTo(At(1, level));
    }
    void DrawArrow(double x, double from, double to, COLORREF color) {
        const CPoint tail = At(x, from);
        const CPoint head = At(x, to);
        const int wing = size_.cy / 16;
        if (std::abs(head.y - tail.y) <= 2 * wing) return;
        const int back = head.y < tail.y ? wing : -wing;
        const CPoint points[] = {
            tail, head, {head.x - wing, head.y + back}, head, {head.x + wing, head.y + back}};
        CPen pen(PS_SOLID, 0, color);
        const Selected usePen(dc_, pen);
        dc_.SmoothPolyline(points, 5);
    }

  private:
    static constexpr int kSteps = 96;

    CDC& dc_;
    CSize size_;
    int margin_;
};

// A line of as many pixels on any screen.
int LineWidth(const CDC& dc) { return RoundHalfAway(dc.GetDeviceCaps(LOGPIXELSY) * 2.0 / 96); }

void Draw(const Illustration& what, CDC& dc, CSize size) {
    const auto before = [&](double x) {
        return what.middle + what.amplitude * std::sin(3 * std::numbers::pi * x);
    };
    const auto after = [&](double x) { return what.after(x, before(x)); };
    const COLORREF grey = GetSysColor(COLOR_GRAYTEXT);
    const COLORREF accent = GetSysColor(COLOR_HOTLIGHT);
    // The gaps of dashes are the ground's.
    dc.SetBkMode(TRANSPARENT);
    Sketch sketch(dc, size);
    if (what.level) sketch.DrawLevel(*what.level, grey);
    sketch.DrawCurve(before, grey, 0);
    sketch.DrawCurve(after, accent, LineWidth(dc));
    // At the crests, where most is to be seen.
    for (const double x : {1 / 6.0, 0.5, 5 / 6.0}) sketch.DrawArrow(x, before(x), after(x), accent);
}

template <const Illustration& kWhat>
void DrawOne(CDC& dc, CSize size) {
    Draw(kWhat, dc, size);
}

const PictureTable kPictures[] = {
    {kScaleWithOffsetPicture, DrawOne<kScaleWithOffset>},
    {kDriftPicture, DrawOne<kDrift>},
    {kRampPicture, DrawOne<kRamp>},
    {kMovePicture, DrawOne<kMove>},
    {kCustomScalePicture, DrawOne<kCustomScale>},
    {kSetPicture, DrawOne<kSet>},
};

}  // namespace
