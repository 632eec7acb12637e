#include "platform/dialog/DialogWidget.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCloseEvent>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <cmath>

#include "platform/dialog/CPropertyPage.h"
#include "platform/dialog/DialogControls.h"
#include "platform/dialog/DialogResources.h"
#include "platform/window/Controls.h"
#include "platform/window/NativeWindow.h"

namespace {

// A dialog grows to this many times its size at most: one endless text is better cut.
constexpr double kMostGrowth = 2.5;

class DialogWidget : public QDialog, public NativeWindow {
  public:
    DialogWidget(CWnd* owner, QWidget* over) : QDialog(over), NativeWindow(owner) {}
    ~DialogWidget() override { Sever(); }

    QWidget* Widget() override { return this; }
    void ApplyStyle(DWORD) override {}
    void Invalidate(bool) override { update(); }
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

// A page stands in a sheet, or by itself in a window.
class PageWidget : public QWidget, public NativeWindow {
  public:
    explicit PageWidget(CPropertyPage* owner) : NativeWindow(owner) {}
    ~PageWidget() override { Sever(); }

    QWidget* Widget() override { return this; }
    void ApplyStyle(DWORD) override {}
    void Invalidate(bool) override { update(); }
    void ControlUsed(QWidget& control, UINT code) override {
        // Choosing an entry of a list changes no setting.
        const bool chooses =
            control.inherits("QAbstractItemView") || code == EN_SETFOCUS || code == EN_KILLFOCUS;
        if (!chooses) Tell([](CWnd* w) { static_cast<CPropertyPage*>(w)->ControlChanged(); });
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        Tell([](CWnd* w) { WindowEvents::Paint(w); });
    }
};

// Whether the control is as wide as what it says.
bool HasFixedText(const ControlResource& row) {
    switch (row.kind) {
        case ControlKind::Edit:
        case ControlKind::List:
        case ControlKind::Columns:
        case ControlKind::Picture:
        case ControlKind::Swatch:
            return false;
        case ControlKind::Text:
            return row.cy <= kOneLine;
        default:
            return true;
    }
}

bool HasFixedHeight(ControlKind kind) {
    return kind == ControlKind::Edit || kind == ControlKind::Button || kind == ControlKind::DefaultButton;
}

// Controls that are called what the label before them says.
bool IsCalledByLabel(ControlKind kind) {
    return kind == ControlKind::Edit || kind == ControlKind::DropList || kind == ControlKind::List ||
           kind == ControlKind::Columns || kind == ControlKind::Picture;
}

QWidget* WidgetOf(const QWidget& dialog, std::size_t row) {
    return dialog.findChild<QWidget*>(QStringLiteral("control%1").arg(row), Qt::FindDirectChildrenOnly);
}

// How many times its box a control needs.
double Lack(int needed, double box) { return box > 0 ? std::clamp(needed / box, 1.0, kMostGrowth) : 1.0; }

// What a control needs so that its text is not cut. The toolkit likes push buttons wider than that.
QSize NeededBy(const QWidget& widget, ControlKind kind) {
    const QSize liked = widget.sizeHint();
    if (kind != ControlKind::Button && kind != ControlKind::DefaultButton) return liked;
    const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
    const QFontMetrics metrics = widget.fontMetrics();
    const int text = metrics.size(Qt::TextShowMnemonic, button->text()).width() + metrics.height();
    return {std::min(liked.width(), text), liked.height()};
}

DialogUnits Grown(const QWidget& dialog, const DialogResource& resource, DialogUnits units) {
    DialogUnits growth{1, 1};
    for (std::size_t i = 0; i < resource.controls.size(); ++i) {
        const ControlResource& row = resource.controls[i];
        const QWidget* const widget = WidgetOf(dialog, i);
        const QSize needed = NeededBy(*widget, row.kind);
        if (HasFixedText(row)) growth.x = std::max(growth.x, Lack(needed.width(), row.cx * units.x));
        if (HasFixedHeight(row.kind)) growth.y = std::max(growth.y, Lack(needed.height(), row.cy * units.y));
    }
    // Texts that wrap, in the width they get.
    for (std::size_t i = 0; i < resource.controls.size(); ++i) {
        const ControlResource& row = resource.controls[i];
        const int width = static_cast<int>(row.cx * units.x * growth.x);
        if (row.kind == ControlKind::Text && row.cy > kOneLine)
            growth.y = std::max(growth.y, Lack(WidgetOf(dialog, i)->heightForWidth(width), row.cy * units.y));
    }
    return {units.x * growth.x, units.y * growth.y};
}

QString Spoken(QString text) { return text.remove(QLatin1Char('&')).remove(QLatin1Char(':')); }

bool HasLetters(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.isLetterOrNumber(); });
}

