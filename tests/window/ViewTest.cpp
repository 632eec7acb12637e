#include <QAbstractScrollArea>
#include <QImage>
#include <QPixmap>
#include <QScrollBar>
#include <QWheelEvent>
#include <QtTest>

#include "platform/gdi/CBitmapEx.h"
#include "platform/window/CClientDC.h"
#include "platform/window/Cursor.h"
#include "platform/window/NativeWindow.h"
#include "tests/window/WindowTest.h"

namespace {

class ViewTest : public WindowTest {
  protected:
    ViewTest() {
        place.view->log.clear();
        place.view->points.clear();
        place.view->flags.clear();
        Settle();
    }

    QImage Picture() const {
        CBitmapEx& picture = *NativeWindow::Of(place.view->GetSafeHwnd())->Picture();
        return QImage(static_cast<const uchar*>(picture.GetBits()), picture.GetWidth(), picture.GetHeight(),
                      QImage::Format_RGB32)
            .copy();
    }
    QImage Screen() const {
        return ClientOf(*place.view)->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
    void DrawBand(const CRect& rect) const {
        CClientDC dc(place.view);
        CPen pen(PS_DOT, 0, RGB(0, 0, 0));
        dc.SelectObject(&pen);
        dc.SelectStockObject(NULL_BRUSH);
        dc.SetROP2(R2_XORPEN);
        dc.Rectangle(rect);
    }
    void Wheel(int delta, QPoint at, int across = 0, Qt::KeyboardModifiers held = {}) const {
        QWidget* client = ClientOf(*place.view);
        QWheelEvent event(at, client->mapToGlobal(at), {}, {across, delta}, Qt::NoButton, held,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(client, &event);
    }

    Workplace place;
};

TEST_F(ViewTest, WhatAClientContextDrawsStaysOverPaintsAndDrawingItAgainRestoresTheScreen) {
    const QImage before = Screen();
    const int draws = place.view->draws;
    DrawBand({10, 10, 90, 70});
    Settle();
    EXPECT_NE(Screen(), before);
    EXPECT_EQ(Screen(), Picture());
    ClientOf(*place.view)->repaint();
    EXPECT_NE(Screen(), before);
    DrawBand({10, 10, 90, 70});
    Settle();
    EXPECT_EQ(Screen(), before);
    EXPECT_EQ(place.view->draws, draws) << "a client context is no reason to draw anew";
}

TEST_F(ViewTest, OnlyAContextThatDrewMakesTheWindowPaint) {
    struct PaintCounter : QObject {
        int paints = 0;
        bool eventFilter(QObject*, QEvent* event) override {
            paints += event->type() == QEvent::Paint;
            return false;
        }
    } counter;
    ClientOf(*place.view)->installEventFilter(&counter);
    CPoint point(5, 5);
    CClientDC(place.view).DPtoLP(&point);
    Settle();
    EXPECT_EQ(counter.paints, 0);
    for (int i = 0; i < 50; ++i) DrawBand({10, 10, 20 + i, 20 + i});
    Settle();
    EXPECT_EQ(counter.paints, 1) << "one paint shows all that was drawn";
}

TEST_F(ViewTest, ContextsWithoutAWindowDrawNothing) {
    CClientDC none(nullptr);
    none.FillSolidRect({0, 0, 5, 5}, RGB(1, 2, 3));
    EXPECT_EQ(none.GetPixel(1, 1), CLR_INVALID);
    CClientDC frame(place.main);
    EXPECT_EQ(frame.GetPixel(1, 1), CLR_INVALID);
    CClientDC late(place.view);
    place.main->DestroyWindow();
    place.main = nullptr;
    late.FillSolidRect({0, 0, 5, 5}, RGB(1, 2, 3));
}

TEST_F(ViewTest, ManyInvalidationsDrawOnceAndAPressFindsTheViewDrawn) {
    const int draws = place.view->draws;
    for (int i = 0; i < 10; ++i) place.view->Invalidate(i % 2);
    Settle();
    EXPECT_EQ(place.view->draws, draws + 1);
    // Otherwise the late redraw would wipe out what the drag draws on top.
    place.view->Invalidate();
    QTest::mousePress(ClientOf(*place.view), Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(place.view->draws, draws + 2);
}

TEST_F(ViewTest, MouseMessagesCarryPointAndHeldButtonsAndKeys) {
    QWidget* client = ClientOf(*place.view);
    QTest::mousePress(client, Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier, {20, 30});
    QTest::mouseMove(client, {40, 50});
    QTest::mouseRelease(client, Qt::LeftButton, {}, {41, 51});
    QTest::mouseDClick(client, Qt::LeftButton, {}, {42, 52});
    QTest::mouseRelease(client, Qt::LeftButton, {}, {42, 52});
    QTest::mouseDClick(client, Qt::MiddleButton, {}, {43, 53});
    QTest::mouseRelease(client, Qt::MiddleButton, {}, {43, 53});
    EXPECT_EQ(place.view->TakeLog(), "down move up double up middle");
    ASSERT_EQ(place.view->points.size(), 6u);
    EXPECT_EQ(place.view->points[0], CPoint(20, 30));
    EXPECT_EQ(place.view->points[2], CPoint(41, 51));
    EXPECT_EQ(place.view->flags[0], MK_LBUTTON | MK_CONTROL | MK_SHIFT);
    EXPECT_TRUE(place.view->flags[1] & MK_LBUTTON);
    EXPECT_EQ(place.view->flags[2], 0u);
    QTest::mousePress(client, Qt::RightButton, {}, {44, 54});
    QTest::mouseRelease(client, Qt::RightButton, {}, {45, 55});
    EXPECT_EQ(place.view->TakeLog(), "right rightup");
    EXPECT_EQ(place.view->points.back(), CPoint(45, 55));
    EXPECT_EQ(place.view->flags[6], MK_RBUTTON);
}

TEST_F(ViewTest, EveryNotchOfTheWheelIsOneMessageAndSmallTurnsAddUp) {
    Wheel(120, {60, 40});
    EXPECT_EQ(place.view->TakeLog(), "wheel:120");
    EXPECT_EQ(place.view->points.back(), CPoint(60, 40));
    Wheel(-240, {60, 40});
    EXPECT_EQ(place.view->TakeLog(), "wheel:-120 wheel:-120");
    for (int i = 0; i < 11; ++i) Wheel(20, {60, 40});
    EXPECT_EQ(place.view->TakeLog(), "wheel:120");
    Wheel(-100, {60, 40});
    EXPECT_EQ(place.view->TakeLog(), "") << "turning back begins a new notch";
    Wheel(0, {60, 40}, 30);
    Wheel(0, {60, 40}, -120);
    EXPECT_EQ(place.view->TakeLog(), "across:-30 across:120") << "to the right for positive values";
    Wheel(-20, {60, 40}, 0, Qt::ShiftModifier);
    EXPECT_EQ(place.view->TakeLog(), "wheel:-120") << "steps across do not begin a new notch";
    EXPECT_EQ(place.view->flags.back(), MK_SHIFT);
}

TEST_F(ViewTest, AHeldKeyIsLetGoOnce) {
    QWidget* view = place.view->GetSafeHwnd();
    // The automatic repeat as X11 sends it: releases that look real, each followed by a press.
    QTest::keyPress(view, Qt::Key_X);
    for (int i = 0; i < 3; ++i) {
        QTest::keyRelease(view, Qt::Key_X);
        QTest::keyPress(view, Qt::Key_X);
    }
    EXPECT_EQ(place.view->TakeLog(), "key:88 key:88 key:88 key:88");
    QTest::keyRelease(view, Qt::Key_X);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !place.view->log.empty(); }, 2000));
    EXPECT_EQ(place.view->TakeLog(), "let:88");
    // Let go elsewhere: the view would never hear of it.
    QTest::keyPress(view, Qt::Key_Y);
    place.main->GetSafeHwnd()->setFocus();
    view->clearFocus();
    EXPECT_EQ(place.view->TakeLog(), "key:89 let:89");
}

TEST_F(ViewTest, ScrollBarsTellWhatTheUserDidAndStayWhereTheHandlerLeavesThem) {
    place.view->SetScrollRange(SB_HORZ, -2000000000, 2000000000);
    place.view->SetScrollPos(SB_HORZ, -1500000000);
    place.view->SetScrollRange(SB_VERT, 0, 100);
    EXPECT_EQ(place.view->SetScrollPos(SB_VERT, 500), 0);
    EXPECT_EQ(place.view->GetScrollPos(SB_VERT), 100) << "held within the range";
    EXPECT_EQ(place.view->TakeLog(), "") << "setting a position is no message";

    auto* bar = qobject_cast<QAbstractScrollArea*>(place.view->GetSafeHwnd())->horizontalScrollBar();
    const struct {
        QAbstractSlider::SliderAction action;
        std::string word;
    } cases[] = {{QAbstractSlider::SliderSingleStepSub, "h0:"}, {QAbstractSlider::SliderSingleStepAdd, "h1:"},
                 {QAbstractSlider::SliderPageStepSub, "h2:"},   {QAbstractSlider::SliderPageStepAdd, "h3:"},
                 {QAbstractSlider::SliderToMinimum, "h6:"},     {QAbstractSlider::SliderToMaximum, "h7:"}};
    for (const auto& one : cases) {
        bar->triggerAction(one.action);
        EXPECT_EQ(place.view->TakeLog().substr(0, 3), one.word);
        EXPECT_EQ(place.view->GetScrollPos(SB_HORZ), -1500000000) << one.word;
    }
    place.view->SetScrollPage(SB_HORZ, 123456);
    EXPECT_EQ(bar->pageStep(), 123456) << "the thumb is as long as what is in view";
    bar->setSliderDown(true);
    bar->setSliderPosition(-7);
    SCROLLINFO info;
    EXPECT_TRUE(place.view->GetScrollInfo(SB_HORZ, &info));
    EXPECT_EQ(info.nTrackPos, -7);
    bar->setSliderDown(false);
    EXPECT_EQ(place.view->TakeLog(), "h5:-7 h4:-7 h8:0");
    Press(place.view->GetSafeHwnd(), Qt::Key_Right);
    EXPECT_EQ(place.view->TakeLog().substr(0, 9), "key:39 h1");
    place.view->SetScrollRange(SB_HORZ, 0, 1000);
    EXPECT_EQ(bar->pageStep(), 100) << "a new range begins with a page of its own";
}

TEST_F(ViewTest, AViewWithoutScrollBarsHasNoneToRead) {
    RecordingView plain;
    ASSERT_TRUE(plain.Create(nullptr, nullptr, WS_VISIBLE, CRect(0, 0, 200, 100), nullptr, 0));
    plain.SetScrollRange(SB_HORZ, 0, 10);
    SCROLLINFO info;
    EXPECT_FALSE(plain.GetScrollInfo(SB_HORZ, &info));
    Press(plain.GetSafeHwnd(), Qt::Key_Right);
    EXPECT_EQ(plain.TakeLog(), "key:39") << "no scroll message";
}

class TickingView : public RecordingView {
    void OnTimer(UINT id) override { log.push_back("timer:" + std::to_string(id)); }
};

TEST_F(ViewTest, ATimerTicksUntilItIsKilled) {
    TickingView view;
    EXPECT_EQ(view.SetTimer(3, 1), 0u) << "no window yet";
    ASSERT_TRUE(view.Create(nullptr, nullptr, 0, CRect(0, 0, 200, 100), nullptr, 0));
    EXPECT_EQ(view.SetTimer(3, 1), 3u);
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.log.size() > 1; }, 2000)) << "again and again";
    EXPECT_TRUE(view.KillTimer(3));
    EXPECT_FALSE(view.KillTimer(4));
    view.log.clear();
    // Another timer ticks on while the killed one is silent.
    view.SetTimer(5, 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.log.size() > 3; }, 2000));
    for (const std::string& word : view.log) EXPECT_EQ(word, "timer:5");
}

