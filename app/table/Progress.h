// A progress bar on standard error, for work that takes longer than half a second on a terminal.
#pragma once

#include <chrono>
#include <string>

#include "app/table/Advance.h"

namespace app {

class Progress {
  public:
    // `wanted` is overruled where standard error is no terminal.
    explicit Progress(bool wanted);
    ~Progress() { Clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // The part done of what is going on, 0 to 1; drawn at most ten times a second.
    void Show(const std::string& what, double part);
    // The same as a callback, which must not outlive this object.
    Advance Shower(const std::string& what) {
        return [this, what](const Stage& stage) {
            Show(what, stage.part);
            return Go::On;
        };
    }
    // Takes the bar away, so that messages start on a clean line.
    void Clear();

  private:
    using Clock = std::chrono::steady_clock;

    bool wanted_;
    bool shown_ = false;
    Clock::time_point next_;
};

}  // namespace app
