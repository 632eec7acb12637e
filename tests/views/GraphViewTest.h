// A graph view in a real window, and its insides.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/window/CDocument.h"
#include "platform/window/CStatusBar.h"
#include "platform/window/CWindowApp.h"
#include "sources/KPointSource.h"
#include "tests/window/WindowTest.h"
#include "views/CXYGraphView.h"

class OpenGraphView : public CXYGraphView {
  public:
    explicit OpenGraphView(const char* key, int withValues = 0)
        : CXYGraphView(key, true, -1, RGB(255, 255, 255), withValues, nullptr) {}

    using CXYGraphView::AddZoom;
    using CXYGraphView::axes;
    using CXYGraphView::connectionLines;
    using CXYGraphView::coordinates;
    using CXYGraphView::dataHandler;
    using CXYGraphView::hiddenSources;
    using CXYGraphView::isoAspectAllowed;
    using CXYGraphView::mouseMode;
    using CXYGraphView::OnHScroll;
    using CXYGraphView::OnPrepareDC;
    using CXYGraphView::OnUpdate;
    using CXYGraphView::OnVScroll;
    using CXYGraphView::page;
    using CXYGraphView::ruler;
    using CXYGraphView::rulerVisible;
    using CXYGraphView::shownSources;
    using CXYGraphView::TickSpacingInForce;
    using CXYGraphView::tileClip;
    using CXYGraphView::tiled;
    using CXYGraphView::tiledLayout;
    using CXYGraphView::tileSize;
    using CXYGraphView::zoom;
    using KViewEx::colors;
    using KViewEx::picture;
    using KViewEx::stale;

    int DrawBitmap(CDC* dc) override {
        ++pictures;
        return CXYGraphView::DrawBitmap(dc);
    }
    int DrawAfterBitmap(CDC* dc) override {
        ++overlays;
        return CXYGraphView::DrawAfterBitmap(dc);
    }
    // The stored point under a pixel of the client area.
    CPoint StoredAt(CPoint pixel);

    int pictures = 0;
    int overlays = 0;
};

// Keeps the hints that arrive.
class HintView : public CView {
  public:
    void OnDraw(CDC*) override {}
    void OnUpdate(CView*, long, CObject* hint) override;
    std::string TakeHints();

  private:
    std::string hints_;
};

// The series of 1001 points from (0, 0) to (100000, 50000) at 1000 per unit.
std::unique_ptr<KPointSource> Ramp(const char* name = "ramp");

// A view on the ramp in a child frame, and another view of its document that keeps the hints.
class GraphViewTest : public WindowTest {
  protected:
    GraphViewTest();
    ~GraphViewTest() override;

    // Shows the view, with these series, in a child frame.
    void Open(CXYGraphView* made, CDocument& shown, const std::vector<IPointSource*>& sources);
    OpenGraphView* OpenView(CDocument& document, const std::vector<IPointSource*>& sources, const char* key);
    CString Caption() const;
    CString StatusText() const { return status.GetPaneText(0); }
    void Click(CPoint at, int modifiers = 0) const;
    void Drag(CPoint from, CPoint to, int button = 1) const;

    CWindowApp application{"GraphViewTest"};
    CStatusBar status;
    CMDIFrameWnd* main;
    CDocument document;
    HintView hints;
    std::unique_ptr<KPointSource> series = Ramp();
    OpenGraphView* view;
};
