#include "tests/views/GraphViewTest.h"

#include <QWheelEvent>
#include <QtTest>
#include <cstdlib>

#include "platform/window/NativeWindow.h"
#include "tests/core/Limits.h"
#include "tests/gdi/DrawingTest.h"

namespace {

void ExpectNear(CPoint a, CPoint b, CPoint tolerance) {
    EXPECT_LE(std::abs(a.x - b.x), tolerance.x) << a.x << " " << b.x;
    EXPECT_LE(std::abs(a.y - b.y), tolerance.y) << a.y << " " << b.y;
}

TEST_F(GraphViewTest, OpensOnTheWholeRange) {
    EXPECT_EQ(view->zoom.Depth(), 1u);
    EXPECT_EQ(view->zoom.viewExtent, CSize(100000, 50000));
    EXPECT_EQ(view->axes.MaxX, 100.0);
    EXPECT_EQ(view->axes.MaxY, 50.0);
    EXPECT_EQ(Caption(), "ramp (ramp)");
    EXPECT_FALSE(QueryCommand(*view, 50005).IsEnabled());
    EXPECT_FALSE(QueryCommand(*view, 50034).IsEnabled());
    view->GetParentFrame()->ShowWindow(SW_SHOWMAXIMIZED);
    Settle();
    EXPECT_EQ(Caption(), "log - ramp (ramp)");
}

TEST_F(GraphViewTest, ZoomCommandsMoveOriginScrollBarsAndTellTheOtherViews) {
    ASSERT_TRUE(RunCommand(*view, 50001));
    // 50000 - round(50000 / 1.4142135), 25000 - round(25000 / 1.4142135)
    EXPECT_EQ(view->zoom.Current().originX, 14645);
    EXPECT_EQ(view->zoom.Current().originY, 7322);
    EXPECT_EQ(view->zoom.Current().followX, 100000);
    EXPECT_EQ(view->zoom.viewExtent, CSize(70711, 35355));
    EXPECT_EQ(hints.TakeHints(), "3:1.414 1:14645 ");
    Settle();
    int low = 0;
    int high = 0;
    view->GetScrollRange(SB_HORZ, &low, &high);
    EXPECT_EQ(CPoint(low, high), CPoint(0, 29289));
    EXPECT_EQ(view->GetScrollPos(SB_HORZ), 14645);
    view->GetScrollRange(SB_VERT, &low, &high);
    EXPECT_EQ(CPoint(low, high), CPoint(-14645, 0));
    EXPECT_EQ(view->GetScrollPos(SB_VERT), -7322);

    ASSERT_TRUE(RunCommand(*view, 50002));
    EXPECT_EQ(view->zoom.Depth(), 3u);
    EXPECT_NEAR(view->zoom.Current().zoomX, 1.0f, 1e-6);
    ASSERT_TRUE(RunCommand(*view, 50005));
    EXPECT_EQ(view->zoom.Current().originX, 14645);
    hints.TakeHints();
    ASSERT_TRUE(RunCommand(*view, 50003));
    EXPECT_EQ(hints.TakeHints(), "5:0 ");
    EXPECT_EQ(view->zoom.Current().originX, 0);
    EXPECT_TRUE(QueryCommand(*view, 50005).IsEnabled());
}

TEST_F(GraphViewTest, TheDataExtentFillsTheView) {
    view->axes.XAutoScale = view->axes.YAutoScale = 0;
    view->axes.MinX = -100.0;
    view->axes.MaxX = 300.0;
    view->axes.MinY = -50.0;
    view->axes.MaxY = 50.0;
    RunCommand(*view, 50003);
    RunCommand(*view, 50004);
    EXPECT_EQ(view->zoom.Current().zoomX, 4.0f);
    EXPECT_EQ(view->zoom.Current().zoomY, 2.0f);
    EXPECT_EQ(view->zoom.Current().originX, 0);
    EXPECT_EQ(view->zoom.viewExtent, CSize(100000, 50000));
}

TEST_F(GraphViewTest, AnExtentAtTheLowestStoredUnitDraws) {
    view->zoom.viewExtent = {kMin, kMin};
    const int drawn = view->pictures;
    view->stale = true;
    view->Invalidate();
    view->UpdateWindow();
    EXPECT_GT(view->pictures, drawn);
}

TEST_F(GraphViewTest, ScrollBarsMoveByATwentiethAPageOrToTheThumb) {
    RunCommand(*view, 50001);
    Settle();
    hints.TakeHints();
    const struct {
        UINT code;
        int position;
        int originX;
    } steps[] = {{SB_LINERIGHT, 0, 14645 + 3536},
                 {SB_LINELEFT, 0, 14645},
                 {SB_PAGELEFT, 0, 14645 - 70711},
                 {SB_THUMBPOSITION, 777, 777},
                 {SB_ENDSCROLL, 5, 777}};
    for (const auto& step : steps) {
        view->OnHScroll(step.code, static_cast<UINT>(step.position), nullptr);
        EXPECT_EQ(view->zoom.Current().originX, step.originX) << step.code;
        Settle();
    }
    EXPECT_EQ(hints.TakeHints(), "1:18181 1:14645 1:-56066 1:777 ");
    view->OnVScroll(SB_LINEDOWN, 0, nullptr);
    EXPECT_EQ(view->zoom.Current().originY, 7322 - 1768);
    view->OnVScroll(SB_THUMBPOSITION, static_cast<UINT>(-1234), nullptr);
    EXPECT_EQ(view->zoom.Current().originY, 1234);
    EXPECT_EQ(hints.TakeHints(), "") << "nobody follows y";
    SCROLLINFO info;
    ASSERT_TRUE(view->GetScrollInfo(SB_HORZ, &info));
    EXPECT_EQ(info.nPage, 70711u) << "the thumb is as long as what is in view";
    EXPECT_EQ(info.nMax - info.nMin, 29289);
    ASSERT_TRUE(view->GetScrollInfo(SB_VERT, &info));
    EXPECT_EQ(info.nPage, 35355u);
}

TEST_F(GraphViewTest, TheWheelKeepsThePointUnderTheMouse) {
    QWidget* const client = ClientOf(*view);
    const CPoint pixel(300, 150);
    const CPoint before = view->StoredAt(pixel);
    const auto turn = [&](int delta, Qt::KeyboardModifiers keys) {
        const QPoint at(pixel.x, pixel.y);
        QWheelEvent event(at, client->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, keys, Qt::NoScrollPhase,
                          false);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(client, &event);
    };
    turn(120, {});
    EXPECT_FLOAT_EQ(view->zoom.Current().zoomX, 1.4142135f);
    ExpectNear(view->StoredAt(pixel), before, {2, 2});
    turn(-120, {});
    EXPECT_FLOAT_EQ(view->zoom.Current().zoomY, 1.0f);
    turn(120, Qt::ControlModifier);
    EXPECT_FLOAT_EQ(view->zoom.Current().zoomY, 1.0828427f);
    ExpectNear(view->StoredAt(pixel), before, {4, 4});
}

TEST_F(GraphViewTest, HeldKeysZoomOneAxis) {
    QTest::keyPress(view->GetSafeHwnd(), Qt::Key_X);
    RunCommand(*view, 50001);
    EXPECT_EQ(view->zoom.Current().zoomY, 1.0f);
    EXPECT_GT(view->zoom.Current().zoomX, 1.0f);
    QTest::keyRelease(view->GetSafeHwnd(), Qt::Key_X);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !view->zoom.onlyX; }, 2000));
}

