// A menu loaded from its resource, to be shown at some place of the screen.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "platform/window/CommandResources.h"
#include "platform/window/WindowTypes.h"

class CWnd;

// Which button chooses; both buttons do.
constexpr UINT TPM_RIGHTBUTTON = 0x0002;

class CMenu {
  public:
    // FALSE when there is no such resource.
    BOOL LoadMenu(UINT resourceId);
    // The popup at this place among the menu's rows, owned by this menu; null when there is a command or
    // nothing.
    CMenu* GetSubMenu(int position);
    // Shows the menu with its upper left corner at a point of the screen and returns when the user has chosen
    // or left it. The choice goes to `target` as a command, and `target` is asked for the commands' states.
    // FALSE when the menu is empty.
    BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* target);

  private:
    std::span<const MenuResource> rows_;
    std::vector<std::unique_ptr<CMenu>> popups_;
};
