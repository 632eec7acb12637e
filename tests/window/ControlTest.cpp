// Controls of the toolkit in a window of the framework, and the objects that stand for them.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

#include "platform/window/Controls.h"
#include "tests/window/WindowTest.h"

namespace {

constexpr UINT kEdit = 4001;
constexpr UINT kCombo = 4002;
constexpr UINT kList = 4003;
constexpr UINT kButton = 4004;
constexpr UINT kCommand = 50003;

class Panel : public RecordingView {
  public:
    bool OnControlMsg(UINT id, UINT code) override {
        return RouteControl(*this, kControls, id, code) || RecordingView::OnControlMsg(id, code);
    }
    bool OnCmdMsg(UINT id, CCmdUI* update) override {
        if (id != kCommand) return RecordingView::OnCmdMsg(id, update);
        if (!update) log.push_back("command");
        return true;
    }

  private:
    static const ControlRow<Panel> kControls[5];

    void OnEdit() { log.push_back("edit"); }
    void OnLeft() { log.push_back("left"); }
    void OnChosen(UINT id) { log.push_back("chosen:" + std::to_string(id)); }
    void OnButton() { log.push_back("button"); }
};

const ControlRow<Panel> Panel::kControls[] = {
    {EN_CHANGE, kEdit, kEdit, &Panel::OnEdit},        {EN_KILLFOCUS, kEdit, kEdit, &Panel::OnLeft},
    {CBN_SELCHANGE, kCombo, kList, &Panel::OnChosen}, {LBN_DBLCLK, kList, kList, &Panel::OnChosen},
    {BN_CLICKED, kButton, kButton, &Panel::OnButton},
};

class FocusWatch : public CWnd {
  public:
    std::string seen;

  private:
    void OnSetFocus(CWnd*) override { seen += "+"; }
    void OnKillFocus(CWnd*) override { seen += "-"; }
};

class ControlTest : public WindowTest {
  protected:
    ControlTest() {
        MakeControl(edit, kEdit);
        MakeControl(combo, kCombo);
        MakeControl(list, kList);
        MakeControl(button, kButton);
        MakeControl(check, kCommand);
        combo.addItems({"one", "two"});
        list.addItems({"a", "b"});
        edit.show();
        button.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(place.main->GetSafeHwnd()));
        panel->TakeLog();
    }

    Panel* NewPanel() {
        auto* const made = new Panel;
        Assemble(place.main, new CMDIChildWnd, made);
        return made;
    }

    Workplace place;
    Panel* panel = NewPanel();
    // The panel takes them with it.
    template <class Widget>
    Widget& New() {
        return *new Widget(panel->GetSafeHwnd());
    }
    QLineEdit& edit = New<QLineEdit>();
    QComboBox& combo = New<QComboBox>();
    QListWidget& list = New<QListWidget>();
    QPushButton& button = New<QPushButton>();
    QCheckBox& check = New<QCheckBox>();
};

TEST_F(ControlTest, NotificationsReachTheTableOfTheWindowAround) {
    const struct {
        std::function<void()> act;
        std::string words;
    } cases[] = {
        {[this] { QTest::keyClick(&edit, Qt::Key_5); }, "edit"},
        {[this] { edit.setText("7"); }, ""},
        {[this] { emit combo.activated(1); }, "chosen:4002"},
        {[this] { list.setCurrentRow(1); }, "chosen:4003"},
        {[this] { emit list.itemDoubleClicked(list.item(0)); }, "chosen:4003"},
        {[this] { button.click(); }, "button"},
        {[this] { check.click(); }, "command"},
    };
    for (const auto& one : cases) {
        one.act();
        EXPECT_EQ(panel->TakeLog(), one.words);
    }
}

TEST_F(ControlTest, AnObjectStandsForAControlUntilEitherGoes) {
    CWnd* const standIn = panel->GetDlgItem(kEdit);
    ASSERT_NE(standIn, nullptr);
    EXPECT_EQ(panel->GetDlgItem(kEdit), standIn);
    EXPECT_EQ(panel->GetDlgItem(1), nullptr);
    EXPECT_EQ(standIn->GetDlgCtrlID(), static_cast<int>(kEdit));
    EXPECT_EQ(standIn->GetParent(), panel);
    standIn->SetWindowText("12.5");
    EXPECT_EQ(edit.text(), "12.5");
    edit.setText("8");
    CString text;
    standIn->GetWindowText(text);
    EXPECT_EQ(text, "8");
    EXPECT_FALSE(standIn->EnableWindow(FALSE));
    EXPECT_FALSE(edit.isEnabled());
    edit.setEnabled(true);
    FocusWatch watch;
    ASSERT_TRUE(watch.SubclassDlgItem(kEdit, panel));
    EXPECT_EQ(panel->GetDlgItem(kEdit), &watch);
    CWnd second;
    EXPECT_FALSE(second.SubclassDlgItem(kEdit, panel)) << "taken";
    EXPECT_FALSE(second.Attach(panel->GetSafeHwnd()));
    edit.setFocus();
    button.setFocus();
    EXPECT_EQ(watch.seen, "+-");
    EXPECT_EQ(panel->TakeLog(), "left");
    EXPECT_EQ(watch.Detach(), &edit);
    {
        CWnd shortLived;
        EXPECT_TRUE(shortLived.SubclassDlgItem(kEdit, panel));
    }
    EXPECT_TRUE(watch.SubclassDlgItem(kEdit, panel)) << "the control outlived its object";
    panel->GetParentFrame()->DestroyWindow();
    EXPECT_EQ(watch.GetSafeHwnd(), nullptr);
}

}  // namespace
