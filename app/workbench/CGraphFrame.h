// The child frame round the view of one file, with the commands that take the view's picture or values out.
#pragma once

#include "app/workbench/CSeriesDocument.h"

namespace app {

class CSeriesView;

class CGraphFrame : public CMDIChildWnd {
  public:
    explicit CGraphFrame(CSeriesDocument& document) : document_(document) {}

    CSeriesView* View() const { return view_; }

    bool OnCmdMsg(UINT id, CCmdUI* update) override;

  protected:
    BOOL OnCreateClient(CREATESTRUCT* create, CCreateContext* context) override;

  private:
    static const CommandRow<CGraphFrame> kCommands[];

    void OnExport();
    void OnCopyPicture();
    void OnCopyValues();

    CSeriesDocument& document_;
    CSeriesView* view_ = nullptr;
};

}  // namespace app
