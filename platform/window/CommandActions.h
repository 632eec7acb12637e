// Menus and toolbars of a frame as the toolkit has them; not for programs. A frame on the screen has one
// action for each command, shared by its menu bar and its toolbars, so that a shortcut belongs to one action
// only.
#pragma once

#include <span>

#include "platform/window/CommandResources.h"
#include "platform/window/WindowTypes.h"

class NativeWindow;
class QAction;
class QMenu;
class QToolBar;
class CCmdTarget;

// The action of command `id` in the top frame around `window`.
QAction* SharedAction(NativeWindow& window, UINT id);
void BuildMenuBar(NativeWindow& frame, std::span<const MenuResource> rows);
// Asks for the state of every command of the frame and shows it.
void RefreshCommands(NativeWindow& frame);

// Gives `action` the text, hint and icon of its command. Shortcuts are shown; whether they work is the
// caller's.
void DescribeAction(QAction& action, UINT id);
// Shows the state that `target` answers for the action's command.
void RefreshAction(QAction& action, CCmdTarget& target);

// ID_VIEW_TOOLBAR: all toolbars; ID_VIEW_STATUS_BAR: the status bar.
bool HasBars(NativeWindow& frame, UINT id);
bool AreBarsShown(NativeWindow& frame, UINT id);
void ShowBars(NativeWindow& frame, UINT id, bool show);
