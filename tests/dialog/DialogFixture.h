// What the tests of dialogs and sheets share: real ones, driven through their widgets.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QTimer>
#include <QtTest>
#include <functional>

#include "platform/core/MessageBox.h"
#include "platform/dialog/CDialog.h"
#include "platform/window/Controls.h"
#include "tests/window/WindowTest.h"

class DialogFixture : public WindowTest {
  protected:
    DialogFixture() {
        boxes = SetMessageBoxHandler([this](const char* text, UINT) {
            said = text;
            if (whileAsked) whileAsked();
            return IDOK;
        });
    }
    ~DialogFixture() override { SetMessageBoxHandler(boxes); }

    // What the user does while the dialog is open; one left open is closed.
    static int Run(CDialog& dialog, const std::function<void(QDialog&)>& act) {
        bool acted = false;
        QTimer timer;
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, [&] {
            acted = true;
            auto* const shown = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(shown);
            // Keys reach the window that is active.
            ASSERT_TRUE(QTest::qWaitForWindowActive(shown));
            const QPointer<QDialog> still = shown;
            act(*shown);
            if (still && still->isVisible()) {
                ADD_FAILURE() << "the dialog stays open";
                still->done(0);
            }
        });
        timer.start(0);
        const int result = dialog.DoModal();
        EXPECT_TRUE(acted) << "no dialog was shown";
        return result;
    }
    template <class Widget>
    static Widget& Control(QWidget& shown, UINT id) {
        return *qobject_cast<Widget*>(FindControl(shown, id));
    }
    static void Click(QWidget& shown, UINT id) { QTest::mouseClick(FindControl(shown, id), Qt::LeftButton); }
    // Writes over what stands in an edit, key by key.
    static void Type(QWidget& shown, UINT id, const char* text) {
        QWidget* const edit = FindControl(shown, id);
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(edit, text);
    }

    CString said;
    std::function<void()> whileAsked;

  private:
    MessageBoxHandler boxes;
};
