#include "app/workbench/CGraphFrame.h"

#include "app/workbench/CSeriesView.h"

namespace app {

BOOL CGraphFrame::OnCreateClient(CREATESTRUCT*, CCreateContext* context) {
    view_ = new CSeriesView(document_.File(), document_.ViewKey());
    return view_->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(), this, AFX_IDW_PANE_FIRST, context);
}

}  // namespace app
