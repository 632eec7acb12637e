// What stands in a file's window while the file is read: how far it is, how long it will take, and the course
// of the first column so far. Esc stops the reading.
#pragma once

#include "app/workbench/ReadingJob.h"

namespace app {

class CLoadingView : public CView {
  public:
    // The job outlives the view.
    explicit CLoadingView(ReadingJob& job) : job_(job) {}

    bool OnCmdMsg(UINT id, CCmdUI* update) override;

  protected:
    void OnDraw(CDC* dc) override;

  private:
    static const CommandRow<CLoadingView> kCommands[];

    void OnStop() { job_.Stop(); }

    ReadingJob& job_;
};

// "1,234,567 rows, 42 %, about 3 s left".
std::string ReadingText(const ReadingJob::State& state);

}  // namespace app
