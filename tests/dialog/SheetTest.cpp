// Sheets and their pages: the real ones, driven by keys and clicks.
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>

#include "pages/PageResources.h"
#include "pages/TavinPage.h"
#include "pages/TavinSheet.h"
#include "platform/dialog/CDataExchange.h"
#include "platform/dialog/CListBox.h"
#include "platform/registry/CWinApp.h"
#include "tests/dialog/DialogFixture.h"

namespace {

constexpr UINT kPageId = 4500;
constexpr UINT kCount = 4501;
constexpr UINT kLevel = 4502;
constexpr UINT kList = 4503;
constexpr UINT kPress = 4504;
constexpr UINT kLoad = 4200;
constexpr UINT kSave = 4201;

constexpr ControlResource kControls[] = {
    {ControlKind::Text, 0, "&Count:", 7, 9, 40, 8}, {ControlKind::Edit, kCount, "", 50, 7, 40, 14},
    {ControlKind::Text, 0, "Level:", 7, 27, 40, 8}, {ControlKind::Edit, kLevel, "", 50, 25, 40, 14},
    {ControlKind::List, kList, "", 100, 7, 40, 50}, {ControlKind::Button, kPress, "&Press", 7, 45, 40, 14},
};
constexpr DialogResource kDialog = {"Counting", 150, 70, kControls};

struct CountSet : TavinProp {
    int count = 3;
    double level = 0.5;
    virtual ~CountSet() = default;
    void SaveToRegistry(CString section) override { AfxGetApp()->WriteProfileInt(section, "Count", count); }
    void LoadFromRegistry(CString section) override {
        count = static_cast<int>(AfxGetApp()->GetProfileInt(section, "Count", count));
    }
};

// Shows a set; what happens to it is written down.
template <class Base>
class CountPageOn : public Base {
  public:
    template <class... Arguments>
    explicit CountPageOn(CountSet& shown, Arguments... arguments) : Base(arguments...), set(shown) {}

    CountSet& set;
    std::string log;
    bool mayShow = true;
    std::function<void()> onPress, onLeave;

    BOOL OnSetActive() override {
        log += "+";
        return Base::OnSetActive() && mayShow;
    }
    BOOL OnKillActive() override {
        log += "-";
        if (onLeave) onLeave();
        return Base::OnKillActive();
    }
    void OnOK() override { log += "ok"; }
    void OnCancel() override { log += "cancel"; }
    bool OnControlMsg(UINT id, UINT code) override {
        if (id == kPress && code == BN_CLICKED && onPress) onPress();
        return Base::OnControlMsg(id, code);
    }

  protected:
    BOOL OnInitDialog() override {
        CListBox list;
        list.SubclassDlgItem(kList, this);
        list.AddString("a");
        list.AddString("b");
        return Base::OnInitDialog();
    }
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Text(exchange, kCount, set.count);
        DDV_MinMaxInt(exchange, set.count, 2, 20);
        DDX_Text(exchange, kLevel, set.level);
    }
};
using PlainPage = CountPageOn<KPropertyPage>;
using SetPage = CountPageOn<TavinPage>;

class SheetTest : public DialogFixture {
  protected:
    SheetTest() {
        application.SetRegistryKey("Maker");
        sheet.AddPage(&plain);
        sheet.AddPage(&page);
    }
    int Run(const std::function<void(QDialog&)>& act) { return DialogFixture::Run(sheet, act); }
    static QTabWidget& Tabs(QDialog& shown) { return Control<QTabWidget>(shown, AFX_IDC_TAB_CONTROL); }
    static void ClickTab(QDialog& shown, int tab) {
        QTabBar* const bar = Tabs(shown).tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(tab).center());
    }
    static QLineEdit& Edit(CPropertyPage& of, UINT id) { return Control<QLineEdit>(*of.GetSafeHwnd(), id); }

    CWinApp application{"Host"};
    const DialogTable table{kPageId, kDialog};
    Workplace place;
    CountSet plainSet, set;
    PlainPage plain{plainSet, kPageId};
    SetPage page{set, "Counts", &set, false, kPageId, 0u};
    TavinSheet sheet{"Settings", place.main};
};

