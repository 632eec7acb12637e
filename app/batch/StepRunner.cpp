#include "app/batch/StepRunner.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace app {

namespace {

constexpr const char* kNothingSelected = "nothing is selected: nothing to do";

StepResult Idle(const char* reason) {
    StepResult result;
    result.note = reason;
    return result;
}

// The reject distance is turned into stored counts by truncation. A distance that is a whole number of counts
// but for the error of its product comes out one too small: it is raised by as little as that takes.
double DistanceForTruncation(double distance, double scale) {
    const double counts = std::round(distance * scale);
    double raised = distance;
    for (int i = 0; i < 4 && scale * raised < counts && counts - scale * raised < 1e-6; ++i)
        raised = std::nextafter(raised, std::numeric_limits<double>::infinity());
    return raised;
}

std::string OneLine(const char* text) {
    std::string line;
    for (const char* at = text; *at; ++at) {
        if (*at == '\r') continue;
        line += *at == '\n' ? std::string(", ") : std::string(1, *at);
    }
    while (!line.empty() && line.back() == ' ') line.pop_back();
    return line;
}

// Whether a stored value stands at the end of the 32-bit range, where sums are held.
bool HitsLimits(KPointSource& source) {
    const CPoint* points = source.GetData();
    return std::any_of(points, points + source.GetCount(), [](const CPoint& point) {
        return point.y == std::numeric_limits<LONG>::max() || point.y == std::numeric_limits<LONG>::min();
    });
}

}  // namespace

StepRunner::StepRunner(const Table& table, const XAxis& axis, Series& series)
    : table_(table),
      axis_(axis),
      series_(series),
      source_(*series.source),
      managerBefore_(kelvo::SetUndoManager(&manager_)) {
    data_.SelectPointSource(&source_);
    data_.SetWaveLengthScale(axis.unitsPerReal);
}

StepRunner::~StepRunner() {
    manager_.Clear(&source_);
    kelvo::SetUndoManager(managerBefore_);
}

Result<StepResult> StepRunner::Run(const Step& step) {
    const long before = manager_.GetCount(&source_);
    auto result = Dispatch(step);
    if (!result) return result;
    if (manager_.GetCount(&source_) > before) Describe(*result);
    if (!HitsLimits(source_)) return result;
    return Refusal(step.text + " takes values of column \"" + std::string(source_.GetName()) +
                   "\" beyond what can be stored with " + Counted(series_.scale.Decimals(), "decimal") +
                   "; use a smaller amount or split the file");
}

Result<StepResult> StepRunner::Dispatch(const Step& step) {
    switch (step.kind) {
        case StepKind::Select:
            return Select(step);
        case StepKind::Median:
            return DetectByMedian(step);
        case StepKind::Spikes:
            return DetectByWaveLength(step);
        case StepKind::Delete:
        case StepKind::Reject:
            return Mark(step);
        case StepKind::DeleteSpikes:
        case StepKind::RejectSpikes:
            return MarkSpikes(step);
        case StepKind::Interpolate:
            return Interpolate();
        default:
            return Change(step);
    }
}

template <class Wanted>
StepResult StepRunner::SelectWhere(Wanted&& wanted) {
    std::vector<long> indices;
    unsigned short* status = source_.GetStatus();
    for (int i = 0; i < source_.GetCount(); ++i)
        if (data_.ValidateSelection(i, status) && wanted(i)) indices.push_back(i);
    data_.SetSelected(indices.data(), static_cast<int>(indices.size()));
    StepResult result;
    result.points = data_.GetSelectedCount();
    return result;
}

Result<StepResult> StepRunner::Select(const Step& step) {
    const CPoint* points = source_.GetData();
    const unsigned short* status = source_.GetStatus();
    switch (step.selection) {
        case SelectionKind::All:
            return SelectWhere([](int) { return true; });
        case SelectionKind::None:
            data_.ClearSelection();
            return StepResult{};
        case SelectionKind::Invert: {
            const std::vector<long> before(data_.GetSelected(),
                                           data_.GetSelected() + data_.GetSelectedCount());
            return SelectWhere([&](int i) { return !std::binary_search(before.begin(), before.end(), i); });
        }
        case SelectionKind::Spikes:
            return SelectWhere([&](int i) { return status[i] & PS_SPIKE; });
        case SelectionKind::XRange:
            return SelectXRange(step);
        case SelectionKind::YRange:
            break;
    }
    const double least = step.from.number.value_or(-std::numeric_limits<double>::infinity());
    const double most = step.to.number.value_or(std::numeric_limits<double>::infinity());
    return SelectWhere([&](int i) {
        const double y = series_.scale.Real(points[i].y);
        return y >= least && y <= most;
    });
}

// On an axis of times a number counts as the file does where it holds epoch numbers, else in seconds from the
// first sample.
Result<StepResult> StepRunner::SelectXRange(const Step& step) {
    const CPoint* points = source_.GetData();
    const double infinity = std::numeric_limits<double>::infinity();
    if (!table_.HasTimes()) {
        if (step.from.time || step.to.time)
            return UsageError(step.text + ": the x axis holds numbers, not times");
        const double from = step.from.number.value_or(-infinity);
        const double to = step.to.number.value_or(infinity);
        return SelectWhere([&](int i) {
            const double x = axis_.scale.Real(points[i].x);
            return x >= from && x <= to;
        });
    }
    const bool milliseconds = table_.x.timeForm == TimeForm::EpochMilliseconds;
    const bool epoch = milliseconds || table_.x.timeForm == TimeForm::EpochSeconds;
    const auto start = epoch ? 0.0 : static_cast<double>(axis_.scale.RealTime(0));
    const auto place = [&](const Bound& bound, double open) {
        if (bound.time) return static_cast<double>(*bound.time);
        return bound.number ? start + *bound.number * (milliseconds ? 1e3 : 1e6) : open;
    };
    const double from = place(step.from, -infinity);
    const double to = place(step.to, infinity);
    return SelectWhere([&](int i) {
        const auto time = static_cast<double>(axis_.scale.RealTime(points[i].x));
        return time >= from && time <= to;
    });
}

