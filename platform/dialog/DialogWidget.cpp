#include "platform/dialog/DialogWidget.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <algorithm>
#include <cmath>

#include "platform/dialog/DialogResources.h"
#include "platform/window/Controls.h"
#include "platform/window/NativeWindow.h"

namespace {

// A dialog grows to this many times its size at most: one endless text is better cut.
constexpr double kMostGrowth = 2.5;
// Labels of more than one line wrap instead of growing.
constexpr int kOneLine = 12;

class DialogWidget : public QDialog, public NativeWindow {
  public:
    DialogWidget(CWnd* owner, QWidget* over) : QDialog(over), NativeWindow(owner) {}
    ~DialogWidget() override { Sever(); }

    QWidget* Widget() override { return this; }
    void ApplyStyle(DWORD) override {}
    // Esc, and Enter where no button has it.
    void reject() override {
        Tell([](CWnd* w) { WindowEvents::Close(w); });
        if (!Owner()) QDialog::reject();
    }

  protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        reject();
    }
};

template <class Button>
QWidget* NewButton(const QString& text, QWidget* parent) {
    auto* const button = new Button(text, parent);
    if (auto* const push = qobject_cast<QPushButton*>(button)) push->setAutoDefault(false);
    return button;
}

QWidget* NewControl(const ControlResource& row, QWidget* parent) {
    const QString text = QString::fromUtf8(row.text);
    switch (row.kind) {
        case ControlKind::Text: {
            auto* const label = new QLabel(text, parent);
            label->setWordWrap(row.cy > kOneLine);
            return label;
        }
        case ControlKind::Edit:
            return new QLineEdit(text, parent);
        case ControlKind::Check:
            return NewButton<QCheckBox>(text, parent);
        case ControlKind::Radio:
            return NewButton<QRadioButton>(text, parent);
        case ControlKind::Button:
            return NewButton<QPushButton>(text, parent);
        case ControlKind::DefaultButton: {
            QWidget* const button = NewButton<QPushButton>(text, parent);
            qobject_cast<QPushButton*>(button)->setDefault(true);
            return button;
        }
        case ControlKind::Group:
            return new QGroupBox(text, parent);
        case ControlKind::DropList:
            return new QComboBox(parent);
        case ControlKind::List:
            return new QListWidget(parent);
        case ControlKind::Columns: {
            auto* const list = new QTreeWidget(parent);
            list->setRootIsDecorated(false);
            return list;
        }
    }
    return nullptr;
}

bool HasFixedText(ControlKind kind) {
    return kind != ControlKind::Edit && kind != ControlKind::List && kind != ControlKind::Columns;
}

QWidget* WidgetOf(const QWidget& dialog, std::size_t row) {
    return dialog.findChild<QWidget*>(QStringLiteral("control%1").arg(row), Qt::FindDirectChildrenOnly);
}

// Pixels of the toolkit for one dialog unit.
struct Units {
    double x, y;
};

Units UnitsOf(const QFont& font) {
    const QFontMetrics metrics(font);
    const int letters =
        metrics.horizontalAdvance(QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
    return {(letters / 26 + 1) / 2 / 4.0, metrics.height() / 8.0};
}

// How many times its box a control needs.
double Lack(int needed, double box) { return box > 0 ? std::clamp(needed / box, 1.0, kMostGrowth) : 1.0; }

Units Grown(const QWidget& dialog, const DialogResource& resource, Units units) {
    Units growth{1, 1};
    for (std::size_t i = 0; i < resource.controls.size(); ++i) {
        const ControlResource& row = resource.controls[i];
        const QSize needed = WidgetOf(dialog, i)->sizeHint();
        if (HasFixedText(row.kind) && (row.kind != ControlKind::Text || row.cy <= kOneLine))
            growth.x = std::max(growth.x, Lack(needed.width(), row.cx * units.x));
        if (row.kind == ControlKind::Edit || row.kind == ControlKind::Button ||
            row.kind == ControlKind::DefaultButton)
            growth.y = std::max(growth.y, Lack(needed.height(), row.cy * units.y));
    }
    return {units.x * growth.x, units.y * growth.y};
}

}  // namespace

NativeWindow* NewDialogWidget(CWnd* owner, QWidget* over) { return new DialogWidget(owner, over); }

void BuildControls(QWidget& dialog, const DialogResource& resource) {
    QLabel* labelBefore = nullptr;
    QButtonGroup* radios = nullptr;
    for (std::size_t i = 0; i < resource.controls.size(); ++i) {
        const ControlResource& row = resource.controls[i];
        QWidget* const widget = NewControl(row, &dialog);
        widget->setObjectName(QStringLiteral("control%1").arg(i));
        if (row.id != 0) MakeControl(*widget, row.id);
        if (labelBefore && widget->focusPolicy() != Qt::NoFocus) {
            labelBefore->setBuddy(widget);
            widget->setAccessibleName(labelBefore->text().remove(QLatin1Char('&')).remove(QLatin1Char(':')));
        }
        labelBefore = qobject_cast<QLabel*>(widget);
        if (row.kind != ControlKind::Radio) {
            radios = nullptr;
        } else {
            if (!radios) radios = new QButtonGroup(&dialog);
            radios->addButton(qobject_cast<QAbstractButton*>(widget));
        }
    }
}

void FitControls(QWidget& dialog, const DialogResource& resource) {
    const Units units = Grown(dialog, resource, UnitsOf(dialog.font()));
    const auto across = [&units](int length) { return static_cast<int>(std::lround(length * units.x)); };
    const auto down = [&units](int length) { return static_cast<int>(std::lround(length * units.y)); };
    for (std::size_t i = 0; i < resource.controls.size(); ++i) {
        const ControlResource& row = resource.controls[i];
        QWidget* const widget = WidgetOf(dialog, i);
        const int height = row.kind == ControlKind::DropList ? widget->sizeHint().height() : down(row.cy);
        widget->setGeometry(across(row.x), down(row.y), across(row.cx), height);
        // Behind what stands in it.
        if (row.kind == ControlKind::Group) widget->lower();
    }
    dialog.setFixedSize(across(resource.cx), down(resource.cy));
}

void FocusFirst(QWidget& dialog, const DialogResource& resource) {
    for (std::size_t i = 0; i < resource.controls.size(); ++i) {
        QWidget* const widget = WidgetOf(dialog, i);
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isEnabled()) continue;
        if (auto* const edit = qobject_cast<QLineEdit*>(widget)) edit->selectAll();
        return widget->setFocus(Qt::OtherFocusReason);
    }
}
