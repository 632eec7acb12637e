#include "platform/window/NativeWindow.h"

#include "platform/window/Controls.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <utility>
#include <vector>

NativeWindow* NativeWindow::Of(QWidget* widget) {
    auto* const native = dynamic_cast<NativeWindow*>(widget);
    return native || !widget ? native : AttachedTo(*widget);
}

double NativeWindow::Scale() { return Widget()->devicePixelRatioF(); }

QRect NativeWindow::UnitsOf(const CRect& pixels) {
    const double scale = Scale();
    // The toolkit adds up corners in 32 bits.
    const auto place = [scale](LONG value) {
        return std::clamp(RoundHalfAway(value / scale), -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    };
    // No window is larger than all screens together: a damaged placement must not ask for gigabytes of
    // pixels.
    const QSize most = QGuiApplication::primaryScreen()->virtualSize();
    const auto length = [scale](LONG value, int limit) {
        return std::clamp(RoundHalfAway(value / scale), 0, limit);
    };
    return {place(pixels.left), place(pixels.top), length(pixels.Width(), most.width()),
            length(pixels.Height(), most.height())};
}

CRect NativeWindow::PixelsOf(const QRect& units) {
    const double scale = Scale();
    return {RoundHalfAway(units.x() * scale), RoundHalfAway(units.y() * scale),
            RoundHalfAway((units.x() + units.width()) * scale),
            RoundHalfAway((units.y() + units.height()) * scale)};
}

CRect NativeWindow::NormalRect() { return PixelsOf(Widget()->geometry()); }

void NativeWindow::SetNormalRect(const CRect& rect) { Widget()->setGeometry(UnitsOf(rect)); }

void NativeWindow::Adopt(QWidget* child, UINT) { child->setParent(Client()); }

// Titles mark the place of a "modified" sign with "[*]"; doubled it stands for itself.
void NativeWindow::SetText(const QString& text) {
    Widget()->setWindowTitle(QString(text).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
    Widget()->setAccessibleName(text);
}

void NativeWindow::Show(int how) {
    // A window that ended while it was being placed stays hidden.
    if (!owner_) return;
    QWidget* widget = Widget();
    switch (how) {
        case SW_HIDE:
            widget->hide();
            break;
        case SW_SHOWMINIMIZED:
        case SW_MINIMIZE:
        case SW_SHOWMINNOACTIVE:
            widget->showMinimized();
            break;
        case SW_SHOWMAXIMIZED:
            widget->showMaximized();
            break;
        case SW_SHOWNORMAL:
        case SW_RESTORE:
            widget->showNormal();
            break;
        default:
            widget->show();
    }
}

void NativeWindow::Sever() {
    if (!owner_ || ending_) return;
    const HandlingScope scope;
    ending_ = true;
    Guarded([this] { WindowEvents::Destroy(owner_); });
    // A handler may destroy other windows meanwhile.
    std::vector<QPointer<QWidget>> inside;
    for (QWidget* child : Widget()->findChildren<QWidget*>()) inside.emplace_back(child);
    for (const QPointer<QWidget>& widget : inside)
        if (NativeWindow* native = Of(widget)) native->Sever();
    // A handler may have destroyed the owner itself.
    if (CWnd* const owner = std::exchange(owner_, nullptr)) WindowEvents::Gone(owner);
}

void NativeWindow::Destroy() {
    if (ending_) return;
    QWidget* const widget = Widget();
    {
        const HandlingScope scope;
        Sever();
        Retire();
        Bury(widget);
    }
    EmptyGraveyard();
}

void NativeWindow::LoseOwner() {
    if (LetOwnerGo()) return;
    ending_ ? (void)(owner_ = nullptr) : Destroy();
}
