#include "editing/PointIndices.h"

#include <algorithm>

PointIndices PointIndices::First(long count) {
    PointIndices all;
    if (count < 1) return all;
    all.runs_.push_back({0, count});
    all.count_ = count;
    return all;
}

PointIndices::PointIndices(const long* indices, long count) {
    if (!indices || count < 1) return;
    for (long i = 0; i < count; ++i) {
        const bool continues = !runs_.empty() && runs_.back().first >= 0 && indices[i] > 0 &&
                               indices[i] - runs_.back().first == runs_.back().count;
        if (continues)
            ++runs_.back().count;
        else
            runs_.push_back({indices[i], 1});
    }
    runs_.shrink_to_fit();
    count_ = count;
}

std::vector<long> PointIndices::Within(long pointCount) const {
    std::vector<long> list;
    list.reserve(static_cast<std::size_t>(std::clamp(count_, 0L, std::max(pointCount, 0L))));
    for (const Run& run : runs_) {
        if (run.first < 0) continue;  // stands alone: a run of several starts at 0 or above
        const long count = std::min(run.count, pointCount - run.first);
        for (long i = 0; i < count; ++i) list.push_back(run.first + i);
    }
    if (!AreAscendingWithin(list.data(), static_cast<long>(list.size()), pointCount)) {
        std::sort(list.begin(), list.end());
        list.erase(std::unique(list.begin(), list.end()), list.end());
    }
    return list;
}

bool AreAscendingWithin(const long* indices, long count, long pointCount) {
    if (count < 1) return true;
    if (indices[0] < 0 || indices[count - 1] >= pointCount) return false;
    bool ascending = true;  // no early way out: the loop vectorises
    for (long i = 1; i < count; ++i) ascending &= indices[i - 1] < indices[i];
    return ascending;
}
