// The workbench driven with real events, without a display; once with one.
#include <QClipboard>
#include <QDropEvent>
#include <QImage>
#include <QMimeData>
#include <QUrl>
#include <QWheelEvent>
#include <QtTest>
#include <cctype>
#include <set>
#include <thread>

#include "app/workbench/CGraphFrame.h"
#include "app/workbench/CSeriesView.h"
#include "app/workbench/CWorkbenchFrame.h"
#include "app/workbench/ImportDialog.h"
#include "app/workbench/RecentFiles.h"
#include "app/workbench/WorkbenchIds.h"
#include "app/workbench/WorkbenchResources.h"
#include "tests/app/Files.h"
#include "tests/window/WindowTest.h"

namespace app {
namespace {

// Ten days of readings, one an hour, in two columns.
std::string TenDays() {
    std::string text = "time,level [m],temperature\n";
    for (int hour = 0; hour <= 240; ++hour) {
        char row[64];
        std::snprintf(row, sizeof row, "2024-03-%02dT%02d:00,%.2f,%d\n", 1 + hour / 24, hour % 24,
                      hour % 12 * 0.25, 15 + hour % 7);
        text += row;
    }
    return text;
}

class WorkbenchTest : public WindowTest {
  protected:
    WorkbenchTest() {
        folder.Write("days.csv", TenDays());
        application.SetRegistryKey("Tavin");
        boxes = SetMessageBoxHandler([this](const char* text, UINT) {
            messages.emplace_back(text);
            return IDOK;
        });
        Begin();
    }
    ~WorkbenchTest() override {
        End();
        SetMessageBoxHandler(boxes);
    }

    void Begin() {
        frame = new CWorkbenchFrame;
        application.m_pMainWnd = frame;
        ASSERT_TRUE(frame->CreateWorkbench());
        frame->ShowAsBefore();
    }
    void End() {
        if (frame) frame->DestroyWindow();
        frame = nullptr;
        Settle();
    }
    CSeriesView& Open() {
        frame->OpenFiles({folder.Path("days.csv")});
        Settle();
        EXPECT_NE(frame->ActiveSeriesView(), nullptr);
        return *frame->ActiveSeriesView();
    }
    void Key(int key, int modifiers = 0) {
        Press(frame->ActiveSeriesView()->GetSafeHwnd(), key, modifiers);
        Settle();
    }
    CCmdUI State(UINT id) { return QueryCommand(*frame, id); }
    std::string Pane(int pane) const { return frame->StatusText(pane).GetString(); }

