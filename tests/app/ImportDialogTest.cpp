#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include "app/table/OpenTable.h"
#include "app/workbench/ImportDialog.h"
#include "tests/app/Files.h"
#include "tests/window/WindowTest.h"

namespace app {
namespace {

class ImportDialogTest : public WindowTest {};

QComboBox* ComboCalled(const QWidget* dialog, const char* name) {
    for (auto* const combo : dialog->findChildren<QComboBox*>())
        if (combo->accessibleName() == name) return combo;
    return nullptr;
}

std::string NoteOf(const QWidget* dialog) {
    std::string note;
    for (const auto* const label : dialog->findChildren<QLabel*>())
        if (!label->buddy()) note += label->text().toStdString();
    return note;
}

void Type(QComboBox* combo, const char* text) {
    combo->clearEditText();
    QTest::keyClicks(combo->lineEdit(), text);
    emit combo->lineEdit()->editingFinished();
}

// Times in no known form below lines that look like a table: both can be said, and what is wrong is told.
TEST_F(ImportDialogTest, TakesLinesToSkipAndAFormOfTimes) {
    const Folder folder;
    folder.Write("in.csv", "1;2\n3;4\n5;6\nt;v\n14 of 3 in 24;1\n15 of 3 in 24;2\n");
    QTimer::singleShot(0, [] {
        QWidget* const dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        auto* const agree = dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
        QComboBox* const skip = ComboCalled(dialog, "Skip");
        QComboBox* const times = ComboCalled(dialog, "Times");
        skip->setCurrentIndex(3);
        emit skip->activated(3);
        Type(times, "%d of %m");
        EXPECT_FALSE(agree->isEnabled());
        Type(times, "%d of %m in %y");
        ASSERT_TRUE(agree->isEnabled()) << NoteOf(dialog);
        EXPECT_EQ(times->currentText(), "%d of %m in %y");
        EXPECT_EQ(dialog->findChild<QTableWidget*>()->horizontalHeaderItem(0)->text(), "t");
        agree->click();
    });
    const auto request = AskHowToRead({folder.Path("in.csv")}, nullptr);
    ASSERT_TRUE(request);
    EXPECT_EQ(request->skip, 3);
    const auto table = OpenTable(*request);
    ASSERT_TRUE(table) << table.Error().Text();
    EXPECT_EQ(IsoText(table->xTimes.back(), false), "2024-03-15T00:00:00");
    // The next time it begins where it ended.
    QTimer::singleShot(0, [] {
        QWidget* const dialog = QApplication::activeModalWidget();
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(ComboCalled(dialog, "Times")->currentText(), "%d of %m in %y");
        EXPECT_EQ(ComboCalled(dialog, "Skip")->currentIndex(), 3);
        dialog->close();
    });
    EXPECT_FALSE(AskHowToRead(*request, nullptr));
}

}  // namespace
}  // namespace app
