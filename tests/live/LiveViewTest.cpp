// Live windows under real events, fed from a file that grows.
#include <QImage>
#include <QtTest>
#include <random>

#include "app/workbench/CLiveFrame.h"
#include "app/workbench/LiveDialogs.h"
#include "app/workbench/WorkbenchIds.h"
#include "tests/app/WorkbenchTest.h"

namespace app {
namespace {

class LiveViewTest : public WorkbenchTest {
  protected:
    LiveViewTest() {
        folder.Write("live.csv", "time,inlet [m],outlet [m],load [A]\n");
        out_.open(folder.Path("live.csv"), std::ios::app);
        std::string fault;
        wishes.addresses.resize(1);
        EXPECT_TRUE(ReadFeedAddress(folder.Path("live.csv"), wishes.addresses.front(), fault));
        wishes.window = 3;
        wishes.capacity = 700;
    }

    // So many more rows, a hundredth of a second apart; `value` of the row's number gives all three.
    template <class Value>
    void Feed(int rows, Value&& value) {
        char line[128];
        for (int i = 0; i < rows; ++i, ++rows_) {
            const double y = value(rows_);
            std::snprintf(line, sizeof line, "2025-11-24T%02d:%02d:%02d.%02d0Z,%.3f,%.3f,%.3f\n",
                          rows_ / 360000, rows_ / 6000 % 60, rows_ / 100 % 60, rows_ % 100, y, y / 2, 3 * y);
            out_ << line;
        }
        out_.flush();
        if (!live) live = frame->OpenLive(wishes);
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (live->Session().Rows() < static_cast<std::uint64_t>(rows_) &&
               std::chrono::steady_clock::now() < end)
            live->TakeRows();
        ASSERT_EQ(live->Session().Rows(), static_cast<std::uint64_t>(rows_));
        live->TakeRows();
        Settle();
    }
    CLiveView& View() { return *live->LiveView(); }
    QImage Grab() { return ClientOf(View())->grab().toImage(); }

    LiveWishes wishes;
    CLiveFrame* live = nullptr;