TEST_F(GraphViewTest, ADraggedRectangleBecomesTheVisibleArea) {
    RunCommand(*view, 50000);
    EXPECT_TRUE(QueryCommand(*view, 50000).IsChecked());
    const CPoint low = view->StoredAt({200, 300});
    const CPoint high = view->StoredAt({400, 100});
    Drag({400, 100}, {200, 300});
    EXPECT_EQ(view->mouseMode, CXYGraphView::ZoomArmed);
    EXPECT_EQ(CPoint(view->zoom.Current().originX, view->zoom.Current().originY), low);
    ExpectNear({view->zoom.viewExtent.cx, view->zoom.viewExtent.cy}, high - low, {1, 1});
    const std::string sent = hints.TakeHints();
    EXPECT_EQ(sent.find("3:"), 0u) << sent;
    EXPECT_NE(sent.find(" 1:" + std::to_string(low.x)), std::string::npos) << sent;

    const CZoomInfo before = view->zoom.Current();
    Click({250, 200});
    EXPECT_EQ(view->mouseMode, CXYGraphView::ZoomArmed);
    EXPECT_EQ(view->zoom.Depth(), 2u);
    EXPECT_EQ(view->zoom.Current().originX, before.originX);
    RunCommand(*view, 50000);
    EXPECT_EQ(view->mouseMode, CXYGraphView::ShowPosition);
}

