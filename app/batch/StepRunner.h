// Carries out the steps of a cleaning on one series, through the editable data set, as the editor does.
//
// No undo snapshots are taken: nothing is undone in a batch run, and the commands, whose names and results
// the report shows, do not need them.
#pragma once

#include <string>
#include <vector>

#include "app/batch/Step.h"
#include "app/table/Series.h"

namespace app {

struct StepResult {
    std::string command;       // the recorded command's name; empty when the step records none
    std::string text;          // its result text in one line
    std::int64_t points = 0;   // selected, marked or changed
    bool ofSelection = false;  // they were what was selected before the step
    std::string note;          // what the user should know, or why there was nothing to do
};

class StepRunner {
  public:
    // Table, axis and series must outlive this object.
    StepRunner(const Table& table, const XAxis& axis, Series& series);
    ~StepRunner();
    StepRunner(const StepRunner&) = delete;
    StepRunner& operator=(const StepRunner&) = delete;

    // Fails when the step does not suit the axis or takes values out of the 32-bit range.
    Result<StepResult> Run(const Step& step);

  private:
    Result<StepResult> Dispatch(const Step& step);
    Result<StepResult> Select(const Step& step);
    Result<StepResult> SelectXRange(const Step& step);
    Result<StepResult> DetectByMedian(const Step& step);
    Result<StepResult> DetectByWaveLength(const Step& step);
    Result<StepResult> Mark(const Step& step);
    Result<StepResult> MarkSpikes(const Step& step);
    Result<StepResult> Interpolate();
    Result<StepResult> Change(const Step& step);
    Result<double> RealWaveLength(const WaveLength& waveLength) const;
    int ChangeSelected(const Step& step, double waveLength);
    // Selects the points that are not deleted and for which wanted(index) holds.
    template <class Wanted>
    StepResult SelectWhere(Wanted&& wanted);
    std::int64_t CountStatus(unsigned short flags) const;
    // Takes name and result text from the command that the data set has just recorded.
    void Describe(StepResult& result) const;
    std::string RoundingNote(const Step& step) const;

    const Table& table_;
    const XAxis& axis_;
    Series& series_;
    KPointSource& source_;
    kelvo::KUndoManager manager_;
    kelvo::KUndoManager* managerBefore_;
    CXYEditData data_;
};

}  // namespace app
