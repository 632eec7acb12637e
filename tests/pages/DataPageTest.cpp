// The pages that arrange a view's series and combine those of instruments, in a real sheet.
#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>

#include "pages/KDataAcqProperties.h"
#include "pages/KPointSourcePage.h"
#include "pages/TavinSheet.h"
#include "settings/ApplicationKey.h"
#include "settings/KDrawPropertyManager.h"
#include "settings/StoredNames.h"
#include "sources/KDataAcqSource.h"
#include "tests/dialog/DialogFixture.h"
#include "tests/pages/SeriesFixture.h"

namespace {

constexpr UINT kHidden = 4005, kShown = 4006, kRight = 4007, kLeft = 4008, kUp = 4009, kDown = 4010;
constexpr UINT kLoad = 4200;

std::string TextsOf(const QListWidget& list) {
    std::string texts;
    for (int i = 0; i < list.count(); ++i)
        texts += list.item(i)->text().toStdString() + (list.item(i)->isSelected() ? "* " : " ");
    return texts;
}

class DataPages : public DialogFixture {
  protected:
    DataPages() {
        application.SetRegistryKey("Maker");
        manager.Reset();
    }
    ~DataPages() override { manager.Reset(); }

    int ShowData(const std::function<void(QDialog&)>& act) {
        KPointSourcePage page("View", &set);
        TavinSheet sheet("Settings", place.main);
        sheet.AddPage(&page);
        const int result = Run(sheet, act);
        primaryChanged = page.primaryChanged;
        touched = page.GetPageTouched();
        return result;
    }
    static QListWidget& List(QDialog& shown, UINT id) { return Control<QListWidget>(shown, id); }
    static void Select(QDialog& shown, UINT id, const std::vector<int>& rows) {
        QListWidget& list = List(shown, id);
        list.clearSelection();
        for (const int row : rows)
            QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier,
                              list.visualItemRect(list.item(row)).center());
    }

    CWinApp application{"Viewer"};
    KDrawPropertyManager& manager = KDrawPropertyManager::Instance();
    std::unique_ptr<KPointSource> a = NewSeries("A"), b = NewSeries("B"), c = NewSeries("C"),
                                  d = NewSeries("D");
    std::list<IPointSource*> hidden, shownSeries;
    KDataAcqProperties set{hidden, shownSeries, &manager};
    Workplace place;
    bool primaryChanged = false;
    bool touched = false;
};

TEST_F(DataPages, SeriesMoveBetweenTheListsAndWithinTheShownOne) {
    struct Case {
        std::list<IPointSource*> hidden, shown;
        UINT list;
        std::vector<int> selected;
        UINT button;
        const char* hiddenThen;
        const char* shownThen;
        bool primaryChanges;
    };
    const Case cases[] = {
        {{a.get(), b.get(), c.get()}, {d.get()}, kHidden, {0, 2}, kRight, "B* ", "D C A ", false},
        {{}, {a.get(), b.get(), c.get()}, kShown, {2}, kLeft, "C ", "A B* ", false},
        {{}, {a.get(), b.get()}, kShown, {0, 1}, kLeft, "B A ", "", true},
        {{}, {a.get(), b.get(), c.get()}, kShown, {1, 2}, kUp, "", "B* C* A ", true},
        {{}, {a.get(), b.get(), c.get()}, kShown, {0, 2}, kUp, "", "A* B C* ", false},
        {{}, {a.get(), b.get(), c.get()}, kShown, {1, 2}, kDown, "", "A B* C* ", false},
        {{}, {a.get(), b.get(), c.get(), d.get()}, kShown, {0, 2}, kDown, "", "B A* D C* ", true},
        {{a.get()}, {b.get()}, kShown, {}, kLeft, "A ", "B ", false},
        {{a.get()}, {}, kHidden, {0}, kRight, "", "A ", true},
    };
    for (const Case& one : cases) {
        hidden = one.hidden;
        shownSeries = one.shown;
        const std::string label = NamesIn(hidden) + "| " + NamesIn(shownSeries);
        EXPECT_EQ(ShowData([&](QDialog& shown) {
                      Select(shown, one.list, one.selected);
                      Click(shown, one.button);
                      EXPECT_EQ(TextsOf(List(shown, kHidden)), one.hiddenThen) << label;
                      EXPECT_EQ(TextsOf(List(shown, kShown)), one.shownThen) << label;
                      EXPECT_EQ(NamesIn(shownSeries), NamesIn(one.shown)) << "not before the page is left";
                      Click(shown, IDOK);
                  }),
                  IDOK);
        EXPECT_EQ(primaryChanged, one.primaryChanges) << label;
        EXPECT_TRUE(touched) << label;
        std::string names = NamesIn(hidden);
        std::string expected = one.hiddenThen;
        std::erase(expected, '*');
        EXPECT_EQ(names, expected) << label;
        expected = one.shownThen;
        std::erase(expected, '*');
        EXPECT_EQ(NamesIn(shownSeries), expected) << label;
    }
}

