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
    CRect NormalRect() override { return m_normal; }
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
    CRect m_normal;
    QRect m_normalInUnits;
    bool m_restoring = false;
};

template <class Base>
void Framed<Base>::Follow() {
    const QRect now = this->geometry();
    if (m_restoring || this->isMinimized() || this->isMaximized() || now == m_normalInUnits) return;
    m_normalInUnits = now;
    m_normal = PixelsOf(now);
}

template <class Base>
void Framed<Base>::SetNormalRect(const CRect& rect) {
    m_restoring = true;
    if (this->isMinimized() || this->isMaximized()) this->showNormal();
    this->setGeometry(UnitsOf(rect));
    m_restoring = false;
    m_normal = rect;
    m_normalInUnits = this->geometry();
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
    explicit ChildFrameWidget(CWnd* owner) : Framed(owner), m_body(new QMainWindow) {
        m_body->setWindowFlags(Qt::Widget);
        setWidget(m_body);
        // The toolkit gives the system menu every shortcut for closing; Ctrl+W is the program's to give.
        for (QAction* action : systemMenu()->actions())
            if (!action->shortcut().isEmpty()) action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F4));
    }

    QMainWindow* Body() override { return m_body; }
    void Adopt(QWidget* child, UINT id) override { AdoptInMainWindow(*m_body, child, id); }
    // So that another child frame becomes the active one.
    void Retire() override {
        if (mdiArea()) mdiArea()->removeSubWindow(this);
    }

  private:
    QMainWindow* m_body;
};

class MdiFrameWidget : public FrameWidget {
  public:
    explicit MdiFrameWidget(CWnd* owner) : FrameWidget(owner), m_area(new QMdiArea) {
        m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        // Closing a child frame leads back to the one used before it.
        m_area->setActivationOrder(QMdiArea::ActivationHistoryOrder);
        setCentralWidget(m_area);
        connect(m_area, &QMdiArea::subWindowActivated, this,
                [this] { Activated(m_area->currentSubWindow()); });
    }
    ~MdiFrameWidget() override {
        // The area outlives this part of the object and would still report.
        m_area->disconnect(this);
    }

    QMdiArea* MdiArea() override { return m_area; }
    void Adopt(QWidget* child, UINT id) override {
        if (!qobject_cast<QMdiSubWindow*>(child)) return FrameWidget::Adopt(child, id);
        const QSize area = m_area->viewport()->size();
        m_area->addSubWindow(child);
        child->resize(area * 2 / 3);
    }

  private:
    void Activated(QMdiSubWindow* now) {
        if (now == m_active) return;
        const QPointer<QMdiSubWindow> before = std::exchange(m_active, now);
        if (NativeWindow* native = Of(before))
            native->Tell([](CWnd* w) { WindowEvents::FrameActivated(w, false); });
        if (NativeWindow* native = Of(m_active))
            native->Tell([](CWnd* w) { WindowEvents::FrameActivated(w, true); });
    }

    QMdiArea* m_area;
    QPointer<QMdiSubWindow> m_active;
};

}  // namespace

NativeWindow* NewFrameWidget(CWnd* owner) { return new FrameWidget(owner); }
NativeWindow* NewMdiFrameWidget(CWnd* owner) { return new MdiFrameWidget(owner); }
NativeWindow* NewChildFrameWidget(CWnd* owner) { return new ChildFrameWidget(owner); }
