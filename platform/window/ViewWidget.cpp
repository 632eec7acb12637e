// The widget of views and other plain windows: a scroll area whose client area is a picture, drawn when it is
// out of date and copied to the screen by every paint.
#include <QAbstractScrollArea>
#include <QContextMenuEvent>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>
#include <QTimerEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <map>

#include "platform/core/Rounding.h"
#include "platform/gdi/CBitmapEx.h"
#include "platform/gdi/CDC.h"
#include "platform/window/NativeWindow.h"
#include "platform/window/VirtualKeys.h"

namespace {

// A held key on X11 sends releases that do not say that they come from the automatic repeat; the next press
// follows within this time.
constexpr int kReleaseDelayMs = 40;

// At scale one; millimetres and text grow with the scale.
constexpr int kDotsPerInch = 96;

UINT FlagsOf(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    UINT flags = 0;
    if (buttons & Qt::LeftButton) flags |= MK_LBUTTON;
    if (buttons & Qt::RightButton) flags |= MK_RBUTTON;
    if (buttons & Qt::MiddleButton) flags |= MK_MBUTTON;
    if (modifiers & Qt::ShiftModifier) flags |= MK_SHIFT;
    if (modifiers & Qt::ControlModifier) flags |= MK_CONTROL;
    return flags;
}

class ViewWidget : public QAbstractScrollArea, public NativeWindow {
  public:
    explicit ViewWidget(CWnd* owner);
    ~ViewWidget() override { Sever(); }

    QWidget* Widget() override { return this; }
    QWidget* Client() override { return viewport(); }
    CBitmapEx* Picture() override { return &picture_; }
    void ApplyStyle(DWORD style) override;
    void Invalidate(bool erase) override;
    void PaintNow() override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    // The owner moves its content itself.
    void scrollContentsBy(int, int) override {}

  private:
    CPoint PixelOf(QPointF position);
    bool FitPicture();
    void Redraw();
    void ConnectScrollBar(int bar, QScrollBar* native);
    void Scrolled(int bar, QScrollBar* native, int action);
    void LetGo(int key);

    CBitmapEx picture_{4, 32, 256};
    bool outOfDate_ = true;
    bool erase_ = true;
    int wheel_ = 0;
    // Keys held down, each with the timer that a release starts and a repeated press stops.
    std::map<int, std::unique_ptr<QTimer>> held_;
};

ViewWidget::ViewWidget(CWnd* owner) : NativeWindow(owner) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setAttribute(Qt::WA_NoSystemBackground);
    ConnectScrollBar(SB_HORZ, horizontalScrollBar());
    ConnectScrollBar(SB_VERT, verticalScrollBar());
}

void ViewWidget::ApplyStyle(DWORD style) {
    // Always or never: a bar that comes and goes with its range would resize the client area in the midst of
    // a zoom.
    const auto policy = [style](DWORD bit) {
        return style & bit ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
    };
    setHorizontalScrollBarPolicy(policy(WS_HSCROLL));
    setVerticalScrollBarPolicy(policy(WS_VSCROLL));
}

CPoint ViewWidget::PixelOf(QPointF position) {
    return {TruncateToInt32(std::floor(position.x() * Scale())),
            TruncateToInt32(std::floor(position.y() * Scale()))};
}

void ViewWidget::Invalidate(bool erase) {
    outOfDate_ = true;
    erase_ |= erase;
    viewport()->update();
}

void ViewWidget::PaintNow() {
    if (!isVisible() || !outOfDate_) return;
    Redraw();
    viewport()->repaint();
}

// True when the picture got a new size. An empty client area keeps the picture it had.
bool ViewWidget::FitPicture() {
    const int width = RoundHalfAway(viewport()->width() * Scale());
    const int height = RoundHalfAway(viewport()->height() * Scale());
    picture_.SetDotsPerInch(RoundHalfAway(kDotsPerInch * Scale()));
    if (width < 1 || height < 1 || !picture_.ReSize(nullptr, width, height)) return false;
    outOfDate_ = erase_ = true;
    return true;
}

void ViewWidget::resizeEvent(QResizeEvent*) {
    FitPicture();
    const int width = RoundHalfAway(viewport()->width() * Scale());
    const int height = RoundHalfAway(viewport()->height() * Scale());
    Tell([=](CWnd* w) { WindowEvents::Size(w, SIZE_RESTORED, width, height); });
}