    Folder folder;
    CWindowApp application{"Tavin"};
    WorkbenchResources resources;
    CWorkbenchFrame* frame = nullptr;
    std::vector<std::string> messages;
    MessageBoxHandler boxes;
};

TEST_F(WorkbenchTest, ShowsTheFirstSeriesOfAFileAndListsAll) {
    CSeriesView& view = Open();
    EXPECT_TRUE(view.IsShown(0));
    EXPECT_FALSE(view.IsShown(1));
    CString caption;
    view.GetParentFrame()->GetWindowText(caption);
    EXPECT_STREQ(caption, "days.csv - level");
    EXPECT_STREQ(State(kSeriesFirst).GetText(), "level");
    EXPECT_STREQ(State(kSeriesFirst + 1).GetText(), "temperature");
    EXPECT_FALSE(State(kSeriesFirst + 2).IsEnabled());
    Key(Qt::Key_N);
    EXPECT_FALSE(view.IsShown(0));
    EXPECT_TRUE(view.IsShown(1));
    EXPECT_TRUE(RunCommand(*frame, kAllSeries));
    EXPECT_TRUE(view.IsShown(0) && view.IsShown(1));
    // The same file again is no second window.
    Open();
    EXPECT_EQ(frame->GetChildren().size(), 1u);
}

TEST_F(WorkbenchTest, KeysZoomAndCommandsShowTheirState) {
    Open();
    EXPECT_EQ(Pane(kZoomPane), "Zoom 1 x 1");
    EXPECT_FALSE(State(50005).IsEnabled());
    Key(Qt::Key_Plus);
    EXPECT_EQ(Pane(kZoomPane), "Zoom 1.41 x 1.41");
    Key(Qt::Key_Plus);
    EXPECT_EQ(Pane(kZoomPane), "Zoom 2 x 2");
    EXPECT_TRUE(State(50005).IsEnabled());
    Key(Qt::Key_Backspace);
    EXPECT_EQ(Pane(kZoomPane), "Zoom 1.41 x 1.41");
    Key(Qt::Key_Minus);
    EXPECT_EQ(Pane(kZoomPane), "Zoom 1 x 1");
    Key(Qt::Key_Plus);
    Key(Qt::Key_F);
    EXPECT_EQ(Pane(kZoomPane), "Zoom 1 x 1");

    const struct {
        int key;
        UINT command;
    } switches[] = {{Qt::Key_L, kLegend},
                    {Qt::Key_G, kGrid},
                    {Qt::Key_T, kTiles},
                    {Qt::Key_R, kRuler},
                    {Qt::Key_Z, 50000}};
    for (const auto& one : switches) {
        const bool before = State(one.command).IsChecked();
        Key(one.key);
        EXPECT_NE(State(one.command).IsChecked(), before) << one.command;
        Key(one.key);
        EXPECT_EQ(State(one.command).IsChecked(), before) << one.command;
    }
    Key(Qt::Key_Z);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(State(50000).IsChecked());
}

TEST_F(WorkbenchTest, EveryCommandOfTheMenusIsAnsweredWhileAFileIsOpen) {
    Open();
    for (const MenuResource& row : FindMenuResource(kMainFrame)) {
        if (row.kind != MenuResource::Kind::Item) continue;
        ASSERT_NE(FindCommandResource(row.id), nullptr) << row.id;
        CCmdUI state(row.id);
        EXPECT_TRUE(frame->OnCmdMsg(row.id, &state)) << FindCommandResource(row.id)->text;
    }
    for (const UINT id : FindToolBarResource(kMainFrame)) {
        if (id == 0) continue;
        const char* const icon = FindCommandResource(id)->icon;
        EXPECT_TRUE(icon && FindIconResource(icon)) << id;
    }
}

TEST_F(WorkbenchTest, TheStatusBarTellsTimeAndValueUnderTheMouse) {
    CSeriesView& view = Open();
    QWidget* const client = ClientOf(view);
    QTest::mouseMove(client, QPoint(client->width() / 2, client->height() / 2));
    Settle();
    // About the middle of the ten days and of values from 0 to 2.75.
    EXPECT_GT(Pane(kPositionPane), "2024-03-05 18") << Pane(kPositionPane);
    EXPECT_LT(Pane(kPositionPane), "2024-03-06 06") << Pane(kPositionPane);
    EXPECT_NE(Pane(kPositionPane).find(",  1.3"), std::string::npos) << Pane(kPositionPane);
    EXPECT_EQ(Pane(kPositionPane).substr(Pane(kPositionPane).size() - 2), " m");
}

TEST_F(WorkbenchTest, ExportsTheViewInEveryFormat) {
    CSeriesView& view = Open();
    for (const char* name : {"out.png", "out.svg", "out.pdf"}) {
        const auto before = SetFileDialogHandler([&](CFileDialog& dialog) {
            EXPECT_STREQ(dialog.GetPathName(), "days.png");
            dialog.SetPathNames({CString(folder.Path(name))});
            return IDOK;
        });
        Key(Qt::Key_E, Qt::ControlModifier);
        SetFileDialogHandler(before);
        EXPECT_TRUE(folder.Has(name)) << name;
    }
    const QImage picture(QString::fromStdString(folder.Path("out.png")));
    EXPECT_EQ(CSize(picture.width(), picture.height()), view.ShownSize().pixels);
    EXPECT_TRUE(messages.empty());
    const auto before = SetFileDialogHandler([&](CFileDialog& dialog) {
        dialog.SetPathNames({CString(folder.Path("nowhere/out.png"))});
        return IDOK;
    });
    RunCommand(*frame, kExport);
    SetFileDialogHandler(before);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_NE(messages[0].find("nowhere/out.png"), std::string::npos);
}

TEST_F(WorkbenchTest, ASuffixThatIsNoPictureIsRefusedAndCapitalsAreNot) {
    Open();
    std::string name;
    const auto before = SetFileDialogHandler([&](CFileDialog& dialog) {
        dialog.SetPathNames({CString(folder.Path(name))});
        return IDOK;
    });
    name = "out.PNG";
    RunCommand(*frame, kExport);
    EXPECT_TRUE(folder.Has("out.PNG"));
    EXPECT_TRUE(messages.empty());
    name = "out.gif";
    RunCommand(*frame, kExport);
    SetFileDialogHandler(before);
    EXPECT_FALSE(folder.Has("out.gif"));
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_NE(messages[0].find(".png, .svg or .pdf"), std::string::npos) << messages[0];
}

TEST_F(WorkbenchTest, CopiesThePictureAndTheValuesInView) {
    CSeriesView& view = Open();
    Key(Qt::Key_C, Qt::ControlModifier);
    const QImage picture = QGuiApplication::clipboard()->image();
    EXPECT_EQ(CSize(picture.width(), picture.height()), view.ShownSize().pixels);
    RunCommand(*frame, kAllSeries);
    Settle();
    Key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    const QStringList all = QGuiApplication::clipboard()->text().split('\n');
    ASSERT_EQ(all.size(), 243);  // heading, 241 rows, the end of the last one
    EXPECT_EQ(all[0].toStdString(), "time\tlevel [m]\ttemperature");
    EXPECT_EQ(all[2].toStdString(), "2024-03-01T01:00:00\t0.25\t16");
    for (int i = 0; i < 4; ++i) Key(Qt::Key_Plus);
    Key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    const int quarter = static_cast<int>(QGuiApplication::clipboard()->text().split('\n').size()) - 2;
    EXPECT_GE(quarter, 58);
    EXPECT_LE(quarter, 62);
}

// Neighbours in a menu that answer to one letter cannot both be reached by it.
TEST(WorkbenchMenus, NoTwoEntriesOfAMenuHaveTheSameLetter) {
    const WorkbenchResources resources;
    std::vector<std::string> open = {""};  // letters so far, of each menu around
    const auto note = [&](const std::string& text) {
        const auto at = text.find('&');
        if (at == std::string::npos) return;
        const char letter = static_cast<char>(std::tolower(static_cast<unsigned char>(text[at + 1])));
        EXPECT_EQ(open.back().find(letter), std::string::npos) << text << " among " << open.back();
        open.back() += letter;
    };
    std::set<std::string> shortcuts;
    for (const UINT menu : {kMainFrame, kViewContextMenu}) {
        for (const MenuResource& row : FindMenuResource(menu)) {
            if (row.kind == MenuResource::Kind::Popup) {
                note(row.text);
                open.emplace_back();
            } else if (row.kind == MenuResource::Kind::End) {
                open.pop_back();
            } else if (row.kind == MenuResource::Kind::Item) {
                const std::string text = FindCommandResource(row.id)->text;
                note(text);
                const auto tab = text.find('\t');
                if (menu != kMainFrame || tab == std::string::npos) continue;
                EXPECT_TRUE(shortcuts.insert(text.substr(tab)).second) << text;
            }
        }
        open = {""};
    }
}

TEST_F(WorkbenchTest, FilesThatCannotBeReadGetOneMessageAndTheProgramStays) {
    folder.Write("words.csv", "these are\nonly words\n");
    frame->OpenFiles({folder.Path("words.csv"), folder.Path("none.csv"), folder.Path("days.csv")});
    Settle();
    ASSERT_EQ(messages.size(), 1u);
    for (const char* word : {"2 files", "words.csv:1: not a table", "none.csv"})
        EXPECT_NE(messages[0].find(word), std::string::npos) << messages[0];
    EXPECT_EQ(messages[0].find("--"), std::string::npos) << messages[0];
    EXPECT_EQ(frame->Documents().size(), 1u);
    EXPECT_EQ(RecentFiles().front(), folder.Path("days.csv"));
    for (const auto& path : RecentFiles()) EXPECT_NE(path, folder.Path("none.csv"));
}

TEST_F(WorkbenchTest, TheStartPageOpensRecentFilesByKeyAndClickAndComesBack) {
    frame->OpenFiles({});
    const auto page = [&]() -> CView* {
        CMDIChildWnd* const child = frame->MDIGetActive();
        return child && frame->Documents().empty() ? child->GetViews().front() : nullptr;
    };
    ASSERT_NE(page(), nullptr);
    EXPECT_FALSE(State(kReload).IsEnabled());
    Open();
    EXPECT_EQ(frame->GetChildren().size(), 1u);  // the page made way
    RunCommand(*frame, ID_FILE_CLOSE);
    ASSERT_TRUE(QTest::qWaitFor([&] { return page() != nullptr; }));
    // The last entry is the only recent file.
    Press(page()->GetSafeHwnd(), Qt::Key_End);
    Press(page()->GetSafeHwnd(), Qt::Key_Return);
    Settle();
    ASSERT_EQ(frame->Documents().size(), 1u);
    RunCommand(*frame, ID_FILE_CLOSE);
    ASSERT_TRUE(QTest::qWaitFor([&] { return page() != nullptr; }));
    // The entries stand below each other at the left: some click there meets the file.
    QWidget* const client = ClientOf(*page());
    const auto before = SetFileDialogHandler([](CFileDialog&) { return IDCANCEL; });
    for (int y = client->height() - 1; y > 0 && page(); y -= 3)
        QTest::mouseClick(client, Qt::LeftButton, {}, {70, y});
    SetFileDialogHandler(before);
    EXPECT_EQ(frame->Documents().size(), 1u);
}

TEST_F(WorkbenchTest, AReloadedFileShowsItsNewRowsInTheSamePart) {
    Open();
    Key(Qt::Key_N);
    for (int i = 0; i < 4; ++i) Key(Qt::Key_Plus);
    const CPointEx before = frame->ActiveSeriesView()->VisibleX();
    folder.Write("days.csv", TenDays() + "2024-03-11T01:00,1.5,99\n");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !frame->Documents()[0]->Message().empty(); }));
    Key(Qt::Key_F5);
    CSeriesView& view = *frame->ActiveSeriesView();
    EXPECT_EQ(view.File().series[1].source->GetCount(), 242);
    EXPECT_TRUE(view.IsShown(1) && !view.IsShown(0));
    const CPointEx after = view.VisibleX();
    EXPECT_NEAR(after.x, before.x, (before.y - before.x) / 50);
    EXPECT_NEAR(after.y, before.y, (before.y - before.x) / 50);
    EXPECT_EQ(frame->Documents()[0]->Message(), "");
    // A file that can no longer be read leaves its window as it is.
    folder.Write("days.csv", "words\n");
    Key(Qt::Key_F5);
    EXPECT_EQ(messages.size(), 1u);
    EXPECT_EQ(frame->ActiveSeriesView(), &view);
}

