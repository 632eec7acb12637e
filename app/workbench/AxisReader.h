// How an axis reads: where its ticks stand and what they say, what the pointer reads on it and how long a
// distance on it is.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "app/workbench/PlotRange.h"
#include "app/workbench/SeriesFile.h"

namespace app {

struct AxisTick {
    double at;
    CString text;
    CString context = {};  // in a line below: what this label and those after it leave out
};

// The side of a plot that ticks are wanted for.
struct AxisRoom {
    int pixels = 0;
    bool upright = false;  // labels above each other
    std::function<CSize(const CString&)> measure;
};

class AxisReader {
  public:
    virtual ~AxisReader() = default;

    // Ascending, at round values, so far apart that their labels do not touch. The same for the same range
    // and room, whatever was asked before.
    virtual std::vector<AxisTick> Ticks(const Range& range, const AxisRoom& room) const = 0;
    // That labels may take; the second one is their context.
    virtual int LabelLines() const { return 1; }
    // A value, and a distance, to the precision that a pixel shows; with the unit.
    virtual CString ReadOut(double value, double perPixel) const = 0;
    virtual CString Distance(double length, double perPixel) const = 0;
    // What the axis shows: its name with unit or zone.
    virtual CString Title() const = 0;
};

std::unique_ptr<AxisReader> NumberAxis(CString name, CString unit);
// Of times in seconds from reading.origin.
std::unique_ptr<AxisReader> TimeAxis(const XReading& reading);

// A number with so many decimals.
CString WithDecimals(double value, int decimals);

// The widths of the labels of a y axis; their greatest.
int WidestOf(const std::vector<AxisTick>& ticks, const AxisRoom& room);

}  // namespace app