TEST_F(SheetTest, PagesAreShownOneByOneAndLeftWithTheirValues) {
    EXPECT_EQ(Run([&](QDialog& shown) {
                  EXPECT_EQ(shown.windowTitle(), "Settings");
                  EXPECT_EQ(Tabs(shown).tabText(0), "Counting");
                  EXPECT_EQ(shown.focusWidget(), &Edit(plain, kCount)) << "the page, not its tab";
                  QTest::keyClick(&shown, Qt::Key_Tab, Qt::ControlModifier);
                  EXPECT_TRUE(page.IsWindowVisible());
                  EXPECT_FALSE(plain.IsWindowVisible());
                  EXPECT_EQ(shown.focusWidget(), &Edit(page, kCount));
                  Type(*page.GetSafeHwnd(), kCount, "7");
                  ClickTab(shown, 0);
                  EXPECT_EQ(set.count, 7);
                  EXPECT_TRUE(plain.IsWindowVisible());
                  QTest::keyClick(&Edit(plain, kCount), Qt::Key_PageUp, Qt::ControlModifier);
                  EXPECT_EQ(sheet.GetActiveIndex(), 1) << "round";
                  QTest::keyClick(&Edit(page, kCount), Qt::Key_Return);
              }),
              IDOK);
    EXPECT_EQ(plain.log, "+-+-ok");
    EXPECT_EQ(page.log, "+-+-ok");
    EXPECT_FALSE(plain.GetPageTouched());
    EXPECT_TRUE(page.GetPageTouched());
    EXPECT_EQ(page.GetSafeHwnd(), nullptr);
}

TEST_F(SheetTest, APageThatRefusesStaysWithItsControl) {
    const std::function<void(QDialog&)> waysOut[] = {
        [](QDialog& shown) { ClickTab(shown, 1); },
        [](QDialog& shown) { Click(shown, IDOK); },
        [](QDialog& shown) { QTest::keyClick(&shown, Qt::Key_Tab, Qt::ControlModifier); },
    };
    EXPECT_EQ(Run([&](QDialog& shown) {
                  Type(*plain.GetSafeHwnd(), kCount, "21");
                  for (const auto& leave : waysOut) {
                      said.Empty();
                      whileAsked = [&] {
                          EXPECT_EQ(Tabs(shown).currentIndex(), 0);
                          EXPECT_TRUE(plain.IsWindowVisible());
                      };
                      Edit(plain, kLevel).setFocus();
                      leave(shown);
                      EXPECT_EQ(said, "Please enter an integer between 2 and 20.");
                      EXPECT_EQ(Tabs(shown).currentIndex(), 0);
                      EXPECT_EQ(shown.focusWidget(), &Edit(plain, kCount));
                  }
                  Type(*plain.GetSafeHwnd(), kCount, "20");
                  page.mayShow = false;
                  ClickTab(shown, 1);
                  EXPECT_TRUE(plain.IsWindowVisible()) << "the other cannot be shown";
                  QTest::keyClick(&shown, Qt::Key_Escape);
              }),
              IDCANCEL);
    EXPECT_NE(plain.log.find("cancel"), std::string::npos);
}

