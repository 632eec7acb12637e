// The sheet of a real view's settings, opened and filled in as a user does, and what the store holds then.
#include <QListWidget>

#include "pages/KPointSourceProperties.h"
#include "platform/dialog/CPropertyPage.h"
#include "platform/dialog/CPropertySheet.h"
#include "platform/window/CommonDialogs.h"
#include "settings/KDrawPropertyManager.h"
#include "tests/dialog/DialogFixture.h"
#include "tests/views/GraphViewTest.h"
#include "views/KConnectionLineManager.h"

namespace {

class ViewSettingsTest : public GraphViewTest, public DialogDriver {
  protected:
    using DialogDriver::Click;

    // Opens the sheet by the view's command and lets the user act in it.
    void Settings(const std::function<void(QDialog&)>& act) {
        WhileOpen([&] { EXPECT_TRUE(RunCommand(*view, CmdViewSettings)); }, act);
    }
    static void NextPage(QDialog& shown) { QTest::keyClick(&shown, Qt::Key_Tab, Qt::ControlModifier); }
    CString Stored(const char* name) { return application.GetProfileString("GraphViewTest", name, "none"); }
};

TEST_F(ViewSettingsTest, WhatEachPageSaysCountsAndIsSavedByItsName) {
    const auto colors = SetColorDialogHandler([](CColorDialog& dialog) {
        dialog.SetCurrentColor(0x112233);
        return IDOK;
    });
    view->zoom.Current().zoomX = 4;
    Settings([&](QDialog& shown) {
        Click(shown, 4061);
        Type(shown, 4049, "-2.5");
        Type(shown, 4044, "7");
        NextPage(shown);
        Click(shown, 4066);
        NextPage(shown);
        Type(shown, 4142, "5");
        Click(shown, 4201);
        Click(shown, IDOK);
    });
    SetColorDialogHandler(colors);
    EXPECT_EQ(view->axes.MinX, -2.5);
    EXPECT_EQ(view->axes.MaxX, 7.0);
    EXPECT_EQ(view->zoom.Current().zoomX, 1.0) << "another range is shown as a whole";
    EXPECT_EQ(view->colors.background, 0x112233u);
    EXPECT_EQ(view->tiledLayout.NumColumns, 5);
    EXPECT_NE(view->stale, 0);
    EXPECT_EQ(Stored("MinX"), "-2.50");
    EXPECT_EQ(Stored("MaxX"), "7.00");
    EXPECT_EQ(application.GetProfileInt("GraphViewTest", "XAutoScale", 9), 0u);
    EXPECT_EQ(application.GetProfileInt("GraphViewTest", "BackGround Color", 0), 0x112233u);
    EXPECT_EQ(application.GetProfileInt("GraphViewTest", "NumColumns", 0), 5u);
}

TEST_F(ViewSettingsTest, CancelLeavesTheViewAsItWasAndWritesNothing) {
    Settings([&](QDialog& shown) {
        Click(shown, 4065);
        NextPage(shown);
        NextPage(shown);
        Type(shown, 4012, "9");
        NextPage(shown);
        QTest::keyClick(&shown, Qt::Key_Escape);
    });
    EXPECT_EQ(view->axes.PositiveUp, 1);
    EXPECT_EQ(view->tiledLayout.NumRows, 2);
    EXPECT_EQ(Stored("MinX"), "none");
}

TEST_F(ViewSettingsTest, AnotherSeriesBecomesThePrimaryOne) {
    const auto other = Ramp("other");
    for (const UINT answer : {IDOK, IDCANCEL}) {
        view->RemoveSource(other.get());
        view->RemoveSource(series.get());
        view->AddSource(series.get(), true);
        view->AddSource(other.get(), true);
        Settings([&](QDialog& shown) {
            for (int page = 0; page < 3; ++page) NextPage(shown);
            Control<QListWidget>(shown, 4006).item(0)->setSelected(true);
            Click(shown, 4008);
            // Pages write when they are left.
            NextPage(shown);
            Click(shown, answer);
        });
        EXPECT_EQ(view->shownSources, (std::list<IPointSource*>{other.get()}));
        EXPECT_EQ(view->hiddenSources, (std::list<IPointSource*>{series.get()}));
        EXPECT_STREQ(view->GetViewName(), "other");
        EXPECT_EQ(view->dataHandler->GetPointSource(), other.get()) << answer;
    }
}

// A page of the host's, which may do anything.
class HostPage : public CPropertyPage {
  public:
    HostPage() : CPropertyPage(408u) {}
    std::function<void()> onShown;
    BOOL OnSetActive() override {
        if (onShown) onShown();
        return CPropertyPage::OnSetActive();
    }
};

TEST_F(ViewSettingsTest, TheSheetHasThePagesAskedForAndIsOpenOnce) {
    HostPage more;
    std::list<CPropertyPage*> pages{nullptr, &more};
    std::vector<std::string> captions;
    int second = -1;
    const ModalHandler before = SetModalHandler([&](ModalQuestion& question) -> std::optional<int> {
        auto* const sheet = dynamic_cast<CPropertySheet*>(&question);
        if (!sheet) return {};
        for (int i = 0; i < sheet->GetPageCount(); ++i)
            captions.emplace_back(sheet->GetPage(i)->Caption().GetString());
        second = view->EditViewSettings();
        return IDOK;
    });
    EXPECT_EQ(view->EditViewSettings(pages, "Settings", true), IDOK);
    SetModalHandler(before);
    EXPECT_EQ(captions.front(), "Axis");
    EXPECT_EQ(captions.back(), "Tiled Layout") << "the host's page stands last";
    EXPECT_EQ(second, IDCANCEL);
}

TEST_F(ViewSettingsTest, TheViewMayEndWhileItsSheetIsOpen) {
    HostPage more;
    more.onShown = [&] { view->GetParentFrame()->DestroyWindow(); };
    std::list<CPropertyPage*> pages{&more};
    WhileOpen([&] { EXPECT_EQ(view->EditViewSettings(pages, "Settings", false), IDCANCEL); },
              [](QDialog& shown) { QTest::keyClick(&shown, Qt::Key_PageUp, Qt::ControlModifier); });
}

TEST_F(ViewSettingsTest, ShownSeriesAndConnectionLinesComeBackWithTheView) {
    const auto a = Ramp("a");
    const auto b = Ramp("b");
    view->AddSource(a.get(), true);
    view->AddSource(b.get(), false);
    KConnectionLineManager::LineProperties lines(view->hiddenSources, view->shownSources);
    lines.lines.push_back(std::make_unique<KConnectionLine>(a.get(), b.get(), 0, 0, 0));
    lines.SaveToRegistry("GraphViewTest");
    KDrawPropertyManager::Instance().GetProperty("a").setColor(0x123456);
    view->SaveStdProperties();

    CDocument other;
    OpenGraphView* const again = OpenView(other, {b.get(), series.get(), a.get()}, "GraphViewTest");
    EXPECT_EQ(again->shownSources, (std::list<IPointSource*>{series.get(), a.get()}));
    EXPECT_EQ(again->hiddenSources, (std::list<IPointSource*>{b.get()}));
    EXPECT_EQ(again->GetColor(a.get()), 0x123456u);
    EXPECT_EQ(again->connectionLines->lines.size(), 1u);
    CViewUpdate hide(0, CViewUpdate::HideSource, a.get());
    again->OnUpdate(nullptr, 0, &hide);
    EXPECT_EQ(again->connectionLines->lines.size(), 1u) << "hidden, it is still the view's";
    again->RemoveSource(a.get());
    EXPECT_TRUE(again->connectionLines->lines.empty());
}

}  // namespace
