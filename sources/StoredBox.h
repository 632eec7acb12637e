// The extent of samples in stored units.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "platform/core/Geometry.h"

struct StoredBox {
    std::int32_t minX = std::numeric_limits<std::int32_t>::max();
    std::int32_t minY = std::numeric_limits<std::int32_t>::max();
    std::int32_t maxX = std::numeric_limits<std::int32_t>::min();
    std::int32_t maxY = std::numeric_limits<std::int32_t>::min();
    bool any = false;  // false: no sample took part

    void Add(const StoredBox& other) {
        minX = std::min(minX, other.minX);
        minY = std::min(minY, other.minY);
        maxX = std::max(maxX, other.maxX);
        maxY = std::max(maxY, other.maxY);
        any |= other.any;
    }
};

// Over the samples whose status word has no bit of `skipped`, over all without a status array.
StoredBox FindStoredBox(const CPoint* data, const unsigned short* status, long count, unsigned short skipped);
