// Dialogs made from templates: the real ones, driven through their widgets.
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

#include "platform/dialog/CDataExchange.h"
#include "platform/dialog/CListCtrl.h"
#include "platform/dialog/DialogResources.h"
#include "tests/dialog/DialogFixture.h"

namespace {

constexpr UINT kDialogId = 4000;
constexpr UINT kRows = 4001;
constexpr UINT kFactor = 4002;
constexpr UINT kName = 4003;
constexpr UINT kCheck = 4004;
constexpr UINT kChoice = 4005;
constexpr UINT kColumns = 4006;
constexpr UINT kApply = 4007;

constexpr ControlResource kControls[] = {
    {ControlKind::Group, 0, "Values", 2, 2, 150, 110},
    {ControlKind::Text, 0, "&Rows of the layout:", 7, 9, 40, 8},
    {ControlKind::Edit, kRows, "", 50, 7, 40, 14},
    {ControlKind::Edit, kFactor, "", 50, 25, 40, 14},
    {ControlKind::Edit, kName, "", 50, 43, 40, 14},
    {ControlKind::Check, kCheck, "&Together", 7, 60, 80, 10},
    {ControlKind::DropList, kChoice, "", 7, 75, 80, 60},
    {ControlKind::Columns, kColumns, "", 95, 7, 50, 60},
    {ControlKind::Button, kApply, "&Apply", 7, 92, 40, 14},
    {ControlKind::DefaultButton, IDOK, "OK", 50, 115, 40, 14},
    {ControlKind::Button, IDCANCEL, "Cancel", 95, 115, 40, 14},
};
constexpr DialogResource kDialog = {"Layout", 155, 132, kControls};

class LayoutDialog : public CDialog {
  public:
    explicit LayoutDialog(CWnd* parent) : CDialog(kDialogId, parent) {}

    int rows = 3, together = 1, choice = -1;
    double factor = 0.5;
    CString name = "a";
    int applied = 0;

    bool OnControlMsg(UINT id, UINT code) override {
        applied += id == kApply && code == BN_CLICKED;
        return CDialog::OnControlMsg(id, code);
    }

  protected:
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Text(exchange, kRows, rows);
        DDV_MinMaxInt(exchange, rows, 2, 20);
        DDX_Text(exchange, kFactor, factor);
        DDV_MinMaxDouble(exchange, factor, 0, 1);
        DDX_Text(exchange, kName, name);
        DDX_Check(exchange, kCheck, together);
        DDX_CBIndex(exchange, kChoice, choice);
    }
};

class DialogTest : public DialogFixture {
  protected:
    int Run(const std::function<void(QDialog&)>& act) { return DialogFixture::Run(dialog, act); }

    const DialogTable table{kDialogId, kDialog};
    Workplace place;
    LayoutDialog dialog{place.main};
};

TEST_F(DialogTest, ValuesGoToTheControlsAndBack) {
    const int result = Run([&](QDialog& shown) {
        EXPECT_EQ(shown.windowTitle(), "Layout");
        EXPECT_EQ(Control<QLineEdit>(shown, kRows).text(), "3");
        EXPECT_EQ(Control<QLineEdit>(shown, kFactor).text(), "0.5");
        EXPECT_TRUE(Control<QCheckBox>(shown, kCheck).isChecked());
        EXPECT_EQ(shown.focusWidget(), &Control<QLineEdit>(shown, kRows))
            << "the first that takes the keyboard";
        Control<QLineEdit>(shown, kRows).setText(" 20 ");
        Control<QLineEdit>(shown, kFactor).setText("1e-3");
        Control<QLineEdit>(shown, kName).setText("b");
        Control<QCheckBox>(shown, kCheck).click();
        Click(shown, kApply);
        Click(shown, IDOK);
    });
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(dialog.rows, 20);
    EXPECT_EQ(dialog.factor, 1e-3);
    EXPECT_EQ(dialog.name, "b");
    EXPECT_EQ(dialog.together, 0);
    EXPECT_EQ(dialog.applied, 1);
    EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
}

