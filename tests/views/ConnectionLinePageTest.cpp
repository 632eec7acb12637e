// The page and the dialog of connection lines, in a real sheet.
#include <QComboBox>
#include <QListWidget>

#include "pages/TavinSheet.h"
#include "platform/window/CommonDialogs.h"
#include "tests/dialog/DialogFixture.h"
#include "tests/pages/SeriesFixture.h"
#include "views/KConnectionLineManager.h"
#include "views/KConnectionLinePage.h"

namespace {

using KConnectionLineManager::LineProperties;

constexpr UINT kList = 4112, kAdd = 4106, kEdit = 4122, kRemove = 4120;
constexpr UINT kFrom = 4109, kTo = 4110, kType = 4119, kStyle = 4118, kColor = 4116, kSwatch = 4117;

class ConnectionLinePages : public DialogFixture {
  protected:
    ConnectionLinePages() {
        application.SetRegistryKey("Maker");
        set.SetKey("View");
    }
    int Show(const std::function<void(QDialog&)>& act) {
        TavinSheet sheet("Settings", place.main);
        sheet.AddPage(&set.GetPage());
        return Run(sheet, act);
    }
    // Presses a button of the page, and does something in the dialog that it opens.
    void Press(QDialog& shown, UINT button, const std::function<void(QDialog&)>& act) {
        bool acted = false;
        QTimer::singleShot(0, [&] {
            acted = true;
            auto* const line = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (line && line != &shown) act(*line);
        });
        Click(shown, button);
        if (!acted) QApplication::processEvents();
    }
    void AddLine(QDialog& shown, int from, int to, int type = 0) {
        Press(shown, kAdd, [&](QDialog& line) {
            Choose(line, kFrom, from);
            Choose(line, kTo, to);
            Choose(line, kType, type);
            Click(line, IDOK);
        });
    }
    static void Choose(QDialog& shown, UINT id, int entry) {
        Control<QComboBox>(shown, id).setCurrentIndex(entry);
    }
    static void Select(QDialog& shown, const std::vector<int>& rows) {
        auto& list = Control<QListWidget>(shown, kList);
        list.clearSelection();
        for (const int row : rows) list.item(row)->setSelected(true);
    }
    static std::string Listed(QDialog& shown) {
        std::string names;
        auto& list = Control<QListWidget>(shown, kList);
        for (int i = 0; i < list.count(); ++i) names += list.item(i)->text().toStdString() + "\n";
        return names;
    }
    std::string Names() const {
        std::string names;
        for (const auto& line : set.lines) names += std::string(line->GetDisplayName()) + "\n";
        return names;
    }
    void Put(IPointSource* from, IPointSource* to, int type = 0) {
        set.lines.push_back(std::make_unique<KConnectionLine>(from, to, type, 0, 0));
    }