void ViewWidget::Redraw() {
    if (!outOfDate_ || !Owner()) return;
    outOfDate_ = false;
    if (erase_) {
        CDC dc(picture_);
        dc.FillSolidRect(CRect(0, 0, picture_.GetWidth(), picture_.GetHeight()),
                         WindowEvents::Background(Owner()));
        erase_ = false;
    }
    Tell([](CWnd* w) { WindowEvents::Paint(w); });
}

void ViewWidget::paintEvent(QPaintEvent*) {
    // The scale may have changed without a resize, on the way to another screen.
    if (FitPicture())
        Tell([this](CWnd* w) {
            WindowEvents::Size(w, SIZE_RESTORED, picture_.GetWidth(), picture_.GetHeight());
        });
    Redraw();
    if (!picture_.GetBits()) return;
    QImage shown(static_cast<const uchar*>(picture_.GetBits()), picture_.GetWidth(), picture_.GetHeight(),
                 picture_.GetWidth() * 4, QImage::Format_RGB32);
    shown.setDevicePixelRatio(Scale());
    QPainter(viewport()).drawImage(0, 0, shown);
}

void ViewWidget::mousePressEvent(QMouseEvent* event) {
    const bool left = event->button() == Qt::LeftButton;
    if (!left && event->button() != Qt::RightButton) return;
    // What a drag draws on top must not be lost to a redraw that was asked for before it.
    PaintNow();
    const UINT flags = FlagsOf(event->buttons(), event->modifiers());
    const CPoint point = PixelOf(event->position());
    Tell([=](CWnd* w) { (left ? WindowEvents::LeftDown : WindowEvents::RightDown)(w, flags, point); });
}

void ViewWidget::mouseReleaseEvent(QMouseEvent* event) {
    const bool left = event->button() == Qt::LeftButton;
    if (!left && event->button() != Qt::RightButton) return;
    PaintNow();
    const UINT flags = FlagsOf(event->buttons(), event->modifiers());
    const CPoint point = PixelOf(event->position());
    Tell([=](CWnd* w) { (left ? WindowEvents::LeftUp : WindowEvents::RightUp)(w, flags, point); });
}

void ViewWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    const UINT flags = FlagsOf(event->buttons(), event->modifiers());
    const CPoint point = PixelOf(event->position());
    if (event->button() == Qt::LeftButton) Tell([=](CWnd* w) { WindowEvents::LeftDouble(w, flags, point); });
    if (event->button() == Qt::MiddleButton)
        Tell([=](CWnd* w) { WindowEvents::MiddleDouble(w, flags, point); });
}

void ViewWidget::mouseMoveEvent(QMouseEvent* event) {
    const UINT flags = FlagsOf(event->buttons(), event->modifiers());
    const CPoint point = PixelOf(event->position());
    Tell([](CWnd* w) { WindowEvents::Cursor(w); });
    Tell([=](CWnd* w) { WindowEvents::Move(w, flags, point); });
}

void ViewWidget::leaveEvent(QEvent*) {
    Tell([](CWnd* w) { WindowEvents::Leave(w); });
}

void ViewWidget::wheelEvent(QWheelEvent* event) {
    const QPoint turn = event->angleDelta();
    if (std::abs(turn.x()) > std::abs(turn.y())) {
        const UINT held = FlagsOf(event->buttons(), event->modifiers());
        const CPoint at = PixelOf(event->position());
        // The toolkit counts to the left.
        const auto delta = static_cast<short>(std::clamp(-turn.x(), -32000, 32000));
        Tell([=](CWnd* w) {
            CPoint screen = at;
            w->ClientToScreen(&screen);
            WindowEvents::HWheel(w, held, delta, screen);
        });
        event->accept();
        return;
    }
    const int turned = event->angleDelta().y();
    // Fine wheels and touch pads turn in small steps: they count when they make a notch together.
    if (turned != 0) wheel_ = (wheel_ < 0) == (turned < 0) ? wheel_ + turned : turned;
    const UINT flags = FlagsOf(event->buttons(), event->modifiers());
    const CPoint client = PixelOf(event->position());
    while (std::abs(wheel_) >= WHEEL_DELTA) {
        const short notch = wheel_ > 0 ? WHEEL_DELTA : -WHEEL_DELTA;
        wheel_ -= notch;
        Tell([=](CWnd* w) {
            CPoint screen = client;
            w->ClientToScreen(&screen);
            WindowEvents::Wheel(w, flags, notch, screen);
        });
    }
    event->accept();
}

