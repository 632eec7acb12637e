// Controls: widgets of the toolkit that stand in a window under a number, and the objects attached to them;
// not for programs.
#pragma once

#include "platform/core/Types.h"

class NativeWindow;
class QWidget;

// Gives a widget its number and lets what the user does with it reach the window around it as a notification,
// and a button's click as the command of that number where nobody wants the notification.
void MakeControl(QWidget& widget, UINT id);
// 0 for a widget that is no control.
UINT ControlId(const QWidget& widget);
// Null when there is none.
QWidget* FindControl(const QWidget& parent, UINT id);

// What stands between a widget and the object attached to it; null while nobody is.
NativeWindow* AttachedTo(const QWidget& widget);
