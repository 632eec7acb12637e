// The mouse in the views of the workbench.
#include <QAbstractScrollArea>
#include <QImage>
#include <QScrollBar>
#include <QWheelEvent>
#include <QtTest>
#include <cmath>

#include "app/workbench/WorkbenchIds.h"
#include "tests/app/WorkbenchTest.h"

namespace app {
namespace {

void MoveMouse(QWidget* client, CPoint to, Qt::MouseButton held) {
    const QPoint at(to.x, to.y);
    QMouseEvent move(QEvent::MouseMove, at, client->mapToGlobal(at), Qt::NoButton, held, {});
    QCoreApplication::sendEvent(client, &move);
}

void Wheel(QWidget* client, CPoint to, QPoint turn, Qt::KeyboardModifiers keys = {}) {
    const QPoint at(to.x, to.y);
    QWheelEvent event(at, client->mapToGlobal(at), {}, turn, Qt::NoButton, keys, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(client, &event);
}

TEST_F(WorkbenchTest, TheStatusBarTellsTimeAndValueUnderTheMouse) {
    CSeriesView& view = Open();
    QWidget* const client = ClientOf(view);
    QTest::mouseMove(client, QPoint(client->width() / 2, client->height() / 2));
    Settle();
    // About the middle of the ten days and of values from 0 to 2.75.
    EXPECT_GT(Pane(kPositionPane), "2024-03-05 18") << Pane(kPositionPane);
    EXPECT_LT(Pane(kPositionPane), "2024-03-06 06") << Pane(kPositionPane);
    EXPECT_NE(Pane(kPositionPane).find(",  1."), std::string::npos) << Pane(kPositionPane);
    EXPECT_EQ(Pane(kPositionPane).substr(Pane(kPositionPane).size() - 2), " m");
}

TEST_F(WorkbenchTest, TheWheelWorksInTheTileUnderThePointer) {
    CSeriesView& view = Open();
    RunCommand(*frame, kAllSeries);
    RunCommand(*frame, kTiles);
    Settle();
    ASSERT_EQ(view.Panels().size(), 2u);
    const Range first = view.Panels()[0].axes[0].shown;
    const Range second = view.Panels()[1].axes[0].shown;
    const Range x = view.ShownX();
    const CRect plot = view.Panels()[1].plot;
    const CPoint at((plot.left + plot.right) / 2, (plot.top + plot.bottom) / 2);
    MoveMouse(ClientOf(view), at, Qt::NoButton);
    EXPECT_NE(Pane(kPositionPane).find(",  18"), std::string::npos) << "degrees: " << Pane(kPositionPane);
    Wheel(ClientOf(view), at, {0, 120});
    Settle();
    EXPECT_EQ(view.Panels()[0].axes[0].shown, first);
    EXPECT_LT(view.Panels()[1].axes[0].shown.Length(), second.Length());
    EXPECT_LT(view.ShownX().Length(), x.Length());
    // Sideways: by a horizontal wheel or with Shift.
    const Range before = view.ShownX();
    Wheel(ClientOf(view), at, {-60, 0});
    EXPECT_GT(view.ShownX().from, before.from);
    Wheel(ClientOf(view), at, {0, 120}, Qt::ShiftModifier);
    EXPECT_LT(view.ShownX().from, before.from);
    EXPECT_NEAR(view.ShownX().Length(), before.Length(), 1e-6);
    const double full = x.Length() / before.Length();
    Wheel(ClientOf(view), at, {0, 120}, Qt::ControlModifier);
    const double gentle = before.Length() / view.ShownX().Length();
    EXPECT_GT(gentle, 1.0);
    EXPECT_LT(gentle - 1, (full - 1) / 2);
    // The bar at the side moves the first tile down.
    auto* const area = qobject_cast<QAbstractScrollArea*>(view.GetSafeHwnd());
    area->verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    Settle();
    EXPECT_LT(view.Panels()[0].axes[0].shown.from, first.from);
}

TEST_F(WorkbenchTest, TheCrosshairGoesThroughThePointer) {
    CSeriesView& view = Open();
    const CRect plot = view.Panels()[0].plot;
    MoveMouse(ClientOf(view), {plot.left + 40, plot.top + 30}, Qt::NoButton);
    Settle();
    const QImage before = ClientOf(view)->grab().toImage();
    Key(Qt::Key_C);
    const QImage after = ClientOf(view)->grab().toImage();
    int changed = 0;
    for (int y = plot.top; y < plot.bottom; ++y)
        changed += before.pixel(plot.left + 40, y) != after.pixel(plot.left + 40, y);
    EXPECT_GT(changed, plot.Height() * 3 / 4);
}

TEST_F(WorkbenchTest, SpaceAndTheLeftButtonMoveTheView) {
    CSeriesView& view = Open();
    Key(Qt::Key_Plus);
    const CRect plot = view.Panels()[0].plot;
    const PixelScale before{view.ShownX(), double(plot.left), double(plot.right)};
    const QImage picture = ClientOf(view)->grab().toImage();
    QTest::keyPress(view.GetSafeHwnd(), Qt::Key_Space);
    QTest::mousePress(ClientOf(view), Qt::LeftButton, {}, QPoint(200, 150));
    for (int x = 200; x <= 260; x += 3) MoveMouse(ClientOf(view), {x, 150}, Qt::LeftButton);
    QTest::mouseRelease(ClientOf(view), Qt::LeftButton, {}, QPoint(260, 150));
    QTest::keyRelease(view.GetSafeHwnd(), Qt::Key_Space);
    Settle();
    EXPECT_NE(ClientOf(view)->grab().toImage(), picture) << "the picture follows";
    const PixelScale after{view.ShownX(), double(plot.left), double(plot.right)};
    EXPECT_NEAR(after.Value(260), before.Value(200), before.PerPixel() / 100)
        << "no pixel is lost on the way";
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const Range shown = view.ShownX();
        QTest::mousePress(ClientOf(view), Qt::LeftButton, {}, QPoint(200, 150));
        for (const int x : {210, 220}) MoveMouse(ClientOf(view), {x, 150}, Qt::LeftButton);
        QTest::mouseRelease(ClientOf(view), Qt::LeftButton, {}, QPoint(220, 150));
        return view.ShownX() == shown;
    })) << "without the key nothing moves";
}