TEST_F(WorkbenchTest, ALargeFileIsReadBesideTheWindowsAndCanBeStopped) {
    std::string rows = "x,y\n";
    for (int i = 0; i < 2000000; ++i) rows += std::to_string(i) + "," + std::to_string(i % 977) + ".25\n";
    folder.Write("large.csv", rows);
    frame->SetPatience({});
    frame->OpenFiles({folder.Path("large.csv")});
    ASSERT_EQ(frame->Documents().size(), 1u);
    ASSERT_EQ(frame->Documents()[0]->View(), nullptr);
    const auto rowsSoFar = [&] { return frame->Documents()[0]->Reading()->Now().rows; };
    // Without the clock, which would put the series in the place of their reading.
    while (rowsSoFar() == 0) std::this_thread::yield();
    EXPECT_FALSE(frame->Documents()[0]->Reading()->Now().sketch.Whole().IsEmpty());
    EXPECT_TRUE(State(kModeEscape).IsEnabled());
    RunCommand(*frame, kModeEscape);
    ASSERT_TRUE(QTest::qWaitFor([&] { return frame->Documents().empty(); }, 20000));
    EXPECT_TRUE(messages.empty());

    frame->OpenFiles({folder.Path("large.csv"), folder.Path("days.csv")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return frame->Documents()[0]->View() != nullptr; }, 60000));
    EXPECT_EQ(frame->Documents()[0]->View()->File().series[0].source->GetCount(), 2000000);
    // Closed while it is read: nothing is left behind.
    RunCommand(*frame, kCloseAll);
    frame->OpenFiles({folder.Path("large.csv")});
}

