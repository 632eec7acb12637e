#include "tests/app/WorkbenchTest.h"

#include <QClipboard>
#include <QImage>
#include <QtTest>
#include <cctype>
#include <set>

#include "app/workbench/CGraphFrame.h"
#include "app/workbench/RecentFiles.h"
#include "app/workbench/WorkbenchIds.h"

namespace app {

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

WorkbenchTest::WorkbenchTest() {
    folder.Write("days.csv", TenDays());
    application.SetRegistryKey("Tavin");
    boxes = SetMessageBoxHandler([this](const char* text, UINT) {
        messages.emplace_back(text);
        return IDOK;
    });
    Begin();
}

WorkbenchTest::~WorkbenchTest() {
    End();
    SetMessageBoxHandler(boxes);
}

void WorkbenchTest::Begin() {
    frame = new CWorkbenchFrame;
    application.m_pMainWnd = frame;
    ASSERT_TRUE(frame->CreateWorkbench());
    frame->ShowAsBefore();
}

void WorkbenchTest::End() {
    if (frame) frame->DestroyWindow();
    frame = nullptr;
    Settle();
}

CSeriesView& WorkbenchTest::Open() {
    frame->OpenFiles({folder.Path("days.csv")});
    Settle();
    EXPECT_NE(frame->ActiveSeriesView(), nullptr);
    return *frame->ActiveSeriesView();
}

void WorkbenchTest::Key(int key, int modifiers) {
    Press(frame->ActiveSeriesView()->GetSafeHwnd(), key, modifiers);
    Settle();
}

namespace {

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
    for (const int bar : {SB_HORZ, SB_VERT}) {
        SCROLLINFO info;
        ASSERT_TRUE(frame->ActiveSeriesView()->GetScrollInfo(bar, &info));
        EXPECT_NEAR(info.nPage / (info.nPage + double(info.nMax - info.nMin)), 0.5, 0.01) << bar;
    }
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

TEST_F(WorkbenchTest, SettingsKeptByTheNameOfTheFileAreTakenOverOnce) {
    const std::string now = "Views\\" + folder.Path("days.csv");
    const auto kept = [](const std::string& section) {
        return AfxGetApp()->GetProfileInt(section.c_str(), "Kept", 0);
    };
    application.WriteProfileInt("Views\\days.csv", "Kept", 7);
    application.WriteProfileInt("Views\\days.csv\\Below", "Kept", 8);
    Open();
    EXPECT_EQ(kept(now), 7u);
    EXPECT_EQ(kept(now + "\\Below"), 8u);
    application.WriteProfileInt(now.c_str(), "Kept", 9);
    End();
    Begin();
    Open();
    EXPECT_EQ(kept(now), 9u);
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
    EXPECT_GT(PrintPage().paper.cx, PrintPage().paper.cy) << "pages lie across";
    PageSetup page;
    page.margin.right = 700;
    SetPrintPage(page);
    End();
    SetPrintPage({});
    Begin();
    EXPECT_EQ(PrintPage().margin.right, 700);
    SetPrintPage({});
    frame->GetWindowPlacement(&placement);
    EXPECT_EQ(CRect(placement.rcNormalPosition), CRect(40, 50, 740, 550));
    EXPECT_EQ(RecentFiles().front(), folder.Path("days.csv"));
    EXPECT_NE(std::string(State(kRecentFirst).GetText()).find("days.csv"), std::string::npos);
    RunCommand(*frame, kRecentFirst);
    Settle();
    EXPECT_EQ(RecentFiles().size(), 1u) << "each file once";
    EXPECT_NE(State(kGrid).IsChecked(), grid);
    EXPECT_NE(State(kLegend).IsChecked(), legend);
    Key(Qt::Key_G);
    Key(Qt::Key_L);
}

}  // namespace
}  // namespace app
