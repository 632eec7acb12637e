// The window and the controls of a dialog as the toolkit has them; not for programs.
#pragma once

class CWnd;
class QFont;
class NativeWindow;
class QWidget;
struct DialogResource;

class CPropertyPage;

// Labels higher than this, in dialog units, wrap instead of growing.
constexpr int kOneLine = 12;

NativeWindow* NewDialogWidget(CWnd* owner, QWidget* over);
NativeWindow* NewPageWidget(CPropertyPage* owner);
void BuildControls(QWidget& dialog, const DialogResource& resource);
// Places the controls after the font in force. Where a text would be cut the whole dialog grows, so that the
// controls keep their order and none covers another. A dialog gets its size from them, a page its least one.
void FitControls(QWidget& dialog, const DialogResource& resource);
// Gives the keyboard to the first control that takes it.
void FocusFirst(QWidget& dialog);

// Pixels of the toolkit for one dialog unit in a font.
struct DialogUnits {
    double x, y;
};
DialogUnits DialogUnitsOf(const QFont& font);
