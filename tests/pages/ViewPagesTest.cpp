// The pages of the view's sets, in a real sheet; and what every page owes its template.
#include <QAbstractButton>
#include <QButtonGroup>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

#include "pages/CAxisPage.h"
#include "pages/CColorPage.h"
#include "pages/CStylePage.h"
#include "pages/CTiledLayoutPage.h"
#include "pages/TavinSheet.h"
#include "platform/dialog/DialogResources.h"
#include "platform/registry/CWinApp.h"
#include "platform/window/CommonDialogs.h"
#include "settings/CAxisProperties.h"
#include "settings/CColorProperties.h"
#include "settings/CTiledLayoutProperties.h"
#include "tests/dialog/DialogFixture.h"

namespace {

class ViewPagesTest : public DialogFixture {
  protected:
    ViewPagesTest() { application.SetRegistryKey("Maker"); }

    // The page alone in a sheet.
    int Run(CPropertyPage& page, const std::function<void(QDialog&)>& act) {
        TavinSheet sheet("Settings", place.main);
        sheet.AddPage(&page);
        return DialogFixture::Run(sheet, act);
    }
    static QString TextOf(QDialog& shown, UINT id) { return Control<QLineEdit>(shown, id).text(); }

    CWinApp application{"Host"};
    Workplace place;
};

// Another state for the control; false where it shows only.
bool Change(QWidget& control, int turn) {
    if (auto* const edit = qobject_cast<QLineEdit*>(&control)) {
        if (!edit->isReadOnly()) edit->setText(QString::number(2 + turn));
        return !edit->isReadOnly();
    }
    if (auto* const combo = qobject_cast<QComboBox*>(&control)) combo->setCurrentIndex(turn % combo->count());
    auto* const button = qobject_cast<QAbstractButton*>(&control);
    if (button && button->isCheckable()) button->group() ? button->setChecked(true) : button->toggle();
    return qobject_cast<QComboBox*>(&control) || (button && button->isCheckable());
}

std::string StateOf(QWidget& control) {
    if (auto* const edit = qobject_cast<QLineEdit*>(&control)) return edit->text().toStdString();
    if (auto* const combo = qobject_cast<QComboBox*>(&control)) return combo->currentText().toStdString();
    auto* const button = qobject_cast<QAbstractButton*>(&control);
    return button && button->isChecked() ? "pressed" : "";
}

// A control that no row of a page names would forget what the user did.
TEST_F(ViewPagesTest, EveryControlKeepsWhatTheUserDid) {
    CAxisProperties axes;
    CTiledLayoutProperties tiles;
    CAxisPage axisPage("View", &axes);
    CStylePage stylePage("View", nullptr);
    CTiledLayoutPage tilePage("View", &tiles);
    const struct {
        UINT id;
        CPropertyPage& page;
    } cases[] = {{400, axisPage}, {402, stylePage}, {408, tilePage}};
    for (const auto& one : cases) {
        const DialogResource* const resource = FindDialogResource(one.id);
        ASSERT_TRUE(resource);
        Run(one.page, [&](QDialog& shown) {
            int turn = 0;
            std::set<UINT> seen;
            for (const ControlResource& row : resource->controls) {
                if (row.id == 0) continue;
                EXPECT_TRUE(seen.insert(row.id).second) << row.id << " is there twice";
                QWidget& control = *FindControl(*one.page.GetSafeHwnd(), row.id);
                if (!Change(control, ++turn)) continue;
                const std::string state = StateOf(control);
                EXPECT_TRUE(one.page.OnKillActive()) << row.id << said.GetString();
                EXPECT_TRUE(one.page.OnSetActive());
                EXPECT_EQ(StateOf(control), state) << one.id << " " << row.id;
            }
            Click(shown, IDCANCEL);
        });
    }
}

TEST_F(ViewPagesTest, AnAxisNeedsARangeUnlessItFindsItByItself) {
    CAxisProperties axes;
    axes.UnitX = "min";
    CAxisPage page("View", &axes);
    Run(page, [&](QDialog& shown) {
        EXPECT_TRUE(Control<QLineEdit>(shown, 4039).isReadOnly());
        EXPECT_EQ(TextOf(shown, 4039), "min");
        EXPECT_FALSE(FindControl(shown, 4049)->isEnabled());
        EXPECT_FALSE(FindControl(shown, 4044)->isEnabled());
        Click(shown, 4061);
        EXPECT_TRUE(FindControl(shown, 4049)->isEnabled());
        EXPECT_FALSE(FindControl(shown, 4051)->isEnabled()) << "the other axis";
        Type(shown, 4049, "5");
        Type(shown, 4044, "5");
        Click(shown, IDOK);
        EXPECT_EQ(said, "max value must be greater than min value");
        EXPECT_TRUE(shown.isVisible());
        EXPECT_EQ(axes.MinX, -1.0);
        EXPECT_EQ(axes.MaxX, 1.0);
        Click(shown, 4061);
        Click(shown, IDOK);
    });
    EXPECT_EQ(axes.MinX, 5.0) << "both are taken while they do not count";
    EXPECT_EQ(axes.MaxX, 5.0);
    EXPECT_EQ(axes.XAutoScale, 1);
}

TEST_F(ViewPagesTest, TilesStayWithinTheirLimits) {
    CTiledLayoutProperties tiles;
    CTiledLayoutPage page("View", &tiles);
    const struct {
        UINT id;
        const char *refused, *taken, *why;
    } cases[] = {{4142, "1", "2", "Please enter an integer between 2 and 20."},
                 {4012, "21", "20", "Please enter an integer between 2 and 20."},
                 {4013, "101", "100", "Please enter an integer between 1 and 100."}};
    Run(page, [&](QDialog& shown) {
        for (const auto& one : cases) {
            Type(shown, one.id, one.refused);
            said.Empty();
            Click(shown, IDOK);
            EXPECT_EQ(said, one.why);
            EXPECT_EQ(shown.focusWidget(), FindControl(shown, one.id));
            EXPECT_TRUE(tiles.NumColumns >= 2 && tiles.NumRows <= 20 && tiles.NumSourcesPerTile <= 100);
            Type(shown, one.id, one.taken);
        }
        Click(shown, IDOK);
    });
    EXPECT_EQ(tiles.NumColumns, 2);
    EXPECT_EQ(tiles.NumRows, 20);
    EXPECT_EQ(tiles.NumSourcesPerTile, 100);
}

TEST_F(ViewPagesTest, SwatchesShowTheColoursThatAreChosen) {
    CColorProperties colors;
    CColorPage page("View", &colors);
    const struct {
        UINT button, swatch;
        COLORREF CColorProperties::*color;
    } rows[] = {{4060, 4025, &CColorProperties::axis},     {4066, 4028, &CColorProperties::background},
                {4068, 4030, &CColorProperties::grid},     {4069, 4031, &CColorProperties::dots},
                {4070, 4037, &CColorProperties::modified}, {4071, 4038, &CColorProperties::region}};
    int answer = IDOK;
    COLORREF asked = 0;
    COLORREF chosen = 0x102030;
    const auto before = SetColorDialogHandler([&](CColorDialog& dialog) {
        asked = dialog.GetColor();
        dialog.SetCurrentColor(chosen);
        return answer;
    });
    Run(page, [&](QDialog& shown) {
        for (const auto& row : rows) {
            const COLORREF was = colors.*row.color;
            chosen += 0x050505;
            answer = IDCANCEL;
            Click(shown, row.button);
            EXPECT_EQ(asked, was) << row.button;
            EXPECT_EQ(colors.*row.color, was);
            answer = IDOK;
            Click(shown, row.button);
            EXPECT_EQ(colors.*row.color, chosen);
            QWidget* const swatch = FindControl(shown, row.swatch);
            const QColor shownColor = swatch->grab().toImage().pixelColor(swatch->rect().center());
            EXPECT_EQ(RGB(shownColor.red(), shownColor.green(), shownColor.blue()), chosen) << row.swatch;
        }
        EXPECT_TRUE(page.GetPageTouched());
        Click(shown, IDOK);
    });
    SetColorDialogHandler(before);
}

TEST_F(ViewPagesTest, AStyleThatTheListDoesNotHaveStays) {
    CStylePage page("", nullptr);
    page.drawStyle = 1;
    page.dotSize = 4;
    page.lineStyle = 7;
    Run(page, [&](QDialog& shown) {
        EXPECT_TRUE(Control<QAbstractButton>(shown, 4020).isChecked());
        EXPECT_TRUE(Control<QAbstractButton>(shown, 4027).isChecked());
        EXPECT_EQ(Control<QComboBox>(shown, 4077).currentIndex(), -1);
        EXPECT_EQ(Control<QComboBox>(shown, 4077).count(), 5);
        Click(shown, 4021);
        Click(shown, 4022);
        Click(shown, IDOK);
    });
    EXPECT_EQ(page.drawStyle, 2);
    EXPECT_EQ(page.dotSize, 0);
    EXPECT_EQ(page.lineStyle, 7);
}

}  // namespace
