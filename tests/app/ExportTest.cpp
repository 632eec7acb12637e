// Pictures of a window as files.
#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>
#include <QtTest>

#include "app/workbench/ExportDialog.h"
#include "app/workbench/WorkbenchIds.h"
#include "tests/app/WorkbenchTest.h"

namespace app {
namespace {

using ExportTest = WorkbenchTest;

// Agrees to the size after `change`.
ModalHandler AnswerSize(std::function<void(ExportDialog&)> change) {
    return [change = std::move(change)](ModalQuestion& question) -> std::optional<int> {
        auto* const dialog = dynamic_cast<ExportDialog*>(&question);
        if (!dialog) return std::nullopt;
        change(*dialog);
        return IDOK;
    };
}

TEST_F(ExportTest, ExportsTheViewInEveryFormat) {
    CSeriesView& view = Open();
    const auto sizes = SetModalHandler(AnswerSize([](ExportDialog&) {}));
    for (const char* name : {"out.png", "out.svg", "out.pdf"}) {
        const auto before = SetFileDialogHandler([&](CFileDialog& dialog) {
            EXPECT_STREQ(dialog.GetPathName(), "days.png");
            dialog.SetPathNames({CString(folder.Path(name))});
            return IDOK;
        });
        Key(Qt::Key_E, Qt::ControlModifier);
        SetFileDialogHandler(before);
        EXPECT_TRUE(folder.Has(name)) << name;
    }
    const QImage picture(QString::fromStdString(folder.Path("out.png")));
    EXPECT_EQ(CSize(picture.width(), picture.height()), view.ShownSize().pixels);
    EXPECT_TRUE(messages.empty());
    const auto before = SetFileDialogHandler([&](CFileDialog& dialog) {
        dialog.SetPathNames({CString(folder.Path("nowhere/out.png"))});
        return IDOK;
    });
    RunCommand(*frame, kExport);
    SetFileDialogHandler(before);
    SetModalHandler(sizes);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_NE(messages[0].find("nowhere/out.png"), std::string::npos);
}

TEST_F(ExportTest, APictureHasTheSizeAskedForAndTheNextOneIsOfferedIt) {
    Open();
    const auto files = SetFileDialogHandler([&](CFileDialog& dialog) {
        dialog.SetPathNames({CString(folder.Path("out.png"))});
        return IDOK;
    });
    const auto sizes = SetModalHandler(AnswerSize([](ExportDialog& dialog) {
        EXPECT_TRUE(dialog.inPixels) << "as large as the window";
        dialog.inPixels = 0;
        dialog.width = 127;
        dialog.height = 63.5;
        dialog.dotsPerInch = 200;
    }));
    RunCommand(*frame, kExport);
    const QImage picture(QString::fromStdString(folder.Path("out.png")));
    EXPECT_EQ(picture.size(), QSize(1000, 500));
    EXPECT_EQ(picture.dotsPerMeterX(), 7874);
    SetModalHandler(AnswerSize([](ExportDialog& dialog) {
        EXPECT_EQ(dialog.height, 63.5);
        EXPECT_EQ(dialog.dotsPerInch, 200);
    }));
    RunCommand(*frame, kExport);
    SetModalHandler([](ModalQuestion&) { return IDCANCEL; });
    std::filesystem::remove(folder.Path("out.png"));
    RunCommand(*frame, kExport);
    EXPECT_FALSE(folder.Has("out.png"));
    SetModalHandler(sizes);
    SetFileDialogHandler(files);
}

// With keys: the unit changes and the picture stays as large, what is no size is refused.
TEST_F(ExportTest, TheSizeIsTypedInEitherUnit) {
    Open();
    ExportDialog dialog("out.png", {{960, 480}, 96}, frame);
    QTimer::singleShot(0, [&] {
        QWidget& shown = *QApplication::activeModalWidget();
        shown.findChildren<QRadioButton*>().front()->click();
        const auto edits = shown.findChildren<QLineEdit*>();
        ASSERT_EQ(edits.size(), 3);
        EXPECT_EQ(edits[0]->text(), "254");
        EXPECT_EQ(edits[1]->text(), "127");
        edits[0]->setText("5");
        QTest::keyClick(&shown, Qt::Key_Return);
        ASSERT_EQ(messages.size(), 1u) << "too small";
        edits[0]->setText("100");
        QTest::keyClick(&shown, Qt::Key_Return);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.TakeChosen().Paper(), CSize(10000, 12700));
}

TEST_F(ExportTest, ASuffixThatIsNoPictureIsRefusedAndCapitalsAreNot) {
    Open();
    const auto sizes = SetModalHandler(AnswerSize([](ExportDialog&) {}));
    std::string name;
    const auto before = SetFileDialogHandler([&](CFileDialog& dialog) {
        dialog.SetPathNames({CString(folder.Path(name))});
        return IDOK;
    });
    name = "out.PNG";
    RunCommand(*frame, kExport);
    EXPECT_TRUE(folder.Has("out.PNG"));
    EXPECT_TRUE(messages.empty());
    name = "out.gif";
    RunCommand(*frame, kExport);
    SetFileDialogHandler(before);
    SetModalHandler(sizes);
    EXPECT_FALSE(folder.Has("out.gif"));
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_NE(messages[0].find(".png, .svg or .pdf"), std::string::npos) << messages[0];
}

}  // namespace
}  // namespace app