void ViewWidget::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QPoint position = byKey ? viewport()->rect().center() : event->pos();
    CPoint screen = PixelOf(position);
    Tell([&](CWnd* w) {
        w->ClientToScreen(&screen);
        WindowEvents::ContextMenu(w, screen);
    });
}

void ViewWidget::keyPressEvent(QKeyEvent* event) {
    const UINT key = VirtualKeyOf(event->key());
    std::unique_ptr<QTimer>& release = held_[event->key()];
    if (!release) {
        release = std::make_unique<QTimer>();
        release->setSingleShot(true);
        connect(release.get(), &QTimer::timeout, this, [this, held = event->key()] { LetGo(held); });
    }
    release->stop();
    if (key) Tell([=](CWnd* w) { WindowEvents::KeyDown(w, key); });
    if (Owner()) QAbstractScrollArea::keyPressEvent(event);
    event->accept();
}

void ViewWidget::keyReleaseEvent(QKeyEvent* event) {
    const auto held = held_.find(event->key());
    if (!event->isAutoRepeat() && held != held_.end()) held->second->start(kReleaseDelayMs);
}

void ViewWidget::LetGo(int key) {
    const auto held = held_.find(key);
    if (held == held_.end()) return;
    // The timer may be the sender of the signal being handled.
    held->second.release()->deleteLater();
    held_.erase(held);
    if (const UINT code = VirtualKeyOf(key)) Tell([=](CWnd* w) { WindowEvents::KeyUp(w, code); });
}

void ViewWidget::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    Tell([](CWnd* w) { WindowEvents::Focus(w); });
}

void ViewWidget::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    while (!held_.empty()) LetGo(held_.begin()->first);
    Tell([](CWnd* w) { WindowEvents::FocusLost(w); });
}

void ViewWidget::ConnectScrollBar(int bar, QScrollBar* native) {
    connect(native, &QScrollBar::actionTriggered, this,
            [=, this](int action) { Scrolled(bar, native, action); });
    connect(native, &QScrollBar::sliderReleased, this, [=, this] {
        Tell([=](CWnd* w) { WindowEvents::Scroll(w, bar, SB_THUMBPOSITION, native->sliderPosition()); });
        Tell([=](CWnd* w) { WindowEvents::Scroll(w, bar, SB_ENDSCROLL, 0); });
    });
}

void ViewWidget::Scrolled(int bar, QScrollBar* native, int action) {
    const DWORD bit = bar == SB_HORZ ? WS_HSCROLL : WS_VSCROLL;
    if (!Owner() || !(Owner()->GetStyle() & bit)) return;
    UINT code = SB_THUMBPOSITION;
    switch (action) {
        case QAbstractSlider::SliderSingleStepSub:
            code = SB_LINELEFT;
            break;
        case QAbstractSlider::SliderSingleStepAdd:
            code = SB_LINERIGHT;
            break;
        case QAbstractSlider::SliderPageStepSub:
            code = SB_PAGELEFT;
            break;
        case QAbstractSlider::SliderPageStepAdd:
            code = SB_PAGERIGHT;
            break;
        case QAbstractSlider::SliderToMinimum:
            code = SB_LEFT;
            break;
        case QAbstractSlider::SliderToMaximum:
            code = SB_RIGHT;
            break;
        default:
            code = native->isSliderDown() ? SB_THUMBTRACK : SB_THUMBPOSITION;
    }
    const int position = native->sliderPosition();
    Tell([=](CWnd* w) { WindowEvents::Scroll(w, bar, code, position); });
    // The toolkit has moved the slider ahead of the value and would follow it now.
    if (!native->isSliderDown()) native->setSliderPosition(native->value());
}

}  // namespace

NativeWindow* NewViewWidget(CWnd* owner) { return new ViewWidget(owner); }
