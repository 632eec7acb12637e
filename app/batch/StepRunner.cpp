#include "app/batch/StepRunner.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "app/table/CellNumber.h"
#include "app/table/Zone.h"

namespace app {

namespace {

constexpr double kShortMedian = 7;  // samples

StepResult Idle(std::string reason) {
    StepResult result;
    result.note = std::move(reason);
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

// A plain number on an axis of times counts as the file does where it holds epoch numbers, else in seconds
// from the first sample.
selections::TimeUnits TimeUnitsOf(const Table& table, const XAxis& axis) {
    selections::TimeUnits units;
    units.timeOfZero = axis.scale.RealTime(0);
    const TimeForm form = table.x.timeForm;
    units.numberOrigin = IsEpoch(form) ? 0 : units.timeOfZero;
    units.microsecondsPerNumber = form == TimeForm::EpochMilliseconds   ? 1e3
                                  : form == TimeForm::EpochMicroseconds ? 1
                                                                        : 1e6;
    if (!table.zone.empty())
        units.fromLocal = [&zone = table.zone](std::int64_t time, bool last) {
            ToUtc(time, zone, last);
            return time;
        };
    return units;
}

}  // namespace

StepRunner::StepRunner(const Table& table, const XAxis& axis, std::size_t column, Series& series)
    : table_(table),
      axis_(axis),
      column_(table.columns[column]),
      series_(series),
      source_(*series.source),
      managerBefore_(kelvo::SetUndoManager(&manager_)) {
    data_.SelectPointSource(&source_);
    data_.SetWaveLengthScale(axis.unitsPerReal);
    data_.SetSpikesFound(CountOpenSpikes(false) > 0);
    FindEmptyCells();
}

StepRunner::~StepRunner() {
    manager_.Clear(&source_);
    kelvo::SetUndoManager(managerBefore_);
}

Result<StepResult> StepRunner::Run(const Step& step) {
    const long before = manager_.GetCount(&source_);
    ShowSelection();
    auto result = (this->*step.kind->run)(step);
    if (!result) return result;
    if (manager_.GetCount(&source_) > before && result->points > 0) Describe(*result);
    if (!HitsLimits(source_)) return result;
    return Refusal(step.text + " takes values of column \"" + std::string(source_.GetName()) +
                   "\" beyond what can be stored with " + Counted(series_.scale.Decimals(), "decimal") +
                   "; use a smaller amount or split the file");
}

selections::Samples StepRunner::MakeSamples() const {
    selections::Samples samples = selections::SamplesOf(source_);
    samples.empty = empty_;
    samples.x = {axis_.scale.Scale(), double(axis_.scale.Origin())};
    samples.y = {series_.scale.Scale(), double(series_.scale.Origin())};
    samples.xIsTime = table_.HasTimes();
    if (samples.xIsTime) samples.time = TimeUnitsOf(table_, axis_);
    return samples;
}

void StepRunner::ShowSelection() {
    std::vector<long> indices;
    const unsigned short* status = source_.GetStatus();
    const long count = source_.GetCount();
    if (selection_)
        selection_->ForEach([&](long place) {
            if (place < count && !(status[place] & PS_DELETED)) indices.push_back(place);
        });
    data_.SetSelected(indices.data(), static_cast<int>(indices.size()));
}

void StepRunner::SelectAllPoints() {
    std::vector<long> indices;
    unsigned short* status = source_.GetStatus();
    for (int i = 0; i < source_.GetCount(); ++i)
        if (data_.ValidateSelection(i, status)) indices.push_back(i);
    data_.SetSelected(indices.data(), static_cast<int>(indices.size()));
}

StepResult StepRunner::NothingToDo() const {
    if (!selection_) return Idle("nothing is selected: nothing to do");
    const std::string until = ": nothing to do until --select all or another selection";
    if (isUsedUp_) return Idle("what was selected has been deleted or rejected" + until);
    if (!selection_->IsEmpty() && selection_->CountBelow(source_.GetCount()) == 0)
        return Idle("only empty cells are selected (--fill-gaps fills them)" + until);
    return Idle("nothing is selected" + until);
}

Result<StepResult> StepRunner::Select(const Step& step) {
    StepResult result;
    isUsedUp_ = false;
    if (step.selection.IsAll()) {
        selection_.reset();
        SelectAllPoints();
        result.points = data_.GetSelectedCount();
        result.note = "steps act on all points again";
        return result;
    }
    const selections::Samples samples = MakeSamples();
    const std::string misfit = step.selection.Misfit(samples);
    if (!misfit.empty()) return UsageError(step.text + ": " + misfit);
    PlaceSet found;
    if (!step.selection.Find(samples, selection_.value_or(PlaceSet()), found))
        return Refusal("not enough memory for " + step.text);
    PlaceSet judged;
    if (keepsJudged_ && step.selection.FindJudged(samples, judged)) Judge(judged);
    selection_ = std::move(found);
    ShowSelection();
    result.points = data_.GetSelectedCount();
    result.cells = selection_->Count() - selection_->CountBelow(samples.count);
    result.selectedNothing = result.points == 0 && result.cells == 0;
    if (result.selectedNothing)
        result.note = "nothing is selected: steps edit nothing until the next --select";
    return result;
}

// Finds spikes and keeps the marks of the points that are not selected.
StepResult StepRunner::Detect(const std::function<void()>& detect, const char* nothing) {
    if (IsIdle()) return NothingToDo();
    const unsigned short* status = source_.GetStatus();
    std::vector<unsigned short> before;
    if (selection_) before.assign(status, status + source_.GetCount());
    detect();
    RestoreOutside(before);
    StepResult result;
    const long count = source_.GetCount();
    for (long i = 0; i < count; ++i) result.points += (status[i] & PS_SPIKE) && IsSelected(i);
    data_.SetSpikesFound(CountOpenSpikes(false) > 0);
    if (result.points == 0) result.note = nothing;
    if (!keepsJudged_) return result;
    PlaceSet judged(count);
    judged.AddWhere(count,
                    [&](long i) { return !(status[i] & (PS_DELETED | PS_REJECTED)) && IsSelected(i); });
    Judge(judged);
    return result;
}

Result<StepResult> StepRunner::DetectByMedian(const Step& step) {
    const double distance = DistanceForTruncation(step.distance, source_.GetYScale());
    StepResult result = Detect([&] { data_.SpikeDetectMedianFilter(step.length, distance, false); },
                               "no point lies that far from the median: nothing marked");
    if (step.length >= kShortMedian) return result;
    const auto half = std::max(1, static_cast<int>(step.length / 2));
    result.note += (result.note.empty() ? "" : "; ") +
                   std::string(
                       "in windows of fewer than 7 samples this rule marks far more than a true median "
                       "would: --select \"hampel(") +
                   std::to_string(half) + ",3)\" tests against one";
    return result;
}

Result<StepResult> StepRunner::DetectByWaveLength(const Step& step) {
    const auto waveLength = RealWaveLength(step.waveLength);
    if (!waveLength) return waveLength.Error();
    const auto detect = [&] {
        if (selection_)
            data_.SpikeDetectSelected(*waveLength, step.distance, true, false);
        else
            data_.SpikeDetectAll(*waveLength, step.distance, false);
    };
    return Detect(detect, "no point lies that far from the smoothed curve: nothing marked");
}

// Marks the selected points, which uses the selection up.
StepResult StepRunner::MarkUsingUp(const std::function<int()>& mark) {
    StepResult result;
    result.points = data_.GetSelectedCount();
    result.ofSelection = true;
    if (result.points == 0 || !mark()) return NothingToDo();
    selection_->Clear();
    isUsedUp_ = true;
    return result;
}

Result<StepResult> StepRunner::Delete(const Step&) {
    return MarkUsingUp([&] { return data_.DeleteSelected(true); });
}

Result<StepResult> StepRunner::Reject(const Step&) {
    return MarkUsingUp([&] { return data_.RejectSelected(true, 0); });
}

// Acts on the marks in the selection: the others are hidden meanwhile.
StepResult StepRunner::MarkSpikes(const std::function<int()>& mark) {
    if (IsIdle()) return NothingToDo();
    StepResult result;
    result.points = CountOpenSpikes(true);
    if (result.points == 0 && CountOpenSpikes(false) > 0)
        return Idle("no spikes are marked in the selection: nothing to do");
    if (result.points == 0)
        return Idle("no spikes are marked: nothing to do (detect them with --median or --spikes)");
    unsigned short* status = source_.GetStatus();
    const long count = source_.GetCount();
    std::vector<unsigned short> before;
    if (selection_) before.assign(status, status + count);
    for (long i = 0; i < count; ++i)
        if (!IsSelected(i)) status[i] = static_cast<unsigned short>(status[i] & ~PS_SPIKE);
    mark();
    RestoreOutside(before);
    data_.SetSpikesFound(CountOpenSpikes(false) > 0);
    return result;
}

Result<StepResult> StepRunner::DeleteSpikes(const Step&) {
    return MarkSpikes([&] { return data_.DeleteSpikes(); });
}

Result<StepResult> StepRunner::RejectSpikes(const Step&) {
    return MarkSpikes([&] { return data_.RejectSpikes(); });
}

Result<StepResult> StepRunner::Interpolate(const Step&) {
    StepResult result;
    result.points = data_.GetSelectedCount();
    result.ofSelection = true;
    if (result.points == 0) return NothingToDo();
    if (data_.InterpolateSelected()) return result;
    return Idle("every point is selected: there is nothing to interpolate between");
}

// Without a selection all points that are not deleted are selected for the step: an edit of the selection
// records a command, one of the whole series would not.
StepResult StepRunner::Change(const std::function<int()>& change, const char* nothing) {
    if (IsIdle()) return NothingToDo();
    if (!selection_) SelectAllPoints();
    StepResult result;
    result.points = data_.GetSelectedCount();
    result.ofSelection = selection_.has_value();
    return change() ? result : Idle(nothing);
}

Result<StepResult> StepRunner::Translate(const Step& step) {
    const LONG dy = RoundHalfAway(series_.scale.StoredLength(step.amount));
    StepResult result =
        Change([&] { return data_.TranslateSelected(0, dy, false, true); }, "nothing to move");
    if (result.points) result.note = RoundingNote(step);
    return result;
}

Result<StepResult> StepRunner::Level(const Step& step) {
    const LONG y = series_.scale.Stored(step.amount);
    StepResult result = Change([&] { return data_.TranslateSelected(0, y, true, true); }, "nothing to set");
    if (result.points) result.note = RoundingNote(step);
    return result;
}

Result<StepResult> StepRunner::Scale(const Step& step) {
    const AxisScale& y = series_.scale;
    const double origin = y.StoredLength(step.origin) - double(y.Origin());
    return Change([&] { return data_.ScaleSelected(step.method, step.factor, origin, true); },
                  "nothing to scale");
}

Result<StepResult> StepRunner::Smooth(const Step& step) {
    const auto waveLength = RealWaveLength(step.waveLength);
    if (!waveLength) return waveLength.Error();
    return Change([&] { return data_.SmoothSelected(*waveLength, true); },
                  "fewer than 4 points to fit: nothing to do");
}

Result<double> StepRunner::RealWaveLength(const WaveLength& waveLength) const {
    if (waveLength.hasUnit && !table_.HasTimes())
        return UsageError("a length with a unit of time needs an x axis of times; column \"" + table_.x.name +
                          "\" holds numbers");
    return waveLength.value;
}

std::int64_t StepRunner::CountOpenSpikes(bool ofSelection) const {
    const unsigned short* status = source_.GetStatus();
    const long count = source_.GetCount();
    std::int64_t spikes = 0;
    for (long i = 0; i < count; ++i)
        spikes += (status[i] & (PS_SPIKE | PS_DELETED | PS_REJECTED)) == PS_SPIKE &&
                  (!ofSelection || IsSelected(i));
    return spikes;
}

// `status` is empty where there is no selection.
void StepRunner::RestoreOutside(const std::vector<unsigned short>& status) {
    unsigned short* words = source_.GetStatus();
    for (std::size_t i = 0; i < status.size(); ++i)
        if (!selection_->Has(static_cast<long>(i))) words[i] = status[i];
}

void StepRunner::KeepJudged() {
    keepsJudged_ = true;
    if (series_.judged.PlaceCount() == 0) series_.judged = PlaceSet(source_.GetCount());
}

void StepRunner::Judge(const PlaceSet& judged) {
    series_.judged.AddWhere(source_.GetCount(), [&](long i) { return judged.Has(i); });
}

void StepRunner::Describe(StepResult& result) const {
    kelvo::IAction* action = manager_.GetAction(&source_, manager_.GetCount(&source_) - 1);
    result.command = action->GetName();
    result.text = OneLine(action->GetResultText());
}

std::string StepRunner::RoundingNote(const Step& step) const {
    const AxisScale& y = series_.scale;
    const double exact = y.StoredLength(step.amount);
    const double rounded = RoundHalfAway(exact);
    if (std::fabs(exact - rounded) < 1e-6 || std::fabs(exact) > 2e9) return "";
    return "the amount was rounded to " + NumberText(rounded / y.Scale(), std::max(0, y.Decimals())) +
           ": the column is stored with " + Counted(y.Decimals(), "decimal") +
           (series_.exactness.inexact ? "" : " (--decimals gives it more)");
}

}  // namespace app