    CWinApp application{"Viewer"};
    std::unique_ptr<KPointSource> a = NewSeries("A"), b = NewSeries("B"), c = NewSeries("C");
    std::list<IPointSource*> hidden{c.get()}, series{a.get(), b.get()};
    LineProperties set{hidden, series};
    Workplace place;
};

TEST_F(ConnectionLinePages, AddedLinesAreTheViewsOnceThePageIsLeft) {
    EXPECT_EQ(Show([&](QDialog& shown) {
                  Press(shown, kAdd, [&](QDialog& line) {
                      EXPECT_EQ(Control<QComboBox>(line, kFrom).count(), 3);
                      EXPECT_EQ(Control<QComboBox>(line, kFrom).itemText(0), "C") << "hidden series first";
                      EXPECT_EQ(Control<QComboBox>(line, kStyle).itemText(2),
                                "_  _  _  _  _  _  _  _  _  _  _  _");
                      Click(line, IDOK);
                      EXPECT_EQ(said, "Please Select \"From\"");
                      Choose(line, kFrom, 1);
                      Click(line, IDOK);
                      EXPECT_EQ(said, "Please Select \"To\"");
                      EXPECT_EQ(line.focusWidget(), FindControl(line, kTo));
                      Choose(line, kTo, 2);
                      Choose(line, kType, 1);
                      Choose(line, kStyle, 3);
                      Click(line, IDOK);
                  });
                  EXPECT_EQ(Listed(shown), "A - B (Projected)\n");
                  EXPECT_TRUE(set.lines.empty()) << "it waits";
                  said.Empty();
                  AddLine(shown, 1, 2, 1);
                  EXPECT_EQ(said, "Line already exists.");
                  AddLine(shown, 2, 1, 1);
                  EXPECT_EQ(Listed(shown), "A - B (Projected)\nB - A (Projected)\n");
                  // One that waits may be removed again.
                  Select(shown, {1});
                  Click(shown, kRemove);
                  Click(shown, IDOK);
              }),
              IDOK);
    EXPECT_EQ(Names(), "A - B (Projected)\n");
    EXPECT_EQ(set.lines.front()->style, 3);
    EXPECT_TRUE(set.GetPage().added.empty()) << "owned once";
}

TEST_F(ConnectionLinePages, CancelDropsWhatWaits) {
    Put(a.get(), b.get());
    for (int time = 0; time < 2; ++time) {
        Show([&](QDialog& shown) {
            EXPECT_EQ(Listed(shown), "A - B (Last to last)\n");
            AddLine(shown, 0, 1);
            Select(shown, {0});
            Click(shown, kRemove);
            Click(shown, IDCANCEL);
        });
        EXPECT_EQ(Names(), "A - B (Last to last)\n");
        EXPECT_TRUE(set.GetPage().added.empty());
        EXPECT_TRUE(set.GetPage().removed.empty());
    }
}

TEST_F(ConnectionLinePages, SeveralLinesAreEditedWithoutTheirSeries) {
    Put(a.get(), b.get());
    Put(b.get(), a.get());
    Put(a.get(), c.get());
    const auto before = SetColorDialogHandler([](CColorDialog& dialog) {
        dialog.SetCurrentColor(RGB(1, 2, 3));
        return IDOK;
    });
    Show([&](QDialog& shown) {
        Press(shown, kEdit, [](QDialog&) { ADD_FAILURE() << "nothing is selected"; });
        Select(shown, {0, 2});
        Press(shown, kEdit, [&](QDialog& line) {
            EXPECT_FALSE(FindControl(line, kFrom)->isEnabled());
            Choose(line, kType, 1);
            Choose(line, kStyle, 4);
            Click(line, kColor);
            EXPECT_EQ(FindControl(line, kSwatch)->grab().toImage().pixelColor(20, 8), QColor(1, 2, 3));
            Click(line, IDOK);
        });
        EXPECT_EQ(Listed(shown), "A - B (Projected)\nB - A (Last to last)\nA - C (Projected)\n");
        Select(shown, {1});
        Press(shown, kEdit, [&](QDialog& line) {
            EXPECT_EQ(Control<QComboBox>(line, kFrom).currentText(), "B");
            Choose(line, kTo, 0);
            Click(line, IDOK);
        });
        Click(shown, IDOK);
    });
    SetColorDialogHandler(before);
    EXPECT_EQ(Names(), "A - B (Projected)\nB - C (Last to last)\nA - C (Projected)\n");
    EXPECT_EQ(set.lines.front()->color, RGB(1, 2, 3));
    EXPECT_EQ(set.lines.back()->style, 4);
}

TEST_F(ConnectionLinePages, LoadPutsTheStoredLinesInThePlaceOfAll) {
    Put(a.get(), b.get());
    Show([&](QDialog& shown) {
        Click(shown, 4200);
        EXPECT_EQ(Listed(shown), "A - B (Last to last)\n") << "nothing is stored";
        Click(shown, 4201);
        AddLine(shown, 0, 1);
        Click(shown, 4200);
        EXPECT_EQ(Listed(shown), "A - B (Last to last)\n");
        Click(shown, IDOK);
    });
    EXPECT_EQ(Names(), "A - B (Last to last)\n");
}

TEST_F(ConnectionLinePages, ASeriesThatLeavesTakesItsLinesAlong) {
    Put(a.get(), b.get());
    Put(a.get(), c.get());
    const auto leave = [&](std::unique_ptr<KPointSource>& gone) {
        series.remove(gone.get());
        hidden.remove(gone.get());
        set.RemoveSource(gone.get());
        gone.reset();
    };
    Show([&](QDialog& shown) {
        AddLine(shown, 0, 2);
        Select(shown, {0});
        Click(shown, kRemove);
        leave(b);
        EXPECT_EQ(Listed(shown), "A - C (Last to last)\n");
        Press(shown, kAdd, [&](QDialog& line) {
            Choose(line, kFrom, 0);
            Choose(line, kTo, 1);
            leave(c);
            Click(line, IDOK);
        });
        EXPECT_EQ(Listed(shown), "");
        Click(shown, IDOK);
    });
    EXPECT_EQ(Names(), "");
}

}  // namespace