TEST_F(SheetTest, LoadAndSaveStandBesideOkAndServeTheSets) {
    set.count = 9;
    page.onLeave = [&] { page.set.level = 1.5; };
    EXPECT_EQ(Run([&](QDialog& shown) {
                  const QRect ok = FindControl(shown, IDOK)->geometry();
                  const int step = FindControl(shown, IDCANCEL)->x() - ok.x();
                  const QRect load = FindControl(shown, kLoad)->geometry();
                  EXPECT_EQ(load, QRect(Tabs(shown).x(), ok.y(), ok.width(), ok.height()));
                  EXPECT_EQ(FindControl(shown, kSave)->geometry(), load.translated(step, 0));
                  EXPECT_GE(ok.x(), load.x() + 2 * step) << "none covers another";
                  EXPECT_EQ(FindControl(shown, ID_APPLY_NOW), nullptr);
                  FindControl(shown, IDCANCEL)->setFocus();
                  QTest::keyClick(&shown, Qt::Key_Tab);
                  EXPECT_EQ(shown.focusWidget(), FindControl(shown, kLoad));

                  Click(shown, kSave);
                  EXPECT_EQ(AfxGetApp()->GetProfileInt("Counts", "Count", 0), 9u)
                      << "though it was never shown";
                  ClickTab(shown, 1);
                  Type(*page.GetSafeHwnd(), kCount, "12");
                  Type(*page.GetSafeHwnd(), kLevel, "2.5");
                  Click(shown, kLoad);
                  EXPECT_EQ(Edit(page, kCount).text(), "9") << "what was stored";
                  EXPECT_EQ(Edit(page, kLevel).text(), "2.5") << "what was typed went to the set first";
                  EXPECT_TRUE(page.GetPageTouched());
                  Click(shown, IDOK);
              }),
              IDOK);
    EXPECT_EQ(set.count, 9);
    EXPECT_EQ(plainSet.count, 3);
}

TEST_F(SheetTest, AWizardHasOneButtonThatFinishes) {
    CPropertySheet wizard("Smooth", place.main);
    SetPage alone{set, "Counts", &set, false, kPageId, 0u};
    wizard.SetWizardMode();
    wizard.AddPage(&alone);
    EXPECT_EQ(DialogFixture::Run(wizard,
                                 [&](QDialog& shown) {
                                     auto& finish = Control<QPushButton>(shown, ID_WIZFINISH);
                                     EXPECT_EQ(finish.text(), "Ok");
                                     EXPECT_EQ(FindControl(shown, IDOK), nullptr);
                                     EXPECT_EQ(wizard.GetTabControl(), nullptr);
                                     Type(shown, kCount, "1");
                                     finish.click();
                                     EXPECT_EQ(said, "Please enter an integer between 2 and 20.");
                                     Type(shown, kCount, "2");
                                     QTest::keyClick(&shown, Qt::Key_Return);
                                 }),
              12325);
    EXPECT_EQ(set.count, 2);
}

TEST_F(SheetTest, ApplyTakesWhatWasChangedAndLeavesTheSheetOpen) {
    sheet.m_psh.dwFlags &= ~PSH_NOAPPLYNOW;
    EXPECT_EQ(Run([&](QDialog& shown) {
                  auto& apply = Control<QPushButton>(shown, ID_APPLY_NOW);
                  EXPECT_FALSE(apply.isEnabled());
                  Control<QListWidget>(*plain.GetSafeHwnd(), kList).setCurrentRow(1);
                  EXPECT_FALSE(plain.GetPageTouched()) << "to choose is not to change";
                  Type(*plain.GetSafeHwnd(), kCount, "8");
                  EXPECT_TRUE(apply.isEnabled());
                  apply.click();
                  EXPECT_EQ(plainSet.count, 8);
                  EXPECT_EQ(plain.log, "+-ok+");
                  EXPECT_FALSE(apply.isEnabled());
                  QTest::keyClick(&shown, Qt::Key_Escape);
              }),
              IDCANCEL);
}

