// What the mouse does in a graph view while one of the view's mode numbers is in force. One object may serve
// several numbers, as an armed and a dragging state do. The view owns the objects; a derived view or a host
// adds its own with CXYGraphView::AddMouseMode.
#pragma once

#include "platform/core/CString.h"
#include "platform/core/Geometry.h"
#include "platform/window/Cursor.h"

class CDC;

class GraphMouseMode {
  public:
    GraphMouseMode() = default;
    GraphMouseMode(const GraphMouseMode&) = delete;
    GraphMouseMode& operator=(const GraphMouseMode&) = delete;
    virtual ~GraphMouseMode() = default;

    // The left button and the mouse, in client coordinates with MK_ flags.
    virtual void Down(UINT, CPoint) {}
    virtual void Move(UINT, CPoint) {}
    virtual void Up(UINT, CPoint) {}
    virtual HCURSOR Cursor() const { return IDC_CROSS; }
    // What the status bar says when the mode begins; empty: nothing.
    virtual CString StatusText() const { return {}; }
    // While this is true updates of the document wait.
    virtual bool IsDragging() const { return false; }
    // Drawn after each copy of the picture, in the view's mapping; what a gesture inverts is the
    // GestureOverlay's.
    virtual void DrawOverlay(CDC&) {}
    // Another mode follows.
    virtual void Leave() {}
};
