// What the tests of windows share: a toolkit without a display, and windows that record what they hear.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/window/CMDIChildWnd.h"
#include "platform/window/CMDIFrameWnd.h"
#include "platform/window/CView.h"

class QWidget;

// The first such test starts the toolkit, for the rest of the process; other tests do not pay for it. There
// are two screens side by side, 1000 units wide and 800 high: one pixel per unit on the first, two on the
// second.
class WindowTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite();
    // Lets windows that ended while an event was handled go, and keys.
    void TearDown() override;

    // Handles what is waiting, paints included.
    static void Settle();
    // Presses and releases a key in the window that has the keyboard.
    static void Press(QWidget* window, int key, int modifiers = 0);
    static QWidget* ClientOf(const CWnd& window);
};

// Writes one word for each message into its log.
class RecordingView : public CView {
  public:
    std::string TakeLog();

    std::vector<std::string> log;
    std::vector<CPoint> points;
    std::vector<UINT> flags;
    int draws = 0;

    void OnDraw(CDC* dc) override;
    void OnUpdate(CView* sender, long hint, CObject* hintObject) override;
    void OnActivateView(BOOL activate, CView* activated, CView* deactivated) override;

  protected:
    void Note(const std::string& word, UINT flagsHeld, CPoint point);

    void OnDestroy() override;
    void OnSize(UINT type, int cx, int cy) override;
    void OnLButtonDown(UINT flagsHeld, CPoint point) override { Note("down", flagsHeld, point); }
    void OnLButtonUp(UINT flagsHeld, CPoint point) override { Note("up", flagsHeld, point); }
    void OnLButtonDblClk(UINT flagsHeld, CPoint point) override { Note("double", flagsHeld, point); }
    void OnMButtonDblClk(UINT flagsHeld, CPoint point) override { Note("middle", flagsHeld, point); }
    void OnMouseMove(UINT flagsHeld, CPoint point) override { Note("move", flagsHeld, point); }
    BOOL OnMouseWheel(UINT flagsHeld, short delta, CPoint point) override;
    void OnKeyDown(UINT key, UINT repeat, UINT flagsHeld) override;
    void OnKeyUp(UINT key, UINT repeat, UINT flagsHeld) override;
    void OnHScroll(UINT code, UINT position, CScrollBar* scrollBar) override;
    void OnVScroll(UINT code, UINT position, CScrollBar* scrollBar) override;
    void OnRButtonDown(UINT flagsHeld, CPoint point) override { Note("right", flagsHeld, point); }
    void OnRButtonUp(UINT flagsHeld, CPoint point) override { Note("rightup", flagsHeld, point); }
    BOOL OnMouseHWheel(UINT flagsHeld, short delta, CPoint point) override;
    void OnContextMenu(CWnd* window, CPoint point) override { Note("menu", window == this, point); }
};

// Puts the view into the child frame and the child frame into the main frame.
void Assemble(CMDIFrameWnd* main, CMDIChildWnd* child, CView* view, CCreateContext context = {});

// A main frame with one child frame and a view in it, all on the screen. The frame takes the others with it.
struct Workplace {
    Workplace();
    ~Workplace();
    // Another child frame with a view, made like the first.
    RecordingView* AddChild(CDocument* document = nullptr);

    CMDIFrameWnd* main;
    CMDIChildWnd* child;
    RecordingView* view;
};