TEST_F(WorkbenchTest, FilesCanBeDropped) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(folder.Path("days.csv")))});
    QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(frame->GetSafeHwnd(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(frame->GetSafeHwnd(), &drop);
    QTest::qWait(20);
    EXPECT_EQ(frame->Documents().size(), 1u);
}

TEST_F(WorkbenchTest, WhatTheUserChoseIsThereNextTime) {
    Open();
    const bool grid = State(kGrid).IsChecked();
    const bool legend = State(kLegend).IsChecked();
    Key(Qt::Key_G);
    Key(Qt::Key_L);
    WINDOWPLACEMENT placement;
    frame->GetWindowPlacement(&placement);
    placement.rcNormalPosition = CRect(40, 50, 740, 550);
    frame->SetWindowPlacement(&placement);
    End();
    Begin();
    frame->GetWindowPlacement(&placement);
    EXPECT_EQ(CRect(placement.rcNormalPosition), CRect(40, 50, 740, 550));
    EXPECT_EQ(RecentFiles().front(), folder.Path("days.csv"));
    EXPECT_NE(std::string(State(kRecentFirst).GetText()).find("days.csv"), std::string::npos);
    RunCommand(*frame, kRecentFirst);
    Settle();
    EXPECT_NE(State(kGrid).IsChecked(), grid);
    EXPECT_NE(State(kLegend).IsChecked(), legend);
    Key(Qt::Key_G);
    Key(Qt::Key_L);
}

TEST_F(WorkbenchTest, TheReadersGuessesAreShownAndCanBeChanged) {
    folder.Write("german.csv", "t;a;b\n1;2,5;7\n2;3,5;8\n3;4,5;9\n");
    std::vector<std::string> shown;
    const auto before = SetChoiceDialogHandler([&](CChoiceDialog& dialog) {
        for (const auto& choice : dialog.choices)
            shown.emplace_back(choice.options[static_cast<std::size_t>(choice.chosen)].GetString());
        EXPECT_EQ(dialog.preview.size(), 4u);
        EXPECT_STREQ(dialog.preview[1][1], "2,5");
        EXPECT_TRUE(dialog.items[1].ticked && dialog.items[2].ticked && !dialog.items[0].enabled);
        dialog.choices[6].chosen = 2;  // x is b
        dialog.choices[3].chosen = 1;  // no header
        dialog.OnChange();
        EXPECT_FALSE(dialog.items[2].enabled);
        dialog.items[0].ticked = dialog.items[1].ticked = false;
        dialog.OnChange();
        EXPECT_FALSE(dialog.acceptable);
        dialog.items[1].ticked = true;
        dialog.OnChange();
        EXPECT_TRUE(dialog.acceptable) << dialog.note;
        return IDOK;
    });
    const auto request = AskHowToRead({folder.Path("german.csv")}, frame);
    SetChoiceDialogHandler(before);
    EXPECT_EQ(shown,
              (std::vector<std::string>{"guess: UTF-8", "guess: semicolon", "guess: comma", "guess: line 1",
                                        "guess", "guess: UTC, or as the times say", "t"}));
    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->x, "3");
    EXPECT_EQ(request->y, std::vector<std::string>{"2"});
    EXPECT_EQ(request->headerLine, std::optional<std::int64_t>(0));
    const auto file = ReadSeriesFile(*request);
    ASSERT_TRUE(file);
    ASSERT_EQ(file->series.size(), 1u);
    EXPECT_EQ(file->series[0].source->GetCount(), 3);
    EXPECT_EQ(file->series[0].source->GetMinX() / file->x.unitsPerReal, 7.0);
}

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
}