  private:
    std::ofstream out_;
    int rows_ = 0;
};

// However it is moved on, no pixel differs from a picture that is drawn whole: with gaps, with rings that
// overwrite, over changes of the range.
TEST_F(LiveViewTest, MovesOnToThePixelsOfAWholePicture) {
    wishes.derived = {"inlet-outlet"};
    std::mt19937 random(5);
    const auto noise = [&](int row) {
        if (row % 97 == 50) return std::nan("");
        return std::sin(row * 0.05) + static_cast<double>(random() % 100) / 400 +
               (row > 1500 && row < 1520 ? 20 : 0);
    };
    Feed(40, noise);
    for (const int range : {kLiveScrolling, kLiveWhole, kLiveFixed}) {
        RunCommand(*frame, range);
        Settle();
        for (int step = 0; step < 60; ++step) {
            const auto before = View().Pictures();
            Feed(1 + static_cast<int>(random() % 25), noise);
            if (step % 4) continue;
            const QImage moved = Grab();
            const bool advanced = View().Pictures().advanced > before.advanced;
            View().Redraw();
            Settle();
            const QImage whole = Grab();
            ASSERT_TRUE(moved == whole)
                << "range " << range << ", step " << step << ", advanced " << advanced;
        }
    }
    EXPECT_GT(View().Pictures().advanced, 60);
    // A picture is worth comparing when something is on it.
    EXPECT_EQ(View().Panels().size(), 1u);
    EXPECT_EQ(View().File().series.size(), 4u);
}

TEST_F(LiveViewTest, IsHeldByZoomingAndCatchesUp) {
    const auto ramp = [](int row) { return row * 0.01; };
    Feed(400, ramp);
    const Range before = View().ShownX();
    Feed(100, ramp);
    EXPECT_NEAR(View().ShownX().to - before.to, 1, 0.05);
    Key(Qt::Key_Plus);
    EXPECT_TRUE(View().IsHeld());
    const Range held = View().ShownX();
    const int drawn = View().Pictures().whole + View().Pictures().advanced;
    Feed(100, ramp);
    EXPECT_EQ(View().ShownX(), held);
    EXPECT_EQ(View().Pictures().whole + View().Pictures().advanced, drawn);
    Key(Qt::Key_H);
    EXPECT_FALSE(View().IsHeld());
    EXPECT_NEAR(View().ShownX().to - before.to, 2, 0.1);
    // What newest values lie above the level is told.
    EXPECT_FALSE(View().IsAlarmed());
    View().SetAlarm(5);
    EXPECT_TRUE(View().IsAlarmed());
    View().SetAlarm(50);
    EXPECT_FALSE(View().IsAlarmed());
}

// One sample for each row, from the values of that row; corrected ones by their sign and offset.
TEST_F(LiveViewTest, DerivesChannelsFromOthers) {
    Feed(30, [](int row) { return row * 1.0; });
    LiveSession& session = live->Session();
    ASSERT_TRUE(session.AddDerived(OPERATION_ADD, 0, 1));
    ASSERT_TRUE(session.AddDerived(OPERATION_SUBTRACT, 2, 0));
    ASSERT_TRUE(session.AddCorrected(0, {true, 5, {1}, {}}));
    EXPECT_FALSE(session.AddDerived(OPERATION_ADD, 0, 3));
    Feed(30, [](int row) { return row * 1.0; });
    const auto valueOf = [&](std::size_t i, long back) {
        COnlineSource& source = session.Series(i);
        return source.GetData()[source.GetCount() - 1 - back].y / source.GetYScale();
    };
    for (std::size_t i = 3; i < 6; ++i) ASSERT_EQ(session.Series(i).GetCount(), 30) << i;
    for (long back = 0; back < 30; ++back) {
        const double y = 59.0 - static_cast<double>(back);
        EXPECT_NEAR(valueOf(3, back), 1.5 * y, 1e-3);
        EXPECT_NEAR(valueOf(4, back), 2 * y, 1e-3);
        EXPECT_NEAR(valueOf(5, back), 5 - y + y / 2, 2e-3) << back;
    }
    EXPECT_EQ(View().ShownSeries().size(), 6u);
}

TEST_F(LiveViewTest, RecordsFromTheMenuAndOpensFromTheDialog) {
    const auto choose = SetFileDialogHandler([this](CFileDialog& dialog) {
        dialog.SetPathNames({CString(folder.Path("out.csv"))});
        return IDOK;
    });
    Feed(5, [](int row) { return row * 1.0; });
    RunCommand(*frame, kLiveRecord);
    EXPECT_TRUE(State(kLiveRecord).IsChecked());
    Feed(2, [](int row) { return row * 1.0; });
    RunCommand(*frame, kLiveRecord);
    EXPECT_EQ(folder.Read("out.csv"),
              "time,inlet [m],outlet [m],load [A]\n2025-11-24T00:00:00.050Z,5.000,2.500,15.000\n"
              "2025-11-24T00:00:00.060Z,6.000,3.000,18.000\n");
    SetFileDialogHandler(choose);
    // Neither of the commands of files reaches a live window.
    EXPECT_FALSE(State(kReload).IsEnabled());
    std::string address = "tcp://nowhere";
    const auto answer = SetModalHandler([&](ModalQuestion& question) -> std::optional<int> {
        auto* const dialog = dynamic_cast<LiveSourceDialog*>(&question);
        if (!dialog) return {};
        dialog->address = CString(address);
        return IDOK;
    });
    RunCommand(*frame, kLiveOpen);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_NE(messages[0].find("a port from 1 to 65535"), std::string::npos);
    address = folder.Path("live.csv");
    RunCommand(*frame, kLiveOpen);
    EXPECT_EQ(frame->Documents().size(), 2u);
    SetModalHandler(answer);
}

}  // namespace
}  // namespace app
