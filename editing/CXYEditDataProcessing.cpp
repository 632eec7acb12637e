// Translating, scaling, smoothing and interpolating.
//
// An edit of the whole series is recorded once for each series that this one is made of, and marks them
// modified; an edit of some points is recorded for the series itself, whose modified flag is the caller's.
#include "editing/CXYEditData.h"
#include "editing/EditCommands.h"
#include "editing/IndexRuns.h"
#include "editing/PointMarks.h"
#include "editing/PointRoutines.h"
#include "editing/PointSelection.h"
#include "editing/RecordEdit.h"
#include "editing/SmoothingSpline.h"

namespace {

constexpr int kMoved = PS_MOVED | PS_EDITED;

// Sets y = level in the points `begin` to `end` (exclusive).
void LevelRun(const SeriesArrays& series, long begin, long end, LONG level) {
    for (long i = begin; i < end; ++i) series.data[i].y = level;
    MarkRun(series.status, series.rejection, begin, end, kMoved, REJECT_MOVED);
}

// Marks the series and those it is made of as modified and calls record(part) for each of the latter.
template <class Record>
void RecordForParts(IPointSource& whole, Record record) try {
    whole.SetModified(1);
    for (IPointSource* part : whole.GetPointSources()) {
        if (!part) continue;
        part->SetModified(1);
        record(part);
    }
} catch (const std::bad_alloc&) {  // without memory for the list nothing is recorded
}

void RecordTranslation(IPointSource* owner, long dx, long dy) {
    RecordEdit<KTranslateCmd>(owner, static_cast<float>(double(dx) / owner->GetXScale()),
                              static_cast<float>(double(dy) / owner->GetYScale()));
}

void RecordScaling(IPointSource* owner, int method, double factor, double realOrigin) {
    RecordEdit<KScaleCmd>(owner, method, static_cast<float>(factor), static_cast<float>(realOrigin));
}

}  // namespace

int CXYEditData::TranslateAll(long dx, long dy, bool setLevel) {
    IPointSource* whole = GetPointSourceForFilter();
    const EditedArrays series(whole);
    if (series.count == 0) return 0;
    if (setLevel)
        LevelRun(series, 0, series.count, SaturateToInt32(dy));
    else if (!TranslatePoints(series.data, series.count, nullptr, series.count, dx, dy, 1, series.status,
                              nullptr, 0))
        return 0;
    RecordForParts(*whole, [dx, dy](IPointSource* part) { RecordTranslation(part, dx, dy); });
    return 1;
}

int CXYEditData::TranslateSelected(long dx, long dy, bool setLevel, bool inside) {
    const EditedArrays series(source);
    const FittingSelection selection(selected.get(), selectedCount, series.count);
    if (!selection.IsKnown()) return 0;
    const int listed = selection.Count();
    int changed = 0;
    if (!setLevel) {
        changed = TranslatePoints(series.data, series.count, selection.Indices(), listed, dx, dy,
                                  inside ? 1 : 0, series.status, series.rejection, REJECT_MOVED);
    } else {
        const auto level = [&series, dy](long begin, long end) {
            LevelRun(series, begin, end, SaturateToInt32(dy));
        };
        changed = inside ? listed > 0 : listed < series.count;
        if (inside)
            ForListedRuns(series.count, selection.Indices(), listed, level);
        else
            ForUnlistedRuns(series.count, selection.Indices(), listed, level);
    }
    if (changed) RecordTranslation(source, dx, dy);
    return changed;
}

int CXYEditData::TranslateSelected(long dx, long dy, bool absolute) {
    const EditedArrays series(source);
    if (series.count == 0 || GetSelectedIndex() < 0) return 0;
    if (!absolute) {
        TranslatePoints(series.data, series.count, &currentIndex, 1, dx, dy, 1, series.status,
                        series.rejection, REJECT_MOVED);
    } else if (const CPoint place(SaturateToInt32(dx), SaturateToInt32(dy));
               !(series.data[currentIndex] == place)) {
        series.data[currentIndex] = place;
        MarkRun(series.status, series.rejection, currentIndex, currentIndex + 1, kMoved, REJECT_MOVED);
    }
    RecordTranslation(source, dx, dy);
    return 1;
}

