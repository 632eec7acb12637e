// `tavin plot`: the workbench's drawing without a window.
#pragma once

#include <string>

#include "app/workbench/SeriesFile.h"

namespace app {

struct PlotOptions {
    ReadOptions read;
    std::string output;       // its ending says the format; "-" is standard output
    std::string format;       // of standard output: png, svg or pdf; empty: png
    std::string title;        // above the plots; empty: none, and the picture bears the name of the file
    std::string over;         // the file that the other one was cleaned from; empty: none
    std::string panels;       // a word of kPanelWords; empty: the first
    std::string size;         // as ReadPictureSize takes it; empty: 1200x800
    std::string dotsPerInch;  // empty: 96
    std::string from;         // x of the left and the right edge as the user writes them; empty: the data's
    std::string to;
    std::string gap;         // as CSeriesView::SetGapFactor takes it; empty: 2.5
    bool fileOrder = false;  // joins the samples in the order of the rows
};

// What a plot is for: a unit, a series, or all series together.
constexpr const char* kPanelWords = "unit series all";

Result<int> Plot(const PlotOptions& options);

}  // namespace app
