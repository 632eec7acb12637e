// The child frame round the view of one file.
#pragma once

#include "app/workbench/CSeriesDocument.h"

namespace app {

class CSeriesView;

class CGraphFrame : public CMDIChildWnd {
  public:
    explicit CGraphFrame(CSeriesDocument& document) : document_(document) {}

    CSeriesView* View() const { return view_; }

  protected:
    BOOL OnCreateClient(CREATESTRUCT* create, CCreateContext* context) override;

  private:
    CSeriesDocument& document_;
    CSeriesView* view_ = nullptr;
};

}  // namespace app