TEST_F(GraphViewTest, TheRulerIsArmedDrawnAndLeftByMouseAndCommands) {
    QWidget* const client = ClientOf(*view);
    EXPECT_FALSE(QueryCommand(*view, 50028).IsChecked());
    Click({200, 200}, Qt::ControlModifier);
    EXPECT_EQ(view->mouseMode, CXYGraphView::RulerDragging);
    QMouseEvent move(QEvent::MouseMove, QPoint(300, 203), client->mapToGlobal(QPoint(300, 203)), Qt::NoButton,
                     {}, {});
    QCoreApplication::sendEvent(client, &move);
    EXPECT_EQ(StatusText(), "Ruler: " + view->ruler.ToString());
    Click({320, 210});
    EXPECT_EQ(view->mouseMode, CXYGraphView::ShowPosition);
    EXPECT_TRUE(view->rulerVisible);
    EXPECT_EQ(view->ruler.getStart(), view->StoredAt({200, 200}));
    EXPECT_EQ(view->ruler.getEnd().x, view->StoredAt({320, 210}).x);
    EXPECT_EQ(view->ruler.getEnd().y, view->ruler.getStart().y) << "bent level";
    EXPECT_TRUE(QueryCommand(*view, 50028).IsChecked());

    RunCommand(*view, 50028);  // leaves
    EXPECT_FALSE(view->rulerVisible);
    RunCommand(*view, 50028);  // arms
    EXPECT_EQ(view->mouseMode, CXYGraphView::RulerArmed);
    Click({250, 250});
    Click({250, 250});
    EXPECT_FALSE(view->rulerVisible) << "no length";
    RunCommand(*view, 50028);
    RunCommand(*view, 50021);
    EXPECT_EQ(view->mouseMode, CXYGraphView::ShowPosition);
}

TEST_F(GraphViewTest, WhatTheDocumentToldDuringADragShowsAfterIt) {
    Settle();
    const int pictures = view->pictures;
    RunCommand(*view, 50028);
    Click({250, 200});
    document.UpdateAllViews(nullptr);
    Settle();
    EXPECT_EQ(view->pictures, pictures) << "a drag is not disturbed";
    Click({300, 230});
    Settle();
    EXPECT_EQ(view->pictures, pictures + 1);
    EXPECT_TRUE(view->rulerVisible);
}

TEST_F(GraphViewTest, ARulerLeavesNoTraceWhenCtrlChangesItsShape) {
    QWidget* const client = ClientOf(*view);
    const auto move = [&](int x, int y, Qt::KeyboardModifiers keys) {
        QMouseEvent event(QEvent::MouseMove, QPoint(x, y), client->mapToGlobal(QPoint(x, y)), Qt::NoButton,
                          {}, keys);
        QCoreApplication::sendEvent(client, &event);
        return DifferingPixels(*view->picture, *NativeWindow::Of(view->GetSafeHwnd())->Picture());
    };
    Settle();
    view->ruler.setType(KRuler::Circle);
    RunCommand(*view, 50028);
    Settle();
    Click({250, 200});
    EXPECT_GT(move(300, 230, {}), 100);
    EXPECT_GT(move(310, 230, Qt::ControlModifier), 10);
    EXPECT_EQ(move(250, 200, {}), 0);
    // Nor when the view is painted anew in the middle of a drag.
    move(300, 230, {});
    RunCommand(*view, 50022);
    Settle();
    EXPECT_EQ(move(250, 200, {}), 0);
}

TEST_F(GraphViewTest, TheMiddleButtonPans) {
    RunCommand(*view, 50001);
    Settle();
    const CPoint grabbed = view->StoredAt({300, 200});
    const int pictures = view->pictures;
    Drag({300, 200}, {340, 160}, Qt::MiddleButton);
    // Two moves, each rounded towards zero.
    ExpectNear(view->StoredAt({340, 160}), grabbed, {3, 3});
    Settle();
    EXPECT_GT(view->pictures, pictures) << "and the picture follows";
    QTest::mouseDClick(ClientOf(*view), Qt::MiddleButton, {}, {300, 200});
    QTest::mouseRelease(ClientOf(*view), Qt::MiddleButton, {}, {300, 200});
    EXPECT_EQ(view->zoom.Current().zoomX, 1.0f) << "a double click shows all";
}

