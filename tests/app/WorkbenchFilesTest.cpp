// Files that come into the workbench: opened, dropped, read beside it, read again, refused.
#include <malloc.h>

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QtTest>
#include <thread>

#include "app/workbench/CGraphFrame.h"
#include "app/workbench/ImportDialog.h"
#include "app/workbench/RecentFiles.h"
#include "app/workbench/WorkbenchIds.h"
#include "tests/app/WorkbenchTest.h"

namespace app {
namespace {

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
    frame->Documents()[0]->Watch(CGraphFrame::Look::AtDisk);
    EXPECT_EQ(frame->Documents()[0]->Message(), "") << "it was read after its change";
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

TEST_F(WorkbenchTest, AWindowLeavesNothingBehind) {
    const auto openAndClose = [&](int times) {
        for (int i = 0; i < times; ++i) {
            Open();
            RunCommand(*frame, ID_FILE_CLOSE);
            Settle();
        }
        return mallinfo2().uordblks;
    };
    const std::size_t before = openAndClose(20);
    EXPECT_LT(openAndClose(40), before + 40 * 2000);
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

TEST_F(WorkbenchTest, TheReadersGuessesAreShownAndCanBeChanged) {
    folder.Write("german.csv", "t;a;b\n1;2,5;7\n2;3,5;8\n3;4,5;9\n");
    std::vector<std::string> shown;
    const auto before = SetChoiceDialogHandler([&](CChoiceDialog& dialog) {
        for (const auto& choice : dialog.choices)
            shown.emplace_back(choice.options[static_cast<std::size_t>(choice.chosen)].GetString());
        EXPECT_EQ(dialog.preview.size(), 4u);
        EXPECT_STREQ(dialog.preview[1][1], "2,5");
        EXPECT_TRUE(dialog.items[1].ticked && dialog.items[2].ticked && !dialog.items[0].enabled);
        dialog.choices[7].chosen = 2;  // x is b
        dialog.choices[4].chosen = 1;  // no header
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
              (std::vector<std::string>{"guess: UTF-8", "guess: semicolon", "guess: comma", "no line",
                                        "guess: line 1", "guess, or type a form such as %d.%m.%Y %H:%M",
                                        "guess: UTC, or as the times say", "t"}));
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

}  // namespace
}  // namespace app
