// The window and the controls of a dialog as the toolkit has them; not for programs.
#pragma once

class CWnd;
class NativeWindow;
class QWidget;
struct DialogResource;

NativeWindow* NewDialogWidget(CWnd* owner, QWidget* over);
void BuildControls(QWidget& dialog, const DialogResource& resource);
// Places the controls after the font in force. Where a text would be cut the whole dialog grows, so that the
// controls keep their order and none covers another.
void FitControls(QWidget& dialog, const DialogResource& resource);
void FocusFirst(QWidget& dialog, const DialogResource& resource);
