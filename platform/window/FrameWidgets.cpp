// The widgets of frames: a main window, the same with an area for child frames, and the child frame, which
// holds a main window of its own so that it can have toolbars.
#include <QAbstractEventDispatcher>
#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QUrl>
#include <utility>

#include "platform/core/Rounding.h"
#include "platform/window/CMessageBar.h"
#include "platform/window/CommandActions.h"
#include "platform/window/NativeWindow.h"

namespace {

void AdoptInMainWindow(QMainWindow& body, QWidget* child, UINT id) {
    if (auto* toolBar = qobject_cast<QToolBar*>(child)) return body.addToolBar(toolBar);
    if (auto* statusBar = qobject_cast<QStatusBar*>(child)) return body.setStatusBar(statusBar);
    if (id == AFX_IDW_PANE_FIRST) return body.setCentralWidget(child);
    if (id == AFX_IDW_MESSAGE_BAR) return body.setMenuWidget(child);
    child->setParent(&body);
}

std::vector<CString> LocalFiles(const QMimeData& data) {
    std::vector<CString> paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) paths.emplace_back(url.toLocalFile().toStdString());
    return paths;
}

// What main windows and child frames have in common: the toolkit's own normal rectangle is unknown for child
// frames, so it is followed here while the window is neither minimised nor maximised.
template <class Base>
class Framed : public Base, public NativeWindow {
  public:
    explicit Framed(CWnd* owner) : NativeWindow(owner) {}
    ~Framed() override { Sever(); }

    QWidget* Widget() override { return this; }
    void ApplyStyle(DWORD style) override;
    CRect NormalRect() override { return normal_; }
    void SetNormalRect(const CRect& rect) override;

  protected:
    void moveEvent(QMoveEvent* event) override {
        Base::moveEvent(event);
        Follow();
    }
    void resizeEvent(QResizeEvent* event) override {
        Base::resizeEvent(event);
        Follow();
        const int width = RoundHalfAway(this->width() * Scale());
        const int height = RoundHalfAway(this->height() * Scale());
        const UINT type = this->isMaximized()   ? SIZE_MAXIMIZED
                          : this->isMinimized() ? SIZE_MINIMIZED
                                                : SIZE_RESTORED;
        Tell([=](CWnd* w) { WindowEvents::Size(w, type, width, height); });
    }
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        Tell([](CWnd* w) { WindowEvents::Close(w); });
    }

  private:
    void Follow();

    // Both forms, because a rectangle set in pixels must be read back the same where the scale is a fraction.
    CRect normal_;
    QRect normalInUnits_;
    bool restoring_ = false;
};

template <class Base>
void Framed<Base>::Follow() {
    const QRect now = this->geometry();
    if (restoring_ || this->isMinimized() || this->isMaximized() || now == normalInUnits_) return;
    normalInUnits_ = now;
    normal_ = PixelsOf(now);
}

template <class Base>
void Framed<Base>::SetNormalRect(const CRect& rect) {
    restoring_ = true;
    if (this->isMinimized() || this->isMaximized()) this->showNormal();
    this->setGeometry(UnitsOf(rect));
    restoring_ = false;
    normal_ = rect;
    normalInUnits_ = this->geometry();
}

template <class Base>
void Framed<Base>::ApplyStyle(DWORD style) {
    const bool caption = (style & WS_CAPTION) == WS_CAPTION;
    if (caption == !(this->windowFlags() & Qt::FramelessWindowHint)) return;
    const bool shown = this->isVisible();
    const Qt::WindowFlags hints = Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                  Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint;
    Qt::WindowFlags flags = this->windowFlags() & ~(hints | Qt::FramelessWindowHint);
    flags |= caption ? hints : Qt::WindowFlags(Qt::FramelessWindowHint);
    this->setWindowFlags(flags);
    if (shown) this->show();
}

