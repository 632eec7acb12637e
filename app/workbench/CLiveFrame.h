// The child frame round a live view: first it tells how the connection is, then it shows the series.
#pragma once

#include <memory>

#include "app/workbench/CGraphFrame.h"
#include "app/workbench/CLiveView.h"

namespace app {

class CLiveFrame : public CGraphFrame {
  public:
    CLiveFrame(CSeriesDocument& document, const LiveWishes& wishes);

    // Null before the first rows have come.
    CLiveView* LiveView() const;
    LiveSession& Session() { return *session_; }
    // Takes what has arrived and shows it; the clock does so sixty times a second.
    void TakeRows();

    void Watch(Look) override {}
    bool IsOfFile() const override { return false; }
    bool OnCmdMsg(UINT id, CCmdUI* update) override;

  protected:
    BOOL OnCreateClient(CREATESTRUCT* create, CCreateContext* context) override;
    void OnTimer(UINT id) override;

  private:
    static const CommandRow<CLiveFrame> kCommands[];

    void TellTrouble();
    void OnRecord();
    void OnUpdateRecord(CCmdUI* state);
    void OnDerived();
    void OnCorrected();
    void OnUpdateNeedsChannels(CCmdUI* state);

    const LiveWishes wishes_;
    std::shared_ptr<LiveSession> session_;
    std::string trouble_;
    int untilStatus_ = 0;
};

}  // namespace app
