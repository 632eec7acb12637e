// What parts of its axes the program's view shows, and what it showed before each zoom. Entries name y axes
// by their unit or series, so that going back never shows an axis where nothing is: one that an entry does
// not know is shown whole.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "app/workbench/PlotRange.h"

namespace app {

struct ShownRanges {
    std::optional<Range> x;  // nothing: whole
    std::map<std::string, Range> y;
};

class ZoomStack {
  public:
    ZoomStack() : entries_(1) {}

    const ShownRanges& Current() const { return entries_.back(); }
    ShownRanges& Current() { return entries_.back(); }
    std::size_t Depth() const { return entries_.size(); }

    void Push(ShownRanges shown) {
        if (entries_.size() >= kMost) entries_.erase(entries_.begin());
        entries_.push_back(std::move(shown));
    }
    // False at the first entry.
    bool Back() {
        if (entries_.size() < 2) return false;
        entries_.pop_back();
        return true;
    }
    void KeepCurrent() { entries_.erase(entries_.begin(), entries_.end() - 1); }

  private:
    static constexpr std::size_t kMost = 500;

    std::vector<ShownRanges> entries_;
};

}  // namespace app