TEST_F(ViewTest, TheKeyboardAsksForTheMenuInTheMiddle) {
    QWidget* client = ClientOf(*place.view);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {0, 0}, client->mapToGlobal(QPoint(0, 0)));
    QCoreApplication::sendEvent(client, &event);
    EXPECT_EQ(place.view->TakeLog(), "menu");
    CPoint point = place.view->points.back();
    place.view->ScreenToClient(&point);
    EXPECT_NEAR(point.x, client->width() / 2, 1);
    EXPECT_NEAR(point.y, client->height() / 2, 1);
}

class CrossView : public RecordingView {
    BOOL OnSetCursor(CWnd*, UINT, UINT) override {
        SetCursor(LoadStandardCursor(IDC_CROSS));
        return TRUE;
    }
};

TEST_F(ViewTest, TheViewChoosesItsCursor) {
    CrossView view;
    ASSERT_TRUE(view.Create(nullptr, nullptr, WS_VISIBLE, CRect(810, 0, 990, 100), nullptr, 0));
    Settle();
    QTest::mouseMove(ClientOf(view), {5, 5});
    QTest::mouseMove(ClientOf(view), {6, 5});
    Settle();
    EXPECT_NE(view.TakeLog().find("move"), std::string::npos);
    EXPECT_EQ(ClientOf(view)->cursor().shape(), Qt::CrossCursor);
    EXPECT_EQ(LoadStandardCursor(1), 0);
}