TEST_F(DataPages, CancellingAndMovingThereAndBackChangeNothing) {
    shownSeries = {a.get(), b.get()};
    ShowData([&](QDialog& shown) {
        Select(shown, kShown, {0});
        Click(shown, kLeft);
        Click(shown, IDCANCEL);
    });
    EXPECT_EQ(NamesIn(shownSeries), "A B ");
    EXPECT_FALSE(primaryChanged);
    ShowData([&](QDialog& shown) {
        Select(shown, kShown, {0});
        Click(shown, kDown);
        Click(shown, kUp);
        Click(shown, IDOK);
    });
    EXPECT_EQ(NamesIn(shownSeries), "A B ");
    EXPECT_FALSE(primaryChanged);
}

TEST_F(DataPages, SeriesThatComeAndGoMeanwhileAreNeitherLostNorBroughtBack) {
    hidden = {a.get()};
    shownSeries = {b.get(), c.get()};
    ShowData([&](QDialog& shown) {
        shownSeries.remove(b.get());
        hidden.push_back(d.get());
        b.reset();
        shown.repaint();
        Select(shown, kShown, {0});
        Click(shown, 4140);
        Click(shown, 4138);
        Click(shown, kLeft);
        Click(shown, IDOK);
    });
    EXPECT_EQ(NamesIn(hidden), "A D ");
    EXPECT_EQ(NamesIn(shownSeries), "C ");
    EXPECT_TRUE(primaryChanged);
}

TEST_F(DataPages, LoadShowsWhatIsStored) {
    hidden = {c.get()};
    shownSeries = {a.get(), b.get()};
    settings::SaveNames(ShownKey("View"), {"C", "A"});
    ShowData([&](QDialog& shown) {
        Click(shown, kLoad);
        EXPECT_EQ(TextsOf(List(shown, kHidden)), "B ");
        EXPECT_EQ(TextsOf(List(shown, kShown)), "C A ");
        Click(shown, IDOK);
    });
    EXPECT_TRUE(primaryChanged);
    EXPECT_EQ(NamesIn(shownSeries), "C A ");
}

TEST_F(DataPages, SeveralSeriesAreDrawnAsTheFirstIsMade) {
    hidden = {d.get()};
    shownSeries = {a.get(), b.get(), c.get()};
    manager.GetProperty("B").setDrawStyle(0);
    manager.GetProperty("A").setColor(0x0000FF);
    ShowData([&](QDialog& shown) {
        Select(shown, kShown, {1, 2});
        // The sheet over the sheet, first cancelled.
        for (const UINT answer : {IDCANCEL, IDOK}) {
            QTimer::singleShot(0, [&] {
                auto* const lines = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                ASSERT_TRUE(lines);
                EXPECT_EQ(lines->windowTitle(), "Line properties");
                EXPECT_FALSE(FindControl(*lines, kLoad));
                EXPECT_TRUE(Control<QAbstractButton>(*lines, 4019).isChecked()) << "dots";
                // Their texts are shorter than they are wide.
                Control<QAbstractButton>(*lines, 4021).click();
                Control<QAbstractButton>(*lines, 4027).click();
                Click(*lines, answer);
            });
            Click(shown, 4138);
            EXPECT_EQ(manager.GetProperty("B").getDrawStyle(), answer == IDOK ? 2 : 0);
        }
        Click(shown, IDOK);
    });
    EXPECT_EQ(manager.GetProperty("B").getDotSize(), 4);
    EXPECT_EQ(manager.GetProperty("C").getDotSize(), 4);
    EXPECT_EQ(manager.GetProperty("A").getColor(), 0x0000FFu);
    EXPECT_NE(manager.GetProperty("A").getDotSize(), 4);
}

TEST_F(DataPages, ResetEmptiesALiveSeries) {
    COnlineSource live("live", 1, 1, 4, COnlineSource::Absolute);
    live.AddData(1.0, 2.0);
    shownSeries = {a.get(), &live};
    ShowData([&](QDialog& shown) {
        Click(shown, 4140);
        EXPECT_EQ(live.GetCount(), 1) << "nothing is selected";
        Select(shown, kShown, {1});
        Click(shown, 4140);
        EXPECT_EQ(live.GetCount(), 0);
        Click(shown, IDOK);
    });
}