Result<StepResult> StepRunner::DetectByMedian(const Step& step) {
    StepResult result;
    data_.SpikeDetectMedianFilter(step.length, DistanceForTruncation(step.distance, source_.GetYScale()),
                                  false);
    result.points = CountStatus(PS_SPIKE);
    if (result.points == 0) result.note = "no point lies that far from the median: nothing marked";
    return result;
}

Result<StepResult> StepRunner::DetectByWaveLength(const Step& step) {
    const auto waveLength = RealWaveLength(step.waveLength);
    if (!waveLength) return waveLength.Error();
    StepResult result;
    if (data_.GetSelectedCount() > 0)
        data_.SpikeDetectSelected(*waveLength, step.distance, true, false);
    else
        data_.SpikeDetectAll(*waveLength, step.distance, false);
    result.points = CountStatus(PS_SPIKE);
    if (result.points == 0) result.note = "no point lies that far from the smoothed curve: nothing marked";
    return result;
}

Result<StepResult> StepRunner::Mark(const Step& step) {
    StepResult result;
    result.points = data_.GetSelectedCount();
    result.ofSelection = true;
    const int marked =
        step.kind == StepKind::Delete ? data_.DeleteSelected(true) : data_.RejectSelected(true, 0);
    if (!marked) return Idle(kNothingSelected);
    return result;
}

Result<StepResult> StepRunner::MarkSpikes(const Step& step) {
    StepResult result;
    result.points = CountStatus(PS_SPIKE);
    const int marked = step.kind == StepKind::DeleteSpikes ? data_.DeleteSpikes() : data_.RejectSpikes();
    if (marked) return result;
    return Idle("no spikes are marked: nothing to do (detect them with --median or --spikes)");
}

Result<StepResult> StepRunner::Interpolate() {
    StepResult result;
    result.points = data_.GetSelectedCount();
    result.ofSelection = true;
    if (result.points == 0) return Idle(kNothingSelected);
    if (data_.InterpolateSelected()) return result;
    return Idle("every point is selected: there is nothing to interpolate between");
}

// Without a selection all points that are not deleted are selected for the step: an edit of the selection
// records a command, one of the whole series would not.
Result<StepResult> StepRunner::Change(const Step& step) {
    const auto waveLength = RealWaveLength(step.waveLength);
    if (!waveLength) return waveLength.Error();
    const bool all = data_.GetSelectedCount() == 0;
    if (all) SelectWhere([](int) { return true; });
    StepResult result;
    result.points = data_.GetSelectedCount();
    result.ofSelection = !all;
    const int changed = ChangeSelected(step, *waveLength);
    if (all) data_.ClearSelection();
    if (changed) {
        result.note = RoundingNote(step);
        return result;
    }
    const bool smooth = step.kind == StepKind::Smooth;
    return Idle(smooth ? "fewer than 4 points to fit: nothing to do" : kNothingSelected);
}

int StepRunner::ChangeSelected(const Step& step, double waveLength) {
    const AxisScale& y = series_.scale;
    switch (step.kind) {
        case StepKind::Translate:
            return data_.TranslateSelected(0, RoundHalfAway(y.StoredLength(step.amount)), false, true);
        case StepKind::Level:
            return data_.TranslateSelected(0, y.Stored(step.amount), true, true);
        case StepKind::Scale: {
            const double origin = y.StoredLength(step.origin) - static_cast<double>(y.Origin());
            return data_.ScaleSelected(step.method, step.factor, origin, true);
        }
        default:
            return data_.SmoothSelected(waveLength, true);
    }
}

Result<double> StepRunner::RealWaveLength(const WaveLength& waveLength) const {
    if (waveLength.hasUnit && !table_.HasTimes())
        return UsageError("a wave length with a unit of time needs an x axis of times; column \"" +
                          table_.x.name + "\" holds numbers");
    return waveLength.value;
}

std::int64_t StepRunner::CountStatus(unsigned short flags) const {
    const unsigned short* status = source_.GetStatus();
    return std::count_if(status, status + source_.GetCount(),
                         [&](unsigned short word) { return word & flags; });
}

void StepRunner::Describe(StepResult& result) const {
    kelvo::IAction* action = manager_.GetAction(&source_, manager_.GetCount(&source_) - 1);
    result.command = action->GetName();
    result.text = OneLine(action->GetResultText());
}

std::string StepRunner::RoundingNote(const Step& step) const {
    if (step.kind != StepKind::Translate && step.kind != StepKind::Level) return "";
    const AxisScale& y = series_.scale;
    const double exact = y.StoredLength(step.amount);
    const double rounded = RoundHalfAway(exact);
    if (std::fabs(exact - rounded) < 1e-6 || std::fabs(exact) > 2e9) return "";
    return "the amount was rounded to " + NumberText(rounded / y.Scale(), std::max(0, y.Decimals())) +
           ": the column is stored with " + Counted(y.Decimals(), "decimal") +
           (series_.exactness.inexact ? "" : " (--decimals gives it more)");
}

}  // namespace app
