#include "views/KRuler.h"

#include <cmath>
#include <cstdlib>
#include <numbers>

#include "editing/DrawSizes.h"
#include "platform/gdi/CDC.h"

namespace {

constexpr double kHalfMark = 250.0;  // 0.01 mm
constexpr double kRightAngle = std::numbers::pi / 2.0;

// How the distance of two stored points looks on the device, whose pixels are square.
CSize PhysicalDelta(const CDC& dc, const CPoint& from, const CPoint& to) {
    CSize delta(SubtractSaturated(to.x, from.x), SubtractSaturated(to.y, from.y));
    dc.LPtoDP(&delta);
    return delta;
}

double AngleOf(CSize direction) {
    if (direction.cx == 0) return direction.cy < 1 ? -kRightAngle : kRightAngle;
    if (direction.cy == 0) return direction.cx < 1 ? std::numbers::pi : 0.0;
    return std::atan(double{1.0} * direction.cy / direction.cx);
}

double InUserUnits(std::int32_t from, std::int32_t to, double scale) {
    return (double{1.0} * to - from) / (scale == 0.0 ? 1.0 : scale);
}

}  // namespace

CSize RulerEndMark(CSize direction) {
    const double angle = AngleOf(direction) + kRightAngle / 2.0;
    const double width = kHalfMark / std::numbers::sqrt2;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {RoundHalfAway(c * width - s * width), RoundHalfAway(s * width + c * width)};
}

void KRuler::StartRuler(CPoint point) { start = end = point; }

void KRuler::RulerTo(CDC* dc, CPoint& point) {
    if (type == AxisLine && dc) {
        const CSize delta = PhysicalDelta(*dc, start, point);
        const bool flat = delta.cx != 0 && delta.cy != 0 &&
                          std::abs(std::int64_t{delta.cy}) < std::abs(std::int64_t{delta.cx});
        (flat ? point.y : point.x) = flat ? start.y : start.x;
    }
    end = point;
}

bool KRuler::EndRuler(CPoint) const { return !(start == end); }

void KRuler::Draw(CDC* dc) {
    if (dc) DrawRuler(dc, start, end);
}

void KRuler::DrawRuler(CDC* dc, CPoint& from, CPoint& to) {
    if (type == Circle) {
        const int radius =
            RoundHalfAway(std::hypot(double{1.0} * to.x - from.x, double{1.0} * to.y - from.y));
        dc->Ellipse(RectAround(from, {radius, radius}));
    } else {
        const CSize mark = RulerEndMark(PhysicalDelta(*dc, from, to));
        const CSize half = LogicalSize(*dc, mark.cx, mark.cy);
        for (const CPoint& at : {from, to}) {
            dc->MoveTo(SubtractSaturated(at.x, half.cx), SubtractSaturated(at.y, half.cy));
            dc->LineTo(AddSaturated(at.x, half.cx), AddSaturated(at.y, half.cy));
        }
    }
    dc->MoveTo(from);
    dc->LineTo(to);
}

CString KRuler::ToString() const {
    const double dx = InUserUnits(start.x, end.x, scaleX);
    const double dy = InUserUnits(start.y, end.y, scaleY);
    CString text;
    if (dx == 0.0 || dy == 0.0)
        text.Format("%.3lf", std::hypot(dx, dy));
    else
        text.Format("%.3lf (%.3lf,%.3lf)", std::hypot(dx, dy), dx, dy);
    return text;
}
