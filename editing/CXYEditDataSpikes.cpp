// Finding spikes and acting on those found.
#include <algorithm>
#include <limits>
#include <new>

#include "editing/CXYEditData.h"
#include "editing/EditCommands.h"
#include "editing/IndexRuns.h"
#include "editing/PointSelection.h"
#include "editing/RecordEdit.h"
#include "editing/SpikeDetect.h"

namespace {

// The band was built from the stored data; where the series draws other points, it is moved to them. Its
// vertices pair up from both ends, one pair for each tested point.
void MoveBandToDrawPoints(CPoint* band, const SeriesArrays& series, const Covered& tested) {
    const bool listed = tested.indices != nullptr;
    const long pairs = !listed || tested.mode == 1 ? tested.count : series.count - tested.count;
    long pair = 0;
    const auto move = [&](long begin, long end) {
        for (long i = begin; i < end; ++i, ++pair) {
            const std::int64_t shift = std::int64_t{series.draw[i].y} - series.data[i].y;
            CPoint& front = band[pair];
            CPoint& back = band[2 * pairs - 1 - pair];
            front.y = AddSaturated(front.y, shift);
            back.y = AddSaturated(back.y, shift);
        }
    };
    if (!listed)
        move(0, series.count);
    else if (tested.mode == 1)
        ForListedRuns(series.count, tested.indices, tested.count, move);
    else
        ForUnlistedRuns(series.count, tested.indices, tested.count, move);
}

// Sets or clears the marks by the test's outcome; whether a point was marked.
bool MarkOutliers(const SeriesArrays& series, const MedianTest& test) {
    bool any = false;
    for (int i = 0; i < series.count; ++i) {
        const bool outlier = test.outliers[static_cast<std::size_t>(i)] != 0;
        const int marks = outlier ? series.status[i] | PS_SPIKE | PS_EDITED : series.status[i] & ~PS_SPIKE;
        series.status[i] = static_cast<unsigned short>(marks);
        any |= outlier;
    }
    return any;
}

// Lower line forward, upper line backward.
void BuildMedianBand(CPoint* band, const SeriesArrays& series, const MedianTest& test, int distance) {
    for (int i = 0; i < series.count; ++i) {
        const int median = test.medians[static_cast<std::size_t>(i)];
        band[i] = CPoint(series.draw[i].x, SubtractSaturated(median, distance));
        band[2L * series.count - 1 - i] = CPoint(series.draw[i].x, AddSaturated(median, distance));
    }
}

}  // namespace

bool CXYEditData::HasSpikes() { return spikesFound; }

// Forgets the results of the last detection and, where the band is to be shown, makes room for it; without
// memory there is no band. False without a series.
bool CXYEditData::BeginSpikeDetection(const SeriesArrays& series, bool showWindow) {
    spikesFound = false;
    if (!source) return false;
    spikeDetectionRun = true;
    spikeWindow.reset();
    spikeWindowCount = 0;
    spikeWindowSource = nullptr;
    if (!showWindow || series.count == 0 || series.count > std::numeric_limits<int>::max() / 2) return true;
    spikeWindow.reset(new (std::nothrow) CPoint[2 * static_cast<std::size_t>(series.count)]);
    if (spikeWindow) spikeWindowSource = source;
    return true;
}

int CXYEditData::SpikeDetectAll(double waveLength, double window, bool showWindow) {
    const EditedArrays series(source);
    if (!BeginSpikeDetection(series, showWindow)) return 0;
    return DetectSpikes(series, {nullptr, series.count, 1}, waveLength, window);
}

int CXYEditData::SpikeDetectSelected(double waveLength, double window, bool inside, bool showWindow) {
    const EditedArrays series(source);
    if (!BeginSpikeDetection(series, showWindow)) return 0;
    const FittingSelection selection(selected.get(), selectedCount, series.count);
    if (selection.Count() == 0) return 0;
    return DetectSpikes(series, selection.Cover(inside), waveLength, window);
}

int CXYEditData::DetectSpikes(const SeriesArrays& series, const Covered& tested, double waveLength,
                              double window) {
    const double yScale = source->GetYScale();
    const bool found = SpikeDetect(series.data, nullptr, series.count, tested.indices, tested.count,
                                   waveLength * waveLengthScale, RoundHalfAway(yScale * window), tested.mode,
                                   source->GetXScale(), yScale, spikeWindow.get(),
                                   spikeWindow ? &spikeWindowCount : nullptr, series.status);
    if (spikeWindow && series.draw != series.data) MoveBandToDrawPoints(spikeWindow.get(), series, tested);
    if (!found) return 0;
    spikesFound = true;
    RecordEdit<KSpikeDetectCmd>(source, tested.indices, tested.indices ? tested.count : 0,
                                static_cast<float>(waveLength), static_cast<float>(waveLengthScale),
                                static_cast<float>(window));
    return 1;
}

int CXYEditData::SpikeDetectMedianFilter(double filterLength, double rejectDistance, bool showWindow) try {
    const EditedArrays series(source);
    if (!BeginSpikeDetection(series, showWindow) || !series.status) return 0;
    const int distance = TruncateToInt32(source->GetYScale() * rejectDistance);
    const MedianTest test(series, TruncateToInt32(filterLength / 2.0), distance);
    if (spikeWindow) {
        BuildMedianBand(spikeWindow.get(), series, test, distance);
        spikeWindowCount = 2 * series.count;
    }
    if (!MarkOutliers(series, test)) return 0;
    spikesFound = true;
    RecordEdit<KMedianFilterSpikeDetectCmd>(source, nullptr, 0, static_cast<float>(filterLength),
                                            static_cast<float>(rejectDistance));
    return 1;
} catch (const std::bad_alloc&) {
    return 0;
}

int CXYEditData::RemoveSpikeMarkings() {
    const EditedArrays series(source);
    spikesFound = false;
    spikeDetectionRun = false;
    spikeWindow.reset();
    spikeWindowCount = 0;
    spikeWindowSource = nullptr;
    if (!series.status) return 0;
    unsigned marks = 0;
    for (int i = 0; i < series.count; ++i) {
        marks |= series.status[i];
        series.status[i] = static_cast<unsigned short>(series.status[i] & ~PS_SPIKE);
    }
    return (marks & PS_SPIKE) != 0;
}

int CXYEditData::DeleteSpikes() { return DeleteMarkedSpikes(PS_DELETED); }

int CXYEditData::RejectSpikes() { return DeleteMarkedSpikes(PS_REJECTED); }

int CXYEditData::DeleteMarkedSpikes(unsigned short flag) try {
    if (!spikesFound) return 0;
    auto command = std::make_unique<KSpikeDeleteCmd>(source, flag);
    spikesFound = false;
    if (!command->Execute()) return 0;
    HandOver(source, std::move(command));
    return 1;
} catch (const std::bad_alloc&) {
    return 0;
}
