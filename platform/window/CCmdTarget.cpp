#include "platform/window/CCmdTarget.h"

#include "platform/window/Graveyard.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

bool CCmdTarget::OnCmdMsg(UINT, CCmdUI*) { return false; }
bool CCmdTarget::OnControlMsg(UINT, UINT) { return false; }

CCmdUI QueryCommand(CCmdTarget& target, UINT id) {
    CCmdUI state(id);
    if (!target.OnCmdMsg(id, &state)) state.Enable(FALSE);
    return state;
}

bool RunCommand(CCmdTarget& target, UINT id) {
    const HandlingScope scope;
    return QueryCommand(target, id).IsEnabled() && target.OnCmdMsg(id, nullptr);
}