TEST_F(DataPages, CalculationsOfAnInstrument) {
    KDataAcqSource gauge("Gauge", 1, 100, 8, COnlineSource::Absolute);
    gauge.setFixedOffsetY(0.1);
    gauge.Add(c.get());
    hidden = {c.get(), &gauge};
    shownSeries = {b.get(), a.get()};
    const auto edit = [&](const std::function<void(QDialog&)>& act) {
        bool acted = false;
        QTimer::singleShot(0, [&] {
            auto* const shown = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(shown);
            Control<QTabWidget>(*shown, AFX_IDC_TAB_CONTROL).setCurrentIndex(1);
            act(*shown);
            acted = true;
        });
        const int result = set.EditProperties(&gauge);
        EXPECT_TRUE(acted);
        return result;
    };
    EXPECT_EQ(edit([&](QDialog& shown) {
                  auto& candidates = Control<QComboBox>(shown, 4135);
                  EXPECT_EQ(candidates.count(), 3) << "not itself";
                  EXPECT_EQ(candidates.itemText(0), "A") << "sorted";
                  EXPECT_EQ(Control<QLabel>(shown, 4132).text(), "Gauge");
                  EXPECT_EQ(Control<QLineEdit>(shown, 4136).text(), "0.1");
                  candidates.setCurrentIndex(-1);
                  Click(shown, 4128);
                  EXPECT_EQ(TextsOf(List(shown, 4130)), "C ") << "nothing was chosen";
                  candidates.setCurrentIndex(0);
                  for (const UINT button : {4128, 4129, 4128}) Click(shown, button);
                  EXPECT_EQ(TextsOf(List(shown, 4130)), "A A C ");
                  Click(shown, 4134);
                  EXPECT_EQ(TextsOf(List(shown, 4131)), "") << "its own list only";
                  candidates.setCurrentIndex(1);
                  Click(shown, 4129);
                  Click(shown, 4127);
                  Type(shown, 4136, "-2.5");
                  Click(shown, IDOK);
              }),
              1);
    EXPECT_EQ(NamesIn(gauge.getAdd()), "A A C ");
    EXPECT_EQ(NamesIn(gauge.getSubtract()), "B ");
    EXPECT_TRUE(gauge.getInvertY());
    EXPECT_EQ(gauge.getFixedOffsetY(), -2.5);
    EXPECT_EQ(edit([&](QDialog& shown) {
                  Click(shown, 4133);
                  Click(shown, IDCANCEL);
              }),
              0);
    EXPECT_EQ(NamesIn(gauge.getAdd()), "A A C ");

    // One of them leaves while the sheet is open.
    EXPECT_EQ(edit([&](QDialog& shown) {
                  shownSeries.remove(a.get());
                  gauge.Remove(a.get());
                  a.reset();
                  auto& tabs = Control<QTabWidget>(shown, AFX_IDC_TAB_CONTROL);
                  tabs.setCurrentIndex(0);
                  tabs.setCurrentIndex(1);
                  Click(shown, IDOK);
              }),
              1);
    EXPECT_EQ(NamesIn(gauge.getAdd()), "C ");
}

TEST_F(DataPages, WithoutAManagerNothingIsEdited) {
    KPointSourceProperties unmanaged(hidden, shownSeries, nullptr);
    EXPECT_EQ(unmanaged.EditProperties(a.get()), 0);
    EXPECT_EQ(set.EditProperties(nullptr), 0);
}

TEST_F(DataPages, EachSeriesIsWrittenInItsColour) {
    manager.GetProperty("B").setColor(RGB(250, 10, 20));
    shownSeries = {a.get(), b.get()};
    ShowData([&](QDialog& shown) {
        const auto red = [&](int row) {
            QListWidget& list = List(shown, kShown);
            const QImage image = list.viewport()->grab(list.visualItemRect(list.item(row))).toImage();
            int count = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    count += image.pixelColor(x, y).red() > image.pixelColor(x, y).blue() + 60;
            return count;
        };
        EXPECT_EQ(red(0), 0);
        EXPECT_GT(red(1), 3);
        Select(shown, kShown, {1});
        EXPECT_EQ(red(1), 0) << "selected";
        Click(shown, IDCANCEL);
    });
}

}  // namespace
