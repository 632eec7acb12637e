// The commands of a live view.
#include "app/workbench/CLiveView.h"
#include "app/workbench/LiveDialogs.h"
#include "app/workbench/WorkbenchIds.h"

namespace app {

const CommandRow<CLiveView> CLiveView::kCommands[] = {
    {kLiveHold, kLiveHold, &CLiveView::OnHold, &CLiveView::OnUpdateHold},
    {kLiveScrolling, kLiveFixed, &CLiveView::OnRange, &CLiveView::OnUpdateRange},
    {kLiveWindow, kLiveWindow, &CLiveView::OnWindowLength},
    {kLiveAlarm, kLiveAlarm, &CLiveView::OnAlarm},
};

bool CLiveView::OnCmdMsg(UINT id, CCmdUI* update) {
    return RouteCommand(*this, kCommands, id, update) || CSeriesView::OnCmdMsg(id, update);
}

void CLiveView::OnHold() { Hold(!held_); }

void CLiveView::OnUpdateHold(CCmdUI* state) { state->SetCheck(held_); }

void CLiveView::OnRange(UINT id) { SetRange(static_cast<LiveRange>(id - kLiveScrolling)); }

void CLiveView::OnUpdateRange(CCmdUI* state) {
    state->SetCheck(state->m_nID - kLiveScrolling == static_cast<UINT>(range_));
}

void CLiveView::OnWindowLength() {
    const auto length = AskForNumber("Length of the window", "&Length in units of x (s):", window_, this);
    if (length && *length > 0) SetWindow(*length);
}

void CLiveView::OnAlarm() {
    const auto level = AskForNumber("Alarm", "&Level that is not to be passed:", alarm_.value_or(0), this);
    SetAlarm(level);
}

}  // namespace app