TEST_F(WorkbenchTest, SpaceAndTheLeftButtonMoveTheView) {
    CSeriesView& view = Open();
    Key(Qt::Key_Plus);
    const CRect plot = view.Panels()[0].plot;
    const PixelScale before{view.ShownX(), double(plot.left), double(plot.right)};
    QTest::keyPress(view.GetSafeHwnd(), Qt::Key_Space);
    QTest::mousePress(ClientOf(view), Qt::LeftButton, {}, QPoint(200, 150));
    for (int x = 200; x <= 260; x += 3) MoveMouse(ClientOf(view), {x, 150}, Qt::LeftButton);
    QTest::mouseRelease(ClientOf(view), Qt::LeftButton, {}, QPoint(260, 150));
    QTest::keyRelease(view.GetSafeHwnd(), Qt::Key_Space);
    const PixelScale after{view.ShownX(), double(plot.left), double(plot.right)};
    EXPECT_NEAR(after.Value(260), before.Value(200), before.PerPixel() / 100)
        << "no pixel is lost on the way";
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
    folder.Write("more.csv", TenDays());
    CSeriesView& first = Open();
    frame->OpenFiles({folder.Path("more.csv")});
    Settle();
    CSeriesView& second = *frame->ActiveSeriesView();
    ASSERT_NE(&first, &second);
    Key(Qt::Key_Plus);
    EXPECT_NE(first.ShownX(), second.ShownX());
    Key(Qt::Key_K);
    EXPECT_EQ(first.ShownX(), second.ShownX());
    Key(Qt::Key_Minus);
    EXPECT_EQ(first.ShownX(), second.ShownX());
    Key(Qt::Key_K);
    Key(Qt::Key_Plus);
    EXPECT_NE(first.ShownX(), second.ShownX());
}

