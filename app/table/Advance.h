// How work on a table tells how far it is, and how it is stopped.
#pragma once

#include <cstdint>
#include <functional>

namespace app {

struct Table;

struct Stage {
    double part = 0;               // that is done, 0 to 1
    std::int64_t rows = 0;         // so far
    const Table* table = nullptr;  // while reading: the rows so far, all of their cells complete
};

enum class Go { On, Stop };

// Called now and then, on the thread that does the work; the answer Stop ends it with kStopped.
using Advance = std::function<Go(const Stage&)>;

}  // namespace app
