// Carries out the steps of a cleaning on one series, through the editable data set, as the editor does.
//
// At the start nothing is selected in particular: edits of values act on all points, deleting and rejecting
// on none. A selection, once made, holds for all steps behind it, marking included, until the next one; also
// when it is empty, or used up because its points have been deleted or rejected.
//
// No undo snapshots are taken: nothing is undone in a batch run, and the commands, whose names and results
// the report shows, do not need them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/batch/Step.h"
#include "app/table/Series.h"

namespace app {

struct StepResult {
    std::string command;       // the recorded command's name; empty when the step records none
    std::string text;          // its result text in one line
    std::int64_t points = 0;   // selected, marked or changed
    std::int64_t cells = 0;    // empty cells selected or filled
    bool ofSelection = false;  // the points were what was selected before the step
    bool selectedNothing = false;
    std::string note;  // what the user should know, or why there was nothing to do
};

class StepRunner {
  public:
    // The series of value column `column` of the table. All must outlive this object.
    StepRunner(const Table& table, const XAxis& axis, std::size_t column, Series& series);
    ~StepRunner();
    StepRunner(const StepRunner&) = delete;
    StepRunner& operator=(const StepRunner&) = delete;

    // Keeps in the series which points the steps have tested, at the price of a pass over them for each.
    void KeepJudged();
    // Fails when the step does not suit the axis or takes values out of the 32-bit range.
    Result<StepResult> Run(const Step& step);

    // The steps, for their table.
    Result<StepResult> Select(const Step& step);
    Result<StepResult> DetectByMedian(const Step& step);
    Result<StepResult> DetectByWaveLength(const Step& step);
    Result<StepResult> Delete(const Step& step);
    Result<StepResult> Reject(const Step& step);
    Result<StepResult> DeleteSpikes(const Step& step);
    Result<StepResult> RejectSpikes(const Step& step);
    Result<StepResult> Interpolate(const Step& step);
    Result<StepResult> FillGaps(const Step& step);
    Result<StepResult> Translate(const Step& step);
    Result<StepResult> Level(const Step& step);
    Result<StepResult> Scale(const Step& step);
    Result<StepResult> Smooth(const Step& step);

  private:
    using PlaceSet = selections::PlaceSet;

    selections::Samples MakeSamples() const;
    bool IsSelected(long point) const { return !selection_ || selection_->Has(point); }
    // Hands the selected points that are not deleted, or none, to the data set.
    void ShowSelection();
    void SelectAllPoints();
    // Whether there is a selection without a point to edit, and what to say about it.
    bool IsIdle() { return selection_ && data_.GetSelectedCount() == 0; }
    StepResult NothingToDo() const;
    StepResult MarkUsingUp(const std::function<int()>& mark);
    StepResult Detect(const std::function<void()>& detect, const char* nothing);
    StepResult MarkSpikes(const std::function<int()>& mark);
    StepResult Change(const std::function<int()>& change, const char* nothing);
    Result<double> RealWaveLength(const WaveLength& waveLength) const;
    // Marks that are neither deleted nor rejected, of all points or of the selected ones.
    std::int64_t CountOpenSpikes(bool ofSelection) const;
    void RestoreOutside(const std::vector<unsigned short>& status);
    void Judge(const selections::PlaceSet& judged);
    // Takes name and result text from the command that the data set has just recorded.
    void Describe(StepResult& result) const;
    std::string RoundingNote(const Step& step) const;

    void FindEmptyCells();
    std::vector<std::size_t> CellsToFill(double longest, std::int64_t& left) const;
    void InsertPoints(const std::vector<std::size_t>& cells, std::vector<long>& added);

    const Table& table_;
    const XAxis& axis_;
    const ValueColumn& column_;
    Series& series_;
    KPointSource& source_;
    kelvo::KUndoManager manager_;
    kelvo::KUndoManager* managerBefore_;
    CXYEditData data_;
    std::optional<PlaceSet> selection_;  // of points and empty cells; none: the start
    bool isUsedUp_ = false;
    bool keepsJudged_ = false;
    std::vector<selections::EmptyPlace> empty_;
    std::vector<std::int64_t> emptyRows_;  // the row of each
};

}  // namespace app
