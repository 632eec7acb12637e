#include "editing/SeriesArrays.h"

#include <algorithm>
#include <limits>

#include "editing/MedianFilter.h"
#include "editing/PointRoutines.h"
#include "platform/core/MessageBox.h"

SeriesArrays::SeriesArrays(IPointSource* source) {
    if (!source) return;
    const long points = source->GetCount();
    if (points < 1 || points > std::numeric_limits<int>::max()) return;
    data = source->GetData();
    draw = source->GetDrawPoints();
    if (!data || !draw) return;
    status = source->GetStatus();
    rejection = source->GetRejection();
    count = static_cast<int>(points);
}

EditedArrays::EditedArrays(IPointSource* source) : SeriesArrays(source) {
    if (source) source->NoteChange();
}

int ScaleByMethod(int method, const SeriesArrays& series, const Covered& covered, double factor,
                  double origin, double yScale, int code) {
    const auto& [data, draw, status, rejection, count] = series;
    switch (method) {
        case 0:
            return ScaleWithOffset(data, count, covered.indices, covered.count, factor, origin, covered.mode,
                                   status, rejection, code);
        case 1:
            return RampScale(data, count, covered.indices, covered.count, factor * yScale, status, rejection,
                             code);
        case 2:
            return DriftScale(data, count, covered.indices, covered.count, factor, status, rejection, code);
        case 3:
            return CustomScale(data, count, covered.indices, covered.count, factor, origin, status, rejection,
                               code);
        default:
            return RefuseScaleMethod();
    }
}

int RefuseScaleMethod() {
    AfxMessageBox("Function is not implemented", MB_OK);
    return 0;
}

MedianTest::MedianTest(const SeriesArrays& series, int half, int distanceStored)
    : medians(static_cast<std::size_t>(series.count)), outliers(medians.size()) {
    std::vector<int> samples(medians.size());
    std::transform(series.draw, series.draw + series.count, samples.begin(),
                   [](const CPoint& point) { return point.y; });
    MedianFilterSpikeTest(samples.data(), outliers.data(), medians.data(), series.count,
                          std::clamp(half, 0, series.count), distanceStored);
}
