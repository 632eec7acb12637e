// The controls of dialogs as the toolkit has them; not for programs.
#pragma once

class QWidget;
struct ControlResource;

// A control of the row's kind with its text, without a place.
QWidget* NewControl(const ControlResource& row, QWidget* parent);
// The picture that a control of kind Picture shows, by its number; 0: none.
void ShowPicture(QWidget& control, unsigned id);
