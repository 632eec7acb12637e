// Windows end in the midst of what they are asked: in a handler, in a nested loop of events, in their own
// drawing. Their widgets and objects rest here until no event is being handled; not for programs.
#pragma once

#include <memory>

class CObject;
class QWidget;

// While one lives, something that windows are asked is being handled.
struct HandlingScope {
    HandlingScope();
    ~HandlingScope();
    HandlingScope(const HandlingScope&) = delete;
    HandlingScope& operator=(const HandlingScope&) = delete;
};

// Hides the widget, or just keeps the object, and deletes it when nothing is being handled: at once outside
// of all handling, otherwise from the loop of events. Those buried first go first.
void Bury(QWidget* widget);
void Bury(CObject* object);

// Deletes what rests, if nothing is being handled. For the end of a program or of a test.
void EmptyGraveyard();