// The text of the group around a control, or none.
QString GroupOf(const DialogResource& resource, const ControlResource& inner) {
    for (const ControlResource& row : resource.controls)
        if (row.kind == ControlKind::Group && row.x <= inner.x && inner.x < row.x + row.cx &&
            row.y <= inner.y && inner.y < row.y + row.cy)
            return Spoken(QString::fromUtf8(row.text));
    return {};
}

// What those hear who do not see the label beside the control and the group around it.
void NameControl(QWidget& widget, const DialogResource& resource, const ControlResource& row, QLabel* label) {
    const QString group = row.kind == ControlKind::Group ? QString() : GroupOf(resource, row);
    widget.setAccessibleDescription(group);
    if (label && IsCalledByLabel(row.kind)) {
        label->setBuddy(&widget);
        widget.setAccessibleName(Spoken(label->text()));
    } else if (const auto* const button = qobject_cast<QAbstractButton*>(&widget)) {
        if (!HasLetters(button->text())) widget.setAccessibleName(group);
    }
}

}  // namespace

NativeWindow* NewDialogWidget(CWnd* owner, QWidget* over) { return new DialogWidget(owner, over); }

NativeWindow* NewPageWidget(CPropertyPage* owner) { return new PageWidget(owner); }

DialogUnits DialogUnitsOf(const QFont& font) {
    const QFontMetrics metrics(font);
    const int letters =
        metrics.horizontalAdvance(QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
    return {(letters / 26 + 1) / 2 / 4.0, metrics.height() / 8.0};
}

void BuildControls(QWidget& dialog, const DialogResource& resource) {
    QLabel* labelBefore = nullptr;
    QButtonGroup* radios = nullptr;
    for (std::size_t i = 0; i < resource.controls.size(); ++i) {
        const ControlResource& row = resource.controls[i];
        QWidget* const widget = NewControl(row, &dialog);
        widget->setObjectName(QStringLiteral("control%1").arg(i));
        if (row.id != 0) MakeControl(*widget, row.id);
        NameControl(*widget, resource, row, labelBefore);
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
    const DialogUnits units = Grown(dialog, resource, DialogUnitsOf(dialog.font()));
    const auto across = [&units](int length) { return static_cast<int>(std::lround(length * units.x)); };
    const auto down = [&units](int length) { return static_cast<int>(std::lround(length * units.y)); };
    for (std::size_t i = 0; i < resource.controls.size(); ++i) {
        const ControlResource& row = resource.controls[i];
        QWidget* const widget = WidgetOf(dialog, i);
        const int height = row.kind == ControlKind::DropList ? widget->sizeHint().height() : down(row.cy);
        widget->setGeometry(across(row.x), down(row.y), across(row.cx), height);
        if (row.kind != ControlKind::Group) continue;
        // Templates mean a frame that begins at half the height of its title; the toolkit's begins below it.
        const int up = std::min(widget->y(), widget->fontMetrics().height() / 2);
        widget->setGeometry(widget->geometry().adjusted(0, -up, 0, 0));
        // Behind what stands in it.
        widget->lower();
    }
    const QSize size(across(resource.cx), down(resource.cy));
    dialog.isWindow() ? dialog.setFixedSize(size) : dialog.setMinimumSize(size);
}

void FocusFirst(QWidget& dialog) {
    for (QWidget* const widget : dialog.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        // Buttons of a group share one place in the order of the keyboard.
        const auto* const button = qobject_cast<QAbstractButton*>(widget);
        const bool isOther =
            button && button->group() && button->group()->checkedButton() && !button->isChecked();
        if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isEnabled() || isOther) continue;
        if (auto* const edit = qobject_cast<QLineEdit*>(widget)) edit->selectAll();
        return widget->setFocus(Qt::OtherFocusReason);
    }
}
