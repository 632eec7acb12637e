#include "app/workbench/AxisReader.h"

#include <algorithm>
#include <cmath>

#include "app/table/Duration.h"
#include "app/workbench/TimeTicks.h"

namespace app {

namespace {

constexpr int kMostDecimals = 12;

// The decimals that write multiples of `step` in full.
int DecimalsForStep(double step) {
    if (!(step > 0)) return 0;
    double scaled = step;
    for (int decimals = 0; decimals < kMostDecimals; ++decimals, scaled *= 10)
        if (std::fabs(scaled - std::round(scaled)) < 1e-6 * std::max(1.0, scaled)) return decimals;
    return kMostDecimals;
}

int DecimalsForPixel(double perPixel) {
    if (!(perPixel > 0)) return 0;
    return std::clamp(static_cast<int>(std::ceil(-std::log10(perPixel))), 0, kMostDecimals);
}

// The shortest of 1, 2 and 5 times powers of ten that is at least so long.
double RoundStep(double least) {
    if (!(least > 0) || !std::isfinite(least)) return 0;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least * (1 - 1e-9)) return factor * power;
    return 10 * power;
}

// What labels of this size need from one tick to the next. More lines than kMostLines are no help; an axis of
// little height has its labels closer, for one label is no scale.
int LeastDistance(CSize label, const AxisRoom& room) {
    constexpr int kMostLines = 12;
    constexpr int kLines = 4;
    const int high =
        std::clamp<int>(room.pixels / kLines, label.cy + label.cy / 4, 2 * label.cy + label.cy / 4);
    return std::max(room.upright ? high : label.cx + label.cy, room.pixels / kMostLines);
}

class NumberAxisReader : public AxisReader {
  public:
    NumberAxisReader(CString name, CString unit) : name_(std::move(name)), unit_(std::move(unit)) {}

    std::vector<AxisTick> Ticks(const Range& range, const AxisRoom& room) const override {
        if (room.pixels < 1 || !(range.Length() > 0)) return {};
        const double perPixel = range.Length() / room.pixels;
        double step = RoundStep(perPixel * LeastDistance(room.measure("0"), room));
        // Longer steps mean shorter labels, or as long ones: the loop ends.
        for (int round = 0; round < 40; ++round) {
            const double needed = perPixel * LeastDistance(LargestLabel(range, step, room), room);
            if (step >= needed) break;
            step = RoundStep(std::max(needed, step * 1.01));
        }
        std::vector<AxisTick> ticks;
        for (const double at : TickValues(range.from, range.to, step, FirstTick::Rounded))
            ticks.push_back({at, WithDecimals(at, DecimalsForStep(step))});
        return ticks;
    }

    CString ReadOut(double value, double perPixel) const override {
        CString text = WithDecimals(value, DecimalsForPixel(perPixel));
        if (!unit_.IsEmpty()) text += " " + unit_;
        return text;
    }
    CString Distance(double length, double perPixel) const override { return ReadOut(length, perPixel); }

    CString Title() const override {
        if (unit_.IsEmpty()) return name_;
        return name_.IsEmpty() ? "[" + unit_ + "]" : name_ + " [" + unit_ + "]";
    }

  private:
    static CSize LargestLabel(const Range& range, double step, const AxisRoom& room) {
        CSize largest;
        for (const double at : {range.from, range.to}) {
            const CSize size =
                room.measure(WithDecimals(std::round(at / step) * step, DecimalsForStep(step)));
            largest = {std::max(largest.cx, size.cx), std::max(largest.cy, size.cy)};
        }
        return largest;
    }

    CString name_;
    CString unit_;
};

class TimeAxisReader : public AxisReader {
  public:
    explicit TimeAxisReader(const XReading& reading) : reading_(reading) {}

    std::vector<AxisTick> Ticks(const Range& range, const AxisRoom& room) const override {
        if (room.pixels < 1 || !(range.Length() > 0)) return {};
        const double perPixel = range.Length() / room.pixels;
        TimeStep step = TimeStepFor(perPixel * LeastDistance(room.measure("00:00"), room));
        for (int round = 0; round < 60; ++round) {
            const CSize label = room.measure(CString(WidestTickText(step)));
            const double needed = perPixel * LeastDistance(label, room);
            if (step.Seconds() >= needed) break;
            const TimeStep longer = TimeStepFor(std::max(needed, step.Seconds() * 1.01));
            if (longer.Seconds() <= step.Seconds()) break;
            step = longer;
        }
        std::vector<AxisTick> ticks;
        std::string before;
        for (const Microseconds at : TimesAt(step, At(range.from), At(range.to))) {
            const std::string context = TimeTickContext(at, step);
            ticks.push_back({Seconds(at), CString(TimeTickText(at, step)),
                             CString(context == before ? std::string() : context)});
            before = context;
        }
        return ticks;
    }

    int LabelLines() const override { return 2; }

    CString ReadOut(double value, double perPixel) const override {
        return CString(TimeReadOut(At(value), perPixel));
    }

    // Whole seconds or minutes where a pixel is longer than that.
    CString Distance(double length, double perPixel) const override {
        const double unit = perPixel >= 60 ? 60 : perPixel >= 1 ? 1 : 0.001;
        return CString(DurationText(std::round(length / unit) * unit));
    }

    CString Title() const override {
        const CString name(reading_.name);
        if (!reading_.zoned) return name;
        return name.IsEmpty() ? CString("UTC") : name + " (UTC)";
    }

  private:
    Microseconds At(double seconds) const { return reading_.Time(seconds * reading_.unitsPerReal); }
    double Seconds(Microseconds at) const { return static_cast<double>(at - reading_.origin) / 1e6; }

    XReading reading_;
};

}  // namespace

CString WithDecimals(double value, int decimals) {
    CString text;
    // Beyond this nobody counts digits.
    if (std::fabs(value) >= 1e15 || decimals >= kMostDecimals)
        text.Format("%.6g", value);
    else
        text.Format("%.*f", decimals, std::fabs(value) < 0.5 * std::pow(10.0, -decimals) ? 0.0 : value);
    return text;
}

int WidestOf(const std::vector<AxisTick>& ticks, const AxisRoom& room) {
    int widest = 0;
    for (const AxisTick& tick : ticks)
        widest = std::max(widest, static_cast<int>(room.measure(tick.text).cx));
    return widest;
}

std::unique_ptr<AxisReader> NumberAxis(CString name, CString unit) {
    return std::make_unique<NumberAxisReader>(std::move(name), std::move(unit));
}

std::unique_ptr<AxisReader> TimeAxis(const XReading& reading) {
    return std::make_unique<TimeAxisReader>(reading);
}

}  // namespace app