int CXYEditData::ScaleAll(int method, double factor, double origin) {
    IPointSource* whole = GetPointSourceForFilter();
    if (!whole) return 0;
    const EditedArrays series(whole);
    const Covered all{nullptr, series.count, 1};
    if (!ScaleByMethod(method, series, all, factor, origin, whole->GetYScale(), REJECT_MOVED)) return 0;
    const double realOrigin = origin / (source ? source : whole)->GetYScale();
    RecordForParts(*whole, [=](IPointSource* part) { RecordScaling(part, method, factor, realOrigin); });
    return 1;
}

int CXYEditData::ScaleSelected(int method, double factor, double origin, bool inside) {
    if (!source) return 0;
    if (method != 0 && !inside) return RefuseScaleMethod();
    const EditedArrays series(source);
    const FittingSelection selection(selected.get(), selectedCount, series.count);
    const double yScale = source->GetYScale();
    if (!ScaleByMethod(method, series, selection.Cover(inside), factor, origin, yScale, REJECT_MOVED))
        return 0;
    RecordScaling(source, method, factor, origin / yScale);
    return 1;
}

int CXYEditData::ScaleSelected(double factor, double origin) {
    const EditedArrays series(source);
    if (series.count == 0 || GetSelectedIndex() < 0) return 0;
    ScaleWithOffset(series.data, series.count, &currentIndex, 1, factor, origin, 1, series.status,
                    series.rejection, REJECT_MOVED);
    RecordScaling(source, 0, factor, origin / source->GetYScale());
    return 1;
}

int CXYEditData::SmoothAll(double waveLength) {
    IPointSource* whole = GetPointSourceForFilter();
    const EditedArrays series(whole);
    if (series.count == 0) return 0;
    if (!SmoothPoints(series.data, nullptr, series.count, nullptr, series.count, waveLength * waveLengthScale,
                      1, whole->GetXScale(), whole->GetYScale(), series.status, series.rejection,
                      REJECT_MOVED))
        return 0;
    RecordForParts(*whole, [this, waveLength](IPointSource* part) {
        RecordEdit<KSmoothCmd>(part, nullptr, 0, static_cast<float>(waveLength),
                               static_cast<float>(waveLengthScale));
    });
    return 1;
}

int CXYEditData::SmoothSelected(double waveLength, bool inside) {
    const EditedArrays series(source);
    const FittingSelection selection(selected.get(), selectedCount, series.count);
    if (selection.Count() == 0) return 0;
    if (!SmoothPoints(series.data, nullptr, series.count, selection.Indices(), selection.Count(),
                      waveLength * waveLengthScale, inside ? 1 : 0, source->GetXScale(), source->GetYScale(),
                      series.status, series.rejection, REJECT_MOVED))
        return 0;
    RecordEdit<KSmoothCmd>(source, selection.Indices(), selection.Count(), static_cast<float>(waveLength),
                           static_cast<float>(waveLengthScale));
    return 1;
}

int CXYEditData::InterpolateSelected() try {
    const SeriesArrays series(source);
    const FittingSelection selection(selected.get(), selectedCount, series.count);
    if (!selection.IsKnown()) return 0;
    std::unique_ptr<KInterpolateCmd> command;
    if (selection.Count() > 0)
        command = std::make_unique<KInterpolateCmd>(source, selection.Indices(), selection.Count());
    else if (GetSelectedIndex() >= 0)
        command = std::make_unique<KInterpolateCmd>(source, &currentIndex, 1);
    if (!command || !command->Execute()) return 0;
    HandOver(source, std::move(command));
    return 1;
} catch (const std::bad_alloc&) {
    return 0;
}
