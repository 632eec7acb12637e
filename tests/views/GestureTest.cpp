// What gestures put on the window, the modes they run in, and the numbers of the commands.
#include <QtTest>
#include <set>

#include "platform/window/NativeWindow.h"
#include "tests/gdi/DrawingTest.h"
#include "tests/views/GraphViewTest.h"

namespace {

class GestureTest : public GraphViewTest {
  protected:
    // Moves the mouse with the left button held; the pixels that differ from the view without a gesture.
    int Move(CPoint to) {
        QWidget* const client = ClientOf(*view);
        QMouseEvent event(QEvent::MouseMove, QPoint(to.x, to.y), client->mapToGlobal(QPoint(to.x, to.y)),
                          Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(client, &event);
        return Inverted();
    }
    int Inverted() {
        return DifferingPixels(*view->picture, *NativeWindow::Of(view->GetSafeHwnd())->Picture());
    }
    void Press(CPoint at) { QTest::mousePress(ClientOf(*view), Qt::LeftButton, {}, QPoint(at.x, at.y)); }
};

TEST_F(GestureTest, AZoomRectangleOutlivesRepaintsAndLeavesNothingBehind) {
    for (const bool twice : {false, true}) {
        view->UseDoubleBitmap(twice);
        RunCommand(*view, CmdZoomMode);
        Settle();
        Press({200, 100});
        const int drawn = Move({400, 300});
        EXPECT_GT(drawn, 300);
        view->Invalidate(FALSE);
        Settle();
        EXPECT_EQ(Inverted(), drawn) << "painted anew in the middle of the drag";
        // Another part of the data, before and after the paint.
        view->OnHScroll(SB_LINERIGHT, 0, nullptr);
        Move({410, 310});
        Settle();
        EXPECT_GT(Inverted(), 300);
        EXPECT_EQ(Move({200, 100}), 0) << "no corner but the first";
        Move({300, 200});
        RunCommand(*view, CmdModeEscape);
        Settle();
        EXPECT_EQ(Inverted(), 0);
        QTest::mouseRelease(ClientOf(*view), Qt::LeftButton, {}, QPoint(300, 200));
    }
}

TEST_F(GestureTest, OverlaysStayInsideThePlot) {
    const CRect plot = view->tileClip;
    const auto outside = [&] {
        const CBitmapEx& shown = *NativeWindow::Of(view->GetSafeHwnd())->Picture();
        int count = 0;
        for (int y = 0; y < shown.GetHeight(); ++y)
            for (int x = 0; x < shown.GetWidth(); ++x)
                count += (x < plot.left || x >= plot.right || y < plot.top || y >= plot.bottom) &&
                         CDC(*view->picture).GetPixel(x, y) !=
                             CDC(*NativeWindow::Of(view->GetSafeHwnd())->Picture()).GetPixel(x, y);
        return count;
    };
    RunCommand(*view, CmdZoomMode);
    Settle();
    Press({300, 200});
    Move({5, 3});
    EXPECT_EQ(outside(), 0);
    RunCommand(*view, CmdModeEscape);
    RunCommand(*view, CmdCreateRuler);
    Settle();
    Click({300, 200});
    Move({5, 203});
    EXPECT_GT(Inverted(), 100);
    EXPECT_EQ(outside(), 0);
    Click({5, 203});
    Settle();
    EXPECT_EQ(outside(), 0) << "the finished ruler";
}

// A host's own mode takes the button, the cursor, the status line and the overlay.
TEST_F(GestureTest, AHostAddsAModeOfItsOwn) {
    struct Stamp : GraphMouseMode {
        void Down(UINT, CPoint) override { ++downs; }
        void Up(UINT, CPoint) override { ++ups; }
        CString StatusText() const override { return "Click to stamp"; }
        void DrawOverlay(CDC&) override { ++overlays; }
        void Leave() override { ++leaves; }
        int downs = 0, ups = 0, overlays = 0, leaves = 0;
    };
    const auto stamp = std::make_shared<Stamp>();
    view->AddMouseMode(40, stamp);
    view->AddMouseMode(41, nullptr);
    view->EnterMode(40);
    EXPECT_EQ(StatusText(), "Click to stamp");
    Click({200, 200});
    view->Invalidate(FALSE);
    Settle();
    EXPECT_EQ(stamp->downs, 1);
    EXPECT_EQ(stamp->ups, 1);
    EXPECT_EQ(stamp->overlays, 1);
    RunCommand(*view, CmdModeEscape);
    EXPECT_EQ(stamp->leaves, 1);
    EXPECT_EQ(view->mouseMode, CXYGraphView::ShowPosition);
}

TEST_F(GestureTest, AListenerMayLeaveWhileItListens) {
    struct Once final : CXYGraphView::IAxisChangeListener {
        explicit Once(CXYGraphView& shown) : view(shown) {}
        void OnAxisChanged(CXYGraphView::AxisChangeInfo*) override {
            ++calls;
            view.RemoveAxisChangeListener(this);
        }
        CXYGraphView& view;
        int calls = 0;
    };
    auto first = std::make_unique<Once>(*view);
    Once second(*view);
    view->AddAxisChangeListener(first.get());
    view->AddAxisChangeListener(&second);
    RunCommand(*view, CmdZoomIn);
    Settle();
    EXPECT_EQ(first->calls + second.calls, 2);
    first.reset();
    RunCommand(*view, CmdZoomIn);
    Settle();
    EXPECT_EQ(second.calls, 1);
}

TEST_F(GestureTest, EveryCommandHasOneNumberAndOneName) {
    std::set<std::string> names;
    unsigned int before = CmdZoomMode - 1;
    int answered = 0;
    for (const auto& [command, name] : kGraphCommands) {
        EXPECT_GT(command, before) << name;
        EXPECT_TRUE(names.insert(name).second) << name;
        before = command;
        CCmdUI state(command);
        answered += view->OnCmdMsg(command, &state);
    }
    EXPECT_EQ(before, 50046u);
    EXPECT_EQ(names.size(), 45u) << "50031 and 50032 are free";
    EXPECT_GE(answered, 11) << "the graph view's own";
}

TEST_F(GestureTest, TicksDoNotDependOnTheSizesBefore) {
    // Labels that need the more decimals the closer their ticks are.
    struct Decimals : OpenGraphView {
        Decimals() : OpenGraphView("Decimals") {}
        CString& FormatYLabel(CString& text, double value) override {
            text.Format("%.*f", TickSpacingInForce().cy >= 5 ? 0 : 9, value);
            return text;
        }
        CString& FormatXLabel(CString& text, double value) override {
            text.Format("%.*f", TickSpacingInForce().cx >= 20 ? 0 : 6, value);
            return text;
        }
    } shown;
    shown.AddSource(series.get(), true);
    shown.OnInitialUpdate();
    CDC dc;
    const auto spacingAt = [&](int side) {
        shown.DrawOn(dc, {side, side});
        return std::make_pair(shown.TickSpacingInForce().cx, shown.TickSpacingInForce().cy);
    };
    std::vector<std::pair<double, double>> growing;
    for (int side = 60; side < 700; side += 7) growing.push_back(spacingAt(side));
    for (int side = 60 + 7 * static_cast<int>(growing.size() - 1); !growing.empty(); side -= 7) {
        EXPECT_EQ(spacingAt(side), growing.back()) << side;
        growing.pop_back();
    }
}

TEST(LabelSpans, MoveInOnlyWhereTheirNeighboursLeaveRoom) {
    std::vector<LabelSpan> roomy{{5, 40}, {80, 40}, {155, 40}};
    KeepWhole(roomy, 0, 160);
    EXPECT_EQ(roomy[0].centre, 20);
    EXPECT_EQ(roomy[2].centre, 140);
    std::vector<LabelSpan> dense{{5, 40}, {62, 40}, {95, 40}};
    KeepWhole(dense, 0, 100);
    EXPECT_EQ(dense[0].centre, 20);
    EXPECT_EQ(dense[2].centre, 95) << "would run into the middle one";
}

}  // namespace
