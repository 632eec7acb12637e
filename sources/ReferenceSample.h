// Which sample of one series goes with a place on the x axis of another.
#pragma once

#include <algorithm>

#include "sources/IPointSource.h"

// The first sample at or past stored x `x`, in the order in which the samples run: up in x, or down where the
// first lies above the last. Null when there is none.
inline const CPoint* FirstSampleFrom(IPointSource& series, std::int32_t x) {
    const long count = series.GetCount();
    const CPoint* const samples = count > 0 ? series.GetData() : nullptr;
    if (!samples) return nullptr;
    const bool down = samples[0].x > samples[count - 1].x;
    const auto before = [down](const CPoint& sample, std::int32_t place) {
        return down ? sample.x > place : sample.x < place;
    };
    const CPoint* const found = std::lower_bound(samples, samples + count, x, before);
    return found == samples + count ? nullptr : found;
}

// Null when there is none.
inline const CPoint* NewestSample(IPointSource& series) {
    const long count = series.GetCount();
    const CPoint* const samples = count > 0 ? series.GetData() : nullptr;
    return samples ? samples + (count - 1) : nullptr;
}