bool Installed(const char* program) {
    return std::system((std::string("command -v ") + program + " >/dev/null 2>&1").c_str()) == 0;
}

TEST(WorkbenchUnderX, OpensTheSampleAndLeavesOnCtrlQ) {
    if (!Installed("Xvfb") || !Installed("xdotool"))
        GTEST_SKIP() << "Xvfb and xdotool are not installed (scripts/packages.sh names the packages)";
    const Folder folder;
    folder.Write("days.csv", TenDays());
    // The server chooses a free display and says which.
    folder.Write("smoke.sh", R"sh(cd "$(dirname "$0")"
Xvfb -displayfd 3 -screen 0 900x600x24 -nolisten tcp 3>display >/dev/null 2>&1 &
server=$!
for _ in $(seq 200); do [ -s display ] && break; sleep 0.05; done
export DISPLAY=:$(cat display) XDG_RUNTIME_DIR=$PWD
unset QT_QPA_PLATFORM WAYLAND_DISPLAY
timeout 60 "$1" days.csv & program=$!
window=$(timeout 50 xdotool search --sync --onlyvisible --name days | tail -n 1)
xdotool windowfocus "$window"
xdotool key ctrl+q
wait $program; result=$?
kill $server
exit $result
)sh");
    const int status = std::system(("bash " + folder.Path("smoke.sh") + " " TAVIN_PROGRAM).c_str());
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(WorkbenchWithoutDisplay, SaysWhatWorksThere) {
    const Folder folder;
    folder.Write("days.csv", TenDays());
    for (const std::string display : {"", "DISPLAY=:4711 "}) {
        const std::string command = "cd " + folder.Path("") +
                                    "; env -u DISPLAY -u WAYLAND_DISPLAY -u "
                                    "QT_QPA_PLATFORM " +
                                    display + TAVIN_PROGRAM " days.csv 2>err";
        const int status = std::system(command.c_str());
        EXPECT_EQ(WEXITSTATUS(status), 1);
        for (const char* word : {"display", "tavin clean", "tavin plot", "tavin info"})
            EXPECT_NE(folder.Read("err").find(word), std::string::npos) << word;
    }
}

}  // namespace
}  // namespace app
