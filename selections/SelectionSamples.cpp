#include "selections/SelectionSamples.h"

#include <algorithm>

#include "sources/PointStatus.h"

namespace selections {

Samples SamplesOf(IPointSource& source) {
    Samples samples;
    samples.points = source.GetData();
    samples.status = source.GetStatus();
    samples.rejection = source.GetRejection();
    samples.count = samples.points ? source.GetCount() : 0;
    const CPoint offset = source.GetOffset();
    samples.x = {source.GetXScale(), double(offset.x)};
    samples.y = {source.GetYScale(), double(offset.y)};
    return samples;
}

ValidPoints::ValidPoints(const Samples& samples) : points_(samples.points), count_(samples.count) {
    constexpr unsigned short kOut = PS_DELETED | PS_REJECTED;
    const auto isOut = [&](unsigned short word) { return (word & kOut) != 0; };
    if (!samples.status) return;
    const auto out = std::count_if(samples.status, samples.status + samples.count, isOut);
    if (out == 0) return;
    count_ -= out;
    indices_.reserve(static_cast<std::size_t>(count_) + 1);
    for (long i = 0; i < samples.count; ++i)
        if (!isOut(samples.status[i])) indices_.push_back(static_cast<std::int32_t>(i));
    if (indices_.empty()) indices_.push_back(0);  // an empty list means that all are valid
}

long ValidPoints::CountBefore(long index) const {
    if (AreAll()) return index;
    const auto end = indices_.begin() + count_;
    return std::lower_bound(indices_.begin(), end, index) - indices_.begin();
}

}  // namespace selections
