// What the tests of dialogs and sheets share: real ones, driven through their widgets.
#pragma once

#include <QAbstractButton>
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

// A user before the dialog that opens next.
struct DialogDriver {
    // `open` opens a dialog, in which the user does what `act` says; one left open is closed.
    static void WhileOpen(const std::function<void()>& open, const std::function<void(QDialog&)>& act) {
        bool acted = false;
        QTimer timer;
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, [&] {
            acted = true;
            const QPointer<QDialog> shown = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(shown);
            // Keys reach the window that is active; the frame's own activation may still be on its way.
            QCoreApplication::processEvents();
            shown->activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(shown));
            act(*shown);
            if (!shown || !shown->isVisible()) return;
            ADD_FAILURE() << "the dialog stays open";
            shown->done(0);
        });
        timer.start(0);
        open();
        EXPECT_TRUE(acted) << "no dialog was shown";
    }
    template <class Widget>
    static Widget& Control(QWidget& shown, UINT id) {
        return *qobject_cast<Widget*>(FindControl(shown, id));
    }
    // Buttons with a mark answer on the mark and their text, not on the empty place behind.
    static void Click(QWidget& shown, UINT id) {
        QWidget* const control = FindControl(shown, id);
        const auto* const button = qobject_cast<QAbstractButton*>(control);
        const bool isMarked = button && button->isCheckable();
        QTest::mouseClick(control, Qt::LeftButton, {},
                          isMarked ? QPoint(8, control->height() / 2) : control->rect().center());
    }
    // Writes over what stands in an edit, key by key.
    static void Type(QWidget& shown, UINT id, const char* text) {
        QWidget* const edit = FindControl(shown, id);
        edit->setFocus();
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(edit, text);
    }
};

class DialogFixture : public WindowTest, public DialogDriver {
  protected:
    DialogFixture() {
        boxes = SetMessageBoxHandler([this](const char* text, UINT) {
            said = text;
            if (whileAsked) whileAsked();
            return IDOK;
        });
    }
    ~DialogFixture() override { SetMessageBoxHandler(boxes); }

    static int Run(CDialog& dialog, const std::function<void(QDialog&)>& act) {
        int result = 0;
        WhileOpen([&] { result = dialog.DoModal(); }, act);
        return result;
    }

    CString said;
    std::function<void()> whileAsked;

  private:
    MessageBoxHandler boxes;
};