class FrameWidget : public Framed<QMainWindow> {
  public:
    explicit FrameWidget(CWnd* owner) : Framed(owner) {
        // A disabled command would ignore its shortcut: states must be right before a key counts.
        qApp->installEventFilter(this);
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                [this] { Refresh(); });
    }

    QMainWindow* Body() override { return this; }
    void Adopt(QWidget* child, UINT id) override { AdoptInMainWindow(*this, child, id); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ShortcutOverride) Refresh();
        return Framed::eventFilter(watched, event);
    }
    void dragEnterEvent(QDragEnterEvent* event) override {
        if (!LocalFiles(*event->mimeData()).empty()) event->acceptProposedAction();
    }
    void dropEvent(QDropEvent* event) override {
        const std::vector<CString> paths = LocalFiles(*event->mimeData());
        if (paths.empty()) return;
        event->acceptProposedAction();
        // After the drag has ended: the one that dragged waits for it, and the program may show a message.
        QTimer::singleShot(0, this,
                           [this, paths] { Tell([&paths](CWnd* w) { WindowEvents::DropFiles(w, paths); }); });
    }
    void changeEvent(QEvent* event) override {
        Framed::changeEvent(event);
        if (event->type() != QEvent::ActivationChange) return;
        const bool active = isActiveWindow();
        Tell([active](CWnd* w) { WindowEvents::FrameActivated(w, active); });
    }

  private:
    void Refresh() {
        if (isVisible() && Owner()) RefreshCommands(*this);
    }
};

class ChildFrameWidget : public Framed<QMdiSubWindow> {
  public:
    explicit ChildFrameWidget(CWnd* owner) : Framed(owner), body_(new QMainWindow) {
        body_->setWindowFlags(Qt::Widget);
        setWidget(body_);
        // The toolkit gives the system menu every shortcut for closing; Ctrl+W is the program's to give.
        for (QAction* action : systemMenu()->actions())
            if (!action->shortcut().isEmpty()) action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F4));
    }

    QMainWindow* Body() override { return body_; }
    void Adopt(QWidget* child, UINT id) override { AdoptInMainWindow(*body_, child, id); }
    // So that another child frame becomes the active one.
    void Retire() override {
        if (mdiArea()) mdiArea()->removeSubWindow(this);
    }

  private:
    QMainWindow* body_;
};

class MdiFrameWidget : public FrameWidget {
  public:
    explicit MdiFrameWidget(CWnd* owner) : FrameWidget(owner), area_(new QMdiArea) {
        area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        // Closing a child frame leads back to the one used before it.
        area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
        setCentralWidget(area_);
        connect(area_, &QMdiArea::subWindowActivated, this, [this] { Activated(area_->currentSubWindow()); });
    }
    ~MdiFrameWidget() override {
        // The area outlives this part of the object and would still report.
        area_->disconnect(this);
    }

    QMdiArea* MdiArea() override { return area_; }
    void Adopt(QWidget* child, UINT id) override {
        if (!qobject_cast<QMdiSubWindow*>(child)) return FrameWidget::Adopt(child, id);
        const QSize area = area_->viewport()->size();
        area_->addSubWindow(child);
        child->resize(area * 2 / 3);
    }

  private:
    void Activated(QMdiSubWindow* now) {
        if (now == active_) return;
        const QPointer<QMdiSubWindow> before = std::exchange(active_, now);
        if (NativeWindow* native = Of(before))
            native->Tell([](CWnd* w) { WindowEvents::FrameActivated(w, false); });
        if (NativeWindow* native = Of(active_))
            native->Tell([](CWnd* w) { WindowEvents::FrameActivated(w, true); });
    }

    QMdiArea* area_;
    QPointer<QMdiSubWindow> active_;
};

}  // namespace

NativeWindow* NewFrameWidget(CWnd* owner) { return new FrameWidget(owner); }
NativeWindow* NewMdiFrameWidget(CWnd* owner) { return new MdiFrameWidget(owner); }
NativeWindow* NewChildFrameWidget(CWnd* owner) { return new ChildFrameWidget(owner); }
