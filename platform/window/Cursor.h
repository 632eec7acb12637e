// The mouse cursors that the views show.
#pragma once

#include "platform/window/WindowTypes.h"

// Standard cursors; the number is the handle.
constexpr HCURSOR IDC_ARROW = 32512;
constexpr HCURSOR IDC_WAIT = 32514;
constexpr HCURSOR IDC_CROSS = 32515;
constexpr HCURSOR IDC_SIZENS = 32645;

// The handle of a standard cursor, 0 for a number that is none.
HCURSOR LoadStandardCursor(HCURSOR standard);
// Chooses the cursor of the window whose OnSetCursor is running, or else of the one under the mouse; 0 is the
// arrow. Returns the one chosen before.
HCURSOR SetCursor(HCURSOR cursor);

// Shows the wait cursor for a scope.
class CWaitCursor {
  public:
    CWaitCursor();
    ~CWaitCursor();
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
};
