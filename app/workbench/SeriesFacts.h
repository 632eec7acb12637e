// What the program's view knows of one series of a file: its extents, where its line breaks, which samples
// lie where. Computed from the samples and kept until they change. Everything but indices in the values of
// the file.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "app/workbench/PlotRange.h"
#include "app/workbench/SeriesFile.h"

namespace app {

class SeriesFacts {
  public:
    // The series is file.series[i]; the file outlives the facts.
    SeriesFacts(const SeriesFile& file, std::size_t i) : file_(&file), index_(i) {}

    // Looks at the samples again if they changed. A line breaks where neighbours lie more than `gapFactor`
    // times the middle step apart, and where cells are empty; 0: nowhere.
    void Refresh(double gapFactor);

    // Whether x never falls.
    bool IsSorted() const { return sorted_; }
    // Of the samples that are not deleted; of all when all are.
    const Range& X() const { return x_; }
    const Range& Y() const { return y_; }
    // That some sample has.
    unsigned short Flags() const { return flags_; }
    // The indices that a line does not lead to from the one before, ascending.
    const std::vector<int>& Breaks() const { return breaks_; }
    // The samples from `first` up to `second` may lie in this range of x.
    std::pair<int, int> Within(const Range& x) const;
    // Of the samples there that are not deleted; none without one.
    Range YWithin(const Range& x) const;

    IPointSource& Source() const { return *file_->series[index_].source; }
    double RealX(double stored) const { return ax_ * stored + bx_; }
    double RealY(double stored) const { return ay_ * stored + by_; }
    double StoredX(double real) const { return (real - bx_) / ax_; }
    double StoredY(double real) const { return (real - by_) / ay_; }
    // The smallest distances that samples can be apart.
    double CountX() const { return std::fabs(ax_); }
    double CountY() const { return std::fabs(ay_); }

    // How much of the line near an area of the plot leads through it: 0 none of it, 1 all.
    double PartThrough(const PixelScale& x, const PixelScale& y, const CRect& area) const;

    // The sample nearest to a pixel and its distance in pixels; none within `reach`.
    struct Near {
        int index;
        double distance;
    };
    std::optional<Near> Nearest(const PixelScale& x, const PixelScale& y, CPoint pixel, int reach) const;

  private:
    void Follow(COnlineSource& live, bool atGaps);
    void TakeScales();
    void TakeExtents();
    void TakeBreaks(double gapFactor);

    const SeriesFile* file_;
    std::size_t index_;
    std::optional<std::uint64_t> changeCount_;
    long count_ = 0;
    double gapFactor_ = 0;
    double ax_ = 1, bx_ = 0, ay_ = 1, by_ = 0;  // real = a * stored + b
    bool sorted_ = true;
    Range x_ = Range::None();
    Range y_ = Range::None();
    unsigned short flags_ = 0;
    std::vector<int> breaks_;
    // Of a live series: how many samples have been looked at, and the last one whose x is below that before.
    std::uint64_t followed_ = 0;
    std::uint64_t lastFall_ = 0;
};

}  // namespace app