TEST_F(SheetTest, ItMayEndInItsOwnHandlersAndWithTheWindowAround) {
    const auto endAll = [&] {
        place.main->DestroyWindow();
        place.main = nullptr;
    };
    const struct {
        const char* name;
        std::function<void(QDialog&)> act;
    } cases[] = {
        {"a button of a page", [&](QDialog&) { Click(*plain.GetSafeHwnd(), kPress); }},
        {"a page being left", [&](QDialog& shown) { ClickTab(shown, 1); }},
        {"OK", [&](QDialog& shown) { Click(shown, IDOK); }},
        {"Load",
         [&](QDialog& shown) {
             plain.onLeave = {};
             ClickTab(shown, 1);
             Click(shown, kLoad);
         }},
        {"a message",
         [&](QDialog& shown) {
             whileAsked = endAll;
             plain.onLeave = {};
             Type(*plain.GetSafeHwnd(), kCount, "1");
             Click(shown, IDOK);
         }},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.name);
        Workplace own;
        std::swap(own.main, place.main);
        TavinSheet ending("Settings", place.main);
        plain.onPress = plain.onLeave = page.onLeave = endAll;
        sheet.RemovePage(&plain);
        sheet.RemovePage(&page);
        ending.AddPage(&plain);
        ending.AddPage(&page);
        EXPECT_EQ(DialogFixture::Run(ending, one.act), IDCANCEL);
        EXPECT_EQ(place.main, nullptr);
        EXPECT_EQ(plain.GetSafeHwnd(), nullptr);
        std::swap(own.main, place.main);
        whileAsked = {};
    }
}

TEST_F(SheetTest, PagesComeAndGoAndOneIsNeverInTwoSheets) {
    auto third = std::make_unique<PlainPage>(plainSet, kPageId);
    sheet.AddPage(third.get());
    TavinSheet other("Other", place.main);
    other.AddPage(&plain);
    EXPECT_EQ(other.GetPageCount(), 0);
    EXPECT_EQ(other.DoModal(), IDCANCEL) << "nothing to show";
    EXPECT_EQ(Run([&](QDialog& shown) {
                  EXPECT_EQ(sheet.DoModal(), IDCANCEL) << "open already";
                  ClickTab(shown, 2);
                  third.reset();
                  EXPECT_EQ(Tabs(shown).count(), 2);
                  EXPECT_TRUE(plain.IsWindowVisible());
                  Click(shown, IDOK);
              }),
              IDOK);
}

TEST_F(SheetTest, TheLibrarysTemplatesAreFoundBeforeTheHosts) {
    constexpr ControlResource kOwn[] = {{ControlKind::Edit, kCount, "", 7, 7, 40, 14},
                                        {ControlKind::Edit, kLevel, "", 7, 25, 40, 14}};
    const DialogResource ownDialog = {"Own", 60, 50, kOwn, TavinModule(), "OWN"};
    const DialogTable ownTable(kPageId, ownDialog);
    const DialogTable hosts(kPageId, kDialog);
    const char host = 0;
    AfxSetResourceHandle(&host);
    SetPage own{set, "", &set, true, kPageId, 0u};
    SetPage named{set, "", &set, true, "OWN", 0u};
    SetPage hostPage{set, "", &set, false, kPageId, 0u};
    SetPage missing{set, "", &set, true, "NO SUCH", 0u};
    const struct {
        SetPage& page;
        bool made, hasList;
    } cases[] = {{own, true, false}, {named, true, false}, {hostPage, true, true}, {missing, false, false}};
    for (const auto& one : cases) {
        const BOOL made =
            one.page.Create(nullptr, "", WS_CHILD | WS_VISIBLE, CRect(0, 0, 200, 100), place.view, 1);
        EXPECT_EQ(made != FALSE, one.made);
        EXPECT_EQ(one.page.GetDlgItem(kList) != nullptr, one.hasList);
        EXPECT_EQ(AfxGetResourceHandle(), &host);
    }
    AfxSetResourceHandle(nullptr);
}

TEST_F(SheetTest, NumbersReadBackAsTheyWereAndUnchangedTextsChangeNothing) {
    const struct {
        double level;
        const char* text;
    } cases[] = {{0.1, "0.1"},
                 {1.0 / 3.0, "0.3333333333333333"},
                 {1.2300000190734863, "1.23"},  // as it comes from the settings
                 {1234567.25, "1234567.25"},
                 {100000, "100000"},
                 {-5e-7, "-5e-07"}};
    for (const auto& one : cases) {
        set.level = one.level;
        sheet.SetActivePage(&page);
        Run([&](QDialog& shown) {
            EXPECT_EQ(Edit(page, kLevel).text(), one.text);
            Click(shown, IDOK);
        });
        EXPECT_EQ(set.level, one.level) << one.text;
    }
}

}  // namespace