TEST_F(GraphViewTest, TheStatusBarShowsThePositionInUserUnits) {
    QWidget* const client = ClientOf(*view);
    QMouseEvent move(QEvent::MouseMove, QPoint(300, 200), client->mapToGlobal(QPoint(300, 200)), Qt::NoButton,
                     {}, {});
    QCoreApplication::sendEvent(client, &move);
    const CPoint stored = view->StoredAt({300, 200});
    CString text;
    text.Format("(%.3f s, %.3f m)", stored.x / 1000.0, stored.y / 1000.0);
    EXPECT_EQ(StatusText(), text);
}

TEST_F(GraphViewTest, HintsShowHideAndRemoveSeries) {
    const auto second = Ramp("second");
    const auto send = [&](CViewUpdate::UpdateType type, IPointSource* source) {
        CViewUpdate hint(9, type, source);
        document.UpdateAllViews(&hints, 0, &hint);
    };
    send(CViewUpdate::ShowSource, second.get());
    EXPECT_EQ(view->shownSources, (std::list<IPointSource*>{series.get(), second.get()}));
    send(CViewUpdate::HideSource, series.get());
    EXPECT_EQ(view->hiddenSources, (std::list<IPointSource*>{series.get()}));
    EXPECT_EQ(Caption(), "second (second)");
    send(CViewUpdate::ShowSource, series.get());
    EXPECT_EQ(view->shownSources.back(), series.get());
    send(CViewUpdate::RemoveSource, second.get());
    send(CViewUpdate::RemoveSource, series.get());
    EXPECT_TRUE(view->shownSources.empty());
    EXPECT_EQ(view->dataHandler->GetPointSource(), nullptr);
    EXPECT_EQ(Caption(), "Empty");
    Settle();
}

TEST_F(GraphViewTest, AZoomedViewFollowsNewData) {
    RunCommand(*view, 50001);
    const int origin = view->zoom.Current().originX;
    series->push_back({100300, 50000});
    document.UpdateAllViews(nullptr);
    EXPECT_EQ(view->zoom.Current().originX, origin + 300);
}

TEST_F(GraphViewTest, IsoAspectCoversTheSameDistancePerPixel) {
    view->isoAspectAllowed = 1;
    ASSERT_TRUE(RunCommand(*view, 50034));
    Settle();
    const auto perPixel = [this] {
        const CPoint delta = view->StoredAt({300, 100}) - view->StoredAt({200, 200});
        return double{1.0} * delta.x / delta.y;
    };
    EXPECT_NEAR(perPixel(), 1.0, 0.02);
    view->GetParentFrame()->MoveWindow(0, 0, 400, 500);
    Settle();
    EXPECT_NEAR(perPixel(), 1.0, 0.02);
    EXPECT_EQ(view->zoom.Depth(), 1u);
}

TEST_F(GraphViewTest, SettingsComeBackUnderTheirKey) {
    view->axes.XAxisPos = 0;
    view->colors.grid = RGB(1, 2, 3);
    view->tiledLayout.NumRows = 7;
    RunCommand(*view, 50022);
    RunCommand(*view, 50030);
    EXPECT_TRUE(QueryCommand(*view, 50030).IsChecked());
    EXPECT_FALSE(view->GetParentFrame()->GetStyle() & WS_CAPTION & ~WS_BORDER);
    view->GetParentFrame()->MoveWindow(33, 44, 555, 333);
    EXPECT_TRUE(view->SaveStdProperties());

    CDocument other;
    OpenGraphView* const again = OpenView(other, {series.get()}, "GraphViewTest");
    EXPECT_EQ(again->axes.XAxisPos, 0);
    EXPECT_EQ(again->colors.grid, RGB(1, 2, 3));
    EXPECT_EQ(again->tiledLayout.NumRows, 7);
    EXPECT_FALSE(QueryCommand(*again, 50022).IsChecked());
    EXPECT_TRUE(QueryCommand(*again, 50030).IsChecked());
    again->SetKeyName("GraphViewTest");
    WINDOWPLACEMENT placement;
    again->GetParentFrame()->GetWindowPlacement(&placement);
    EXPECT_EQ(placement.rcNormalPosition.left, 33);
    EXPECT_EQ(CRect(placement.rcNormalPosition).Width(), 555);
    again->GetParentFrame()->DestroyWindow();
    RunCommand(*view, 50030);
    EXPECT_TRUE(view->GetParentFrame()->GetStyle() & WS_SYSMENU);
    AfxGetApp()->WriteProfileString("GraphViewTest", nullptr, nullptr);
}

}  // namespace