TEST_F(WorkbenchTest, ARulerIsDraggedOrClickedAndEscHidesIt) {
    CSeriesView& view = Open();
    for (const bool drag : {true, false}) {
        Key(Qt::Key_R);
        QTest::mousePress(ClientOf(view), Qt::LeftButton, {}, QPoint(200, 100));
        if (!drag) QTest::mouseRelease(ClientOf(view), Qt::LeftButton, {}, QPoint(200, 100));
        MoveMouse(ClientOf(view), {300, 180}, drag ? Qt::LeftButton : Qt::NoButton);
        EXPECT_EQ(Pane(kMessagePane).find("Ruler: "), 0u) << Pane(kMessagePane);
        if (!drag) QTest::mousePress(ClientOf(view), Qt::LeftButton, {}, QPoint(300, 180));
        QTest::mouseRelease(ClientOf(view), Qt::LeftButton, {}, QPoint(300, 180));
        Settle();
        EXPECT_TRUE(State(kRuler).IsChecked()) << drag;
        Key(Qt::Key_Escape);
        EXPECT_FALSE(State(kRuler).IsChecked()) << drag;
    }
}

TEST_F(WorkbenchTest, LinkedWindowsShowTheSamePartOfX) {
    std::string later = TenDays();
    for (std::size_t at = 0; (at = later.find("2024-03", at)) != std::string::npos;) later[at + 6] = '4';
    folder.Write("more.csv", later);
    const auto from = [](const CSeriesView& view) { return double(view.File().x.Time(view.VisibleX().x)); };
    CSeriesView& first = Open();
    frame->OpenFiles({folder.Path("more.csv")});
    Settle();
    CSeriesView& second = *frame->ActiveSeriesView();
    ASSERT_NE(&first, &second);
    Key(Qt::Key_Plus);
    EXPECT_GT(std::fabs(from(first) - from(second)), 1e9);
    Key(Qt::Key_K);
    EXPECT_NEAR(from(first), from(second), 1e6);
    Key(Qt::Key_Minus);
    EXPECT_NEAR(from(first), from(second), 1e6);
    Key(Qt::Key_K);
    Key(Qt::Key_Plus);
    EXPECT_GT(std::fabs(from(first) - from(second)), 1e9);
}

}  // namespace
}  // namespace app