TEST_F(DialogTest, ARefusedValueIsExplainedAndItsControlHasTheKeyboard) {
    const struct {
        UINT id;
        const char* text;
        const char* why;
    } cases[] = {{kRows, "21", "Please enter an integer between 2 and 20."},
                 {kRows, "1", "Please enter an integer between 2 and 20."},
                 {kRows, "2.5", "Please enter an integer."},
                 {kFactor, "1.01", "Please enter a number between 0 and 1."},
                 {kFactor, "", "Please enter a number."},
                 {kRows, "1,500", "Please enter an integer."},
                 {kFactor, "0,5", "Please enter a number."},
                 {kFactor, "nan", "Please enter a number."}};
    const int result = Run([&](QDialog& shown) {
        for (const auto& one : cases) {
            auto& edit = Control<QLineEdit>(shown, one.id);
            const QString before = edit.text();
            edit.setText(one.text);
            Click(shown, IDOK);
            EXPECT_EQ(said, one.why);
            EXPECT_EQ(shown.focusWidget(), &edit);
            EXPECT_TRUE(shown.isVisible());
            edit.setText(before);
        }
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_EQ(dialog.rows, 3) << "nothing of a refused exchange but what came before it";
}

TEST_F(DialogTest, ControlsGrowSoThatNoTextIsCutAndNoneCoversAnother) {
    Run([&](QDialog& shown) {
        QList<QWidget*> widgets = shown.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        ASSERT_EQ(widgets.size(), 11);
        for (int i = 0; i < widgets.size(); ++i) {
            EXPECT_TRUE(shown.rect().contains(widgets[i]->geometry()));
            if (widgets[i]->inherits("QLabel") || widgets[i]->inherits("QAbstractButton")) {
                EXPECT_GE(widgets[i]->width(), widgets[i]->sizeHint().width()) << i;
            }
            for (int k = 0; k < i; ++k)
                if (!widgets[k]->inherits("QGroupBox") && !widgets[i]->inherits("QGroupBox")) {
                    EXPECT_FALSE(widgets[i]->geometry().intersects(widgets[k]->geometry())) << i << " " << k;
                }
        }
        CListCtrl list;
        ASSERT_TRUE(list.SubclassDlgItem(kColumns, &dialog));
        EXPECT_EQ(list.InsertColumn(0, "Key"), 0);
        EXPECT_EQ(list.InsertColumn(1, "Effect"), 1);
        EXPECT_EQ(list.InsertItem(0, "F"), 0);
        EXPECT_TRUE(list.SetItemText(0, 1, "all"));
        EXPECT_FALSE(list.SetItemText(1, 1, "no such row"));
        EXPECT_EQ(list.GetItemText(0, 1), "all");
        shown.close();
    });
}

TEST_F(DialogTest, ADialogEndsWithTheWindowAroundIt) {
    EXPECT_EQ(Run([&](QDialog&) {
                  place.main->DestroyWindow();
                  place.main = nullptr;
              }),
              IDCANCEL);
}

TEST_F(DialogTest, AHandlerAnswersInsteadOfTheUser) {
    int boxesAsked = 0;
    const ModalHandler before = SetModalHandler([&](ModalQuestion& question) -> std::optional<int> {
        if (auto* const asked = dynamic_cast<LayoutDialog*>(&question)) {
            asked->rows = 7;
            return IDOK;
        }
        boxesAsked += dynamic_cast<MessageBoxQuestion*>(&question) != nullptr;
        return {};
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.rows, 7);
    EXPECT_EQ(AfxMessageBox("left to the box's own handler"), IDOK);
    EXPECT_EQ(boxesAsked, 1);
    EXPECT_EQ(said, "left to the box's own handler");
    SetModalHandler(before);
    EXPECT_EQ(CDialog(1).DoModal(), IDCANCEL) << "no template";
}

}  // namespace