TEST_F(ViewTest, PixelsArePhysicalOnAScreenOfDoubleDensity) {
    RecordingView view;
    ASSERT_TRUE(view.Create(nullptr, nullptr, 0, CRect(), nullptr, 0));
    view.GetSafeHwnd()->setGeometry(1100, 50, 300, 200);
    view.ShowWindow(SW_SHOW);
    Settle();
    ASSERT_EQ(view.GetSafeHwnd()->devicePixelRatioF(), 2.0);
    EXPECT_EQ(view.points.back(), CPoint(600, 400)) << "told by OnSize";
    CRect client;
    view.GetClientRect(&client);
    EXPECT_EQ(client, CRect(0, 0, 600, 400));
    QTest::mouseClick(ClientOf(view), Qt::LeftButton, {}, {30, 40});
    EXPECT_EQ(view.points.back(), CPoint(60, 80));
    CPoint point(60, 80);
    view.ClientToScreen(&point);
    view.ScreenToClient(&point);
    EXPECT_EQ(point, CPoint(60, 80));
    SIZE inch{2540, 2540};
    CClientDC(&view).HIMETRICtoLP(&inch);
    EXPECT_EQ(CSize(inch), CSize(192, 192));
    CBitmapEx memory(4, 16, 256);
    CClientDC reference(&view);
    memory.ReSize(&reference, 10, 10);
    EXPECT_EQ(CDC(memory).GetDeviceCaps(LOGPIXELSX), 192);
    CClientDC(&view).SetPixelV(61, 80, RGB(255, 0, 0));
    Settle();
    const QImage screen = ClientOf(view)->grab().toImage();
    EXPECT_EQ(screen.size(), QSize(600, 400));
    EXPECT_EQ(screen.pixel(61, 80), 0xFFFF0000);
    EXPECT_NE(screen.pixel(60, 80), 0xFFFF0000);
}

}  // namespace
