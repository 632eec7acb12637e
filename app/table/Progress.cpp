#include "app/table/Progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "app/table/SafeText.h"

namespace app {

Progress::Progress(bool wanted)
    : wanted_(wanted && ::isatty(STDERR_FILENO)), next_(Clock::now() + std::chrono::milliseconds(500)) {}

void Progress::Show(const std::string& what, double part) {
    if (!wanted_ || Clock::now() < next_) return;
    constexpr int kWidth = 30;
    const double done = std::clamp(part, 0.0, 1.0);
    std::string bar(static_cast<std::size_t>(kWidth * done), '#');
    bar.resize(kWidth, '.');
    std::fprintf(stderr, "\r\033[K[%s] %3d %% %s", bar.c_str(), static_cast<int>(100 * done),
                 SafeText(what).c_str());
    std::fflush(stderr);
    shown_ = true;
    next_ = Clock::now() + std::chrono::milliseconds(100);
}

void Progress::Clear() {
    if (!shown_) return;
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
    shown_ = false;
}

}  // namespace app
