#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QtTest>

#include "platform/window/CDocument.h"
#include "platform/window/CMenu.h"
#include "platform/window/CToolBar.h"
#include "platform/window/CWindowApp.h"
#include "platform/window/CommandIds.h"
#include "platform/window/CommandResources.h"
#include "tests/window/WindowTest.h"

namespace {

constexpr UINT kSettings = 50029;
constexpr UINT kLegend = 50022;
constexpr UINT kRecent = 61000;
constexpr UINT kMenu = 128;

constexpr CommandResource kTexts[] = {
    {kSettings, "&Settings\tCtrl+E", "Changes how the view looks", "gear"},
    {kLegend, "&Legend"},
    {kRecent, "Recent file"},
};
constexpr MenuResource kRows[] = {
    MenuPopup("&View"),          MenuItem(kSettings), MenuSeparator(),
    MenuPopup("&More"),          MenuItem(kLegend),   MenuEnd(),
    MenuItem(kRecent),           MenuEnd(),           MenuPopup("&Window"),
    MenuItem(ID_WINDOW_CASCADE), MenuWindowList(),    MenuEnd(),
};
constexpr UINT kButtons[] = {kSettings, 0, kLegend};
constexpr IconResource kIcons[] = {{"gear", "O 8 8 3 M 8 1 L 8 4 Z F 8 8 1 rubbish"}};

// Answers the commands that the test gives it, and says who it is.
template <class Base>
class Answering : public Base {
  public:
    bool OnCmdMsg(UINT id, CCmdUI* update) override {
        asked->push_back(name);
        if (id == answers) {
            if (!update) ran->push_back(name);
            return true;
        }
        return Base::OnCmdMsg(id, update);
    }
    std::string name;
    UINT answers = 0;
    std::vector<std::string>* asked = nullptr;
    std::vector<std::string>* ran = nullptr;
};

TEST_F(WindowTest, ACommandGoesFromTheViewToTheApplicationUntilSomebodyAnswers) {
    std::vector<std::string> asked, ran;
    Answering<CWindowApp> app;
    auto* main = new Answering<CMDIFrameWnd>;
    auto* child = new Answering<CMDIChildWnd>;
    Answering<CDocument> document;
    auto* view = new Answering<RecordingView>;
    const auto introduce = [&](auto& one, const char* name, UINT answers) {
        one.name = name;
        one.answers = answers;
        one.asked = &asked;
        one.ran = &ran;
    };
    introduce(*view, "view", 1);
    introduce(document, "document", 2);
    introduce(*child, "child", 3);
    introduce(*main, "main", 4);
    introduce(app, "app", 5);
    CCreateContext context{nullptr, &document};
    main->LoadFrame(0);
    app.m_pMainWnd = main;
    EXPECT_EQ(AfxGetMainWnd(), main);
    main->ActivateFrame();
    Assemble(main, child, view, context);
    const char* const answered[] = {"view", "document", "child", "main", "app"};
    for (UINT id = 1; id <= 5; ++id) {
        ran.clear();
        EXPECT_TRUE(RunCommand(*main, id));
        EXPECT_EQ(ran, std::vector<std::string>{answered[id - 1]});
    }
    asked.clear();
    EXPECT_FALSE(RunCommand(*main, 6));
    EXPECT_EQ(asked, (std::vector<std::string>{"main", "child", "view", "document", "app"}));
    EXPECT_FALSE(QueryCommand(*main, 6).IsEnabled());
    main->DestroyWindow();
    EXPECT_EQ(AfxGetMainWnd(), nullptr);
}

class CommandView : public RecordingView {
  public:
    bool OnCmdMsg(UINT id, CCmdUI* update) override {
        return RouteCommand(*this, kCommands, id, update) || RecordingView::OnCmdMsg(id, update);
    }
    bool allowed = false;
    bool legend = false;
    const char* recent = "";
    int settings = 0;
    UINT ranged = 0;

    static const CommandRow<CommandView> kCommands[4];

  private:
    void OnSettings() { ++settings; }
    void OnUpdateSettings(CCmdUI* state) { state->Enable(allowed); }
    void OnLegend() { legend = !legend; }
    void OnUpdateLegend(CCmdUI* state) { state->SetCheck(legend); }
    void OnRecent(UINT id) { ranged = id; }
    void OnUpdateRecent(CCmdUI* state) { state->SetText(recent); }
};

const CommandRow<CommandView> CommandView::kCommands[] = {
    {kSettings, kSettings, &CommandView::OnSettings, &CommandView::OnUpdateSettings},
    {kLegend, kLegend, &CommandView::OnLegend, &CommandView::OnUpdateLegend},
    {kRecent, kRecent + 3, &CommandView::OnRecent, &CommandView::OnUpdateRecent},
    {50000, 50005, &CommandView::OnRecent},
};

class MenuTest : public WindowTest {
  protected:
    MenuTest() {
        main->LoadFrame(kMenu);
        main->MoveWindow(0, 0, 800, 600);
        main->ActivateFrame();
        auto* child = new CMDIChildWnd;
        Assemble(main, child, view);
        child->SetWindowText("Run & rest");
        EXPECT_TRUE(QTest::qWaitForWindowActive(main->GetSafeHwnd()));
    }
    ~MenuTest() override { main->DestroyWindow(); }

