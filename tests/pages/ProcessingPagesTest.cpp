// The pages of the processing commands, each alone in a wizard.
#include "pages/ProcessingPages.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <set>

#include "pages/Illustrations.h"
#include "platform/dialog/CPropertySheet.h"
#include "platform/dialog/DialogResources.h"
#include "tests/dialog/DialogFixture.h"
#include "tests/gdi/DrawingTest.h"

namespace {

class ProcessingPages : public DialogFixture {
  protected:
    // What the wizard answers.
    int Show(CPropertyPage& page, const std::function<void(QDialog&)>& act) {
        CPropertySheet sheet("Process", place.main);
        sheet.SetWizardMode();
        sheet.AddPage(&page);
        return Run(sheet, act);
    }
    static void Finish(QDialog& shown) { Click(shown, ID_WIZFINISH); }
    static QString Text(QDialog& shown, UINT id) { return Control<QLineEdit>(shown, id).text(); }
    static bool IsEnabled(QDialog& shown, UINT id) { return FindControl(shown, id)->isEnabled(); }
    static UINT Picture(QDialog& shown, UINT id) {
        return FindControl(shown, id)->property("picture").toUInt();
    }

    Workplace place;
};

TEST_F(ProcessingPages, TranslatingShowsWhichOfItsTwoValuesCounts) {
    CTranslateProperties set;
    set.translateFunction = 1;
    set.translateOffset = 0.1f;
    set.translateValue = 16777217;
    CTranslatePage page("Section", &set);
    EXPECT_EQ(Show(page,
                   [&](QDialog& shown) {
                       EXPECT_EQ(Control<QAbstractButton>(shown, ID_WIZFINISH).text(), "Ok");
                       EXPECT_TRUE(Control<QAbstractButton>(shown, 4094).isChecked());
                       EXPECT_TRUE(IsEnabled(shown, 4082));
                       EXPECT_FALSE(IsEnabled(shown, 4042));
                       EXPECT_EQ(Picture(shown, 4092), 413u);
                       EXPECT_EQ(Text(shown, 4082), "0.1") << "the shortest text that reads back";
                       Click(shown, 4093);
                       EXPECT_FALSE(IsEnabled(shown, 4082));
                       EXPECT_TRUE(IsEnabled(shown, 4042));
                       EXPECT_EQ(Picture(shown, 4092), 415u);
                       Finish(shown);
                   }),
              12325);
    EXPECT_EQ(set.translateFunction, 0);
    EXPECT_EQ(set.translateOffset, 0.1f) << "unchanged to the last digit";
    EXPECT_EQ(set.translateValue, 16777217.0f);
}

TEST_F(ProcessingPages, ScalingShowsWhatItsMethodDoes) {
    CScaleProperties set;
    set.scaleMethod = 2;
    CScalePage page("Section", &set);
    EXPECT_EQ(Show(page,
                   [&](QDialog& shown) {
                       auto& methods = Control<QComboBox>(shown, 4083);
                       EXPECT_EQ(methods.count(), 4);
                       EXPECT_EQ(methods.currentText(), "Drift (y1 = y + y*P/100*(Ti-T1)/(Tn-T1))");
                       EXPECT_EQ(Text(shown, 4084), "1") << "no factor that flattens the series";
                       UINT expected[] = {410, 411, 409};
                       methods.setFocus();
                       for (const UINT picture : expected) {
                           EXPECT_EQ(Picture(shown, 4086), picture);
                           QTest::keyClick(&methods, Qt::Key_Up);
                       }
                       QTest::keyClick(&methods, Qt::Key_End);
                       EXPECT_EQ(Picture(shown, 4086), 414u);
                       Type(shown, 4084, "2.5");
                       Type(shown, 4085, "-3");
                       Finish(shown);
                   }),
              12325);
    EXPECT_EQ(set.scaleMethod, 3);
    EXPECT_EQ(set.scaleValue, 2.5f);
    EXPECT_EQ(set.scaleOffset, -3.0f);
    set.scaleMethod = 9;
    EXPECT_EQ(Show(page,
                   [&](QDialog& shown) {
                       EXPECT_EQ(Control<QComboBox>(shown, 4083).currentIndex(), -1);
                       EXPECT_EQ(Picture(shown, 4086), 0u);
                       Click(shown, IDCANCEL);
                   }),
              IDCANCEL);
    EXPECT_EQ(set.scaleMethod, 9);
}

TEST_F(ProcessingPages, ANumberThatIsNoneKeepsThePageOpen) {
    CSmoothProperties set;
    set.waveLengthUnit = "days";
    CSmoothPage page("Section", &set);
    Show(page, [&](QDialog& shown) {
        EXPECT_EQ(Control<QLabel>(shown, 4104).text(), "days");
        EXPECT_EQ(Text(shown, 4087), "20");
        for (const char* const text : {"long", "", "1e99", "nan"}) {
            said.Empty();
            Type(shown, 4087, text);
            if (!*text) QTest::keyClick(FindControl(shown, 4087), Qt::Key_Delete);
            Finish(shown);
            EXPECT_EQ(said, "Please enter a number.") << text;
            EXPECT_TRUE(shown.isVisible()) << text;
            EXPECT_EQ(shown.focusWidget(), FindControl(shown, 4087)) << text;
        }
        Type(shown, 4087, "0.004");
        Finish(shown);
    });
    EXPECT_EQ(set.waveLength, 0.004f);
}

TEST_F(ProcessingPages, AGreyedCheckBoxStillHasItsValue) {
    CSpikeDetectProperties set;
    set.waveLengthUnit = "h";
    set.windowUnit = "cm";
    CWaveWindowPage page("Section", &set);
    page.showWindowEnabled = false;
    page.waveLengthLabel = "Period";
    Show(page, [&](QDialog& shown) {
        EXPECT_FALSE(IsEnabled(shown, 4100));
        EXPECT_TRUE(Control<QAbstractButton>(shown, 4100).isChecked());
        EXPECT_EQ(Control<QLabel>(shown, 4102).text(), "Period");
        EXPECT_EQ(Control<QLabel>(shown, 4002).text(), "h");
        EXPECT_EQ(Control<QLabel>(shown, 4003).text(), "cm");
        Type(shown, 4000, "12.345");
        Type(shown, 4001, "0.3");
        Finish(shown);
    });
    EXPECT_EQ(set.waveLength, 12.345f);
    EXPECT_EQ(set.windowSize, 0.3f);
    EXPECT_EQ(set.showWindow, 1);
}

TEST_F(ProcessingPages, MedianFilter) {
    CMedianFilterProperties set;
    CMedianFilterPage page("Section", &set);
    Show(page, [&](QDialog& shown) {
        Type(shown, 4144, "11");
        Type(shown, 4143, "0.25");
        Click(shown, 4145);
        Finish(shown);
    });
    EXPECT_EQ(set.filterLength, 11.0f);
    EXPECT_EQ(set.filterDistance, 0.25f);
    EXPECT_EQ(set.showWindow, 1);
}

TEST_F(ProcessingPages, PagesWithoutASetAreHarmless) {
    const auto page = std::unique_ptr<CObject>(RUNTIME_CLASS(CTranslatePage)->CreateObject());
    EXPECT_TRUE(page);
    CScalePage scale("Section", nullptr);
    EXPECT_EQ(Show(scale, Finish), 12325);
    EXPECT_EQ(scale.OnSaveDefault(), 0);
}

TEST_F(ProcessingPages, EachPictureIsItsOwnAtAnySize) {
    for (const CSize size : {CSize(128, 74), CSize(256, 148), CSize(9, 5), CSize(0, 0)}) {
        std::set<std::vector<std::uint32_t>> different;
        for (const UINT id : {409u, 410u, 411u, 413u, 414u, 415u}) {
            const DrawPicture draw = FindPictureResource(id);
            ASSERT_TRUE(draw) << id;
            const auto picture = NewPicture(std::max<int>(size.cx, 1), std::max<int>(size.cy, 1));
            CDC dc(*picture);
            dc.FillSolidRect(CRect(0, 0, size.cx, size.cy), RGB(255, 255, 255));
            draw(dc, size);
            const std::uint32_t* const pixels = Pixels(*picture);
            different.insert({pixels, pixels + picture->GetWidth() * picture->GetHeight()});
        }
        if (size.cx > 100) {
            EXPECT_EQ(different.size(), 6u) << size.cx;
        }
    }
}

}  // namespace