    QMenu* Open(int popup) const {
        QMenuBar* bar = main->GetSafeHwnd()->findChild<QMenuBar*>();
        QMenu* menu = bar->actions().at(popup)->menu();
        menu->popup(main->GetSafeHwnd()->mapToGlobal(QPoint(10, 40)));
        return menu;
    }

    const CommandTable texts{kTexts};
    const MenuTable menus{kMenu, kRows};
    const ToolBarTable bars{kMenu, kButtons};
    const IconTable icons{kIcons};
    CMDIFrameWnd* main = new CMDIFrameWnd;
    CommandView* view = new CommandView;
};

TEST_F(MenuTest, ADisabledCommandIgnoresItsShortcutAndAnEnabledOneHearsItAtOnce) {
    Press(view->GetSafeHwnd(), Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(view->settings, 0);
    // No menu opened and nothing idle in between: the state must be asked for when the key is pressed.
    view->allowed = true;
    Press(view->GetSafeHwnd(), Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(view->settings, 1);
    view->allowed = false;
    Press(view->GetSafeHwnd(), Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(view->settings, 1);
}

TEST_F(MenuTest, MenusShowWhatTheHandlersSayWhenTheyOpen) {
    QMenu* menu = Open(0);
    ASSERT_EQ(menu->actions().size(), 4);
    QAction* settings = menu->actions().at(0);
    QAction* recent = menu->actions().at(3);
    EXPECT_EQ(settings->text(), "&Settings");
    EXPECT_EQ(settings->shortcut(), QKeySequence("Ctrl+E"));
    EXPECT_EQ(settings->statusTip(), "Changes how the view looks");
    EXPECT_FALSE(settings->isEnabled());
    EXPECT_FALSE(recent->isVisible()) << "an empty text hides the command";
    menu->close();
    view->allowed = view->legend = true;
    view->recent = "&1 run.csv";
    Open(0)->close();
    EXPECT_TRUE(settings->isEnabled());
    EXPECT_TRUE(recent->isVisible());
    EXPECT_EQ(recent->text(), "&1 run.csv");
    QMenu* more = menu->actions().at(2)->menu();
    ASSERT_TRUE(more);
    more->popup({0, 0});
    QAction* legend = more->actions().at(0);
    EXPECT_TRUE(legend->isChecked());
    legend->trigger();
    EXPECT_FALSE(view->legend);
    EXPECT_FALSE(legend->isChecked());
    more->close();
    recent->trigger();
    EXPECT_EQ(view->ranged, kRecent);
    QMenu* windows = Open(1);
    EXPECT_EQ(windows->actions().at(1)->text(), "&1 Run && rest");
    EXPECT_TRUE(windows->actions().at(1)->isChecked()) << "the active one";
    windows->close();
}

TEST_F(MenuTest, AToolbarSharesItsCommandsWithTheMenu) {
    CToolBar bar;
    EXPECT_FALSE(bar.LoadToolBar(kMenu)) << "not created yet";
    ASSERT_TRUE(bar.Create(main, "Tools"));
    EXPECT_FALSE(bar.LoadToolBar(kMenu + 1));
    ASSERT_TRUE(bar.LoadToolBar(kMenu));
    auto* native = qobject_cast<QToolBar*>(bar.GetSafeHwnd());
    ASSERT_EQ(native->actions().size(), 3);
    EXPECT_FALSE(native->actions().at(0)->icon().isNull());
    EXPECT_EQ(native->actions().at(0)->toolTip(), "Changes how the view looks (Ctrl+E)");
    EXPECT_EQ(native->accessibleName(), "Tools");
    view->allowed = true;
    main->UpdateCommands();
    auto* button = qobject_cast<QToolButton*>(native->widgetForAction(native->actions().at(0)));
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(view->settings, 1);
    Press(view->GetSafeHwnd(), Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(view->settings, 2) << "two actions with one shortcut would leave it without effect";
    EXPECT_TRUE(bar.IsWindowVisible());
    EXPECT_TRUE(RunCommand(*main, ID_VIEW_TOOLBAR));
    EXPECT_FALSE(bar.IsWindowVisible());
    EXPECT_FALSE(QueryCommand(*main, ID_VIEW_TOOLBAR).IsChecked());
    EXPECT_FALSE(QueryCommand(*main, ID_VIEW_STATUS_BAR).IsEnabled()) << "there is none";
}

TEST_F(MenuTest, AContextMenuSendsItsChoiceToTheMainFrame) {
    CMenu menu;
    EXPECT_FALSE(menu.LoadMenu(kMenu + 1));
    ASSERT_TRUE(menu.LoadMenu(kMenu));
    EXPECT_EQ(menu.GetSubMenu(2), nullptr);
    CMenu* popup = menu.GetSubMenu(0);
    ASSERT_NE(popup, nullptr);
    EXPECT_EQ(popup->GetSubMenu(0), nullptr) << "a command";
    EXPECT_NE(popup->GetSubMenu(2), nullptr);
    EXPECT_FALSE(popup->TrackPopupMenu(TPM_RIGHTBUTTON, 0, 0, nullptr));
    view->allowed = true;
    QTimer::singleShot(0, [] {
        auto* shown = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(shown);
        EXPECT_TRUE(shown->actions().at(0)->isEnabled());
        QTest::keyClick(shown, Qt::Key_Down);
        QTest::keyClick(shown, Qt::Key_Return);
    });
    EXPECT_TRUE(popup->TrackPopupMenu(TPM_RIGHTBUTTON, 100, 100, main));
    EXPECT_EQ(view->settings, 1);
}

}  // namespace
