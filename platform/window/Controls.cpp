// How a CWnd stands for a control, and how controls report.
#include "platform/window/Controls.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <memory>

#include "platform/window/NativeWindow.h"

namespace {

constexpr char kId[] = "controlId";

// The property that a control's text is; null for a widget whose text is its title.
const char* TextProperty(const QWidget& control) {
    for (const char* const name : {"text", "currentText", "title"})
        if (control.metaObject()->indexOfProperty(name) >= 0) return name;
    return nullptr;
}

void Report(QWidget& control, UINT code) {
    const UINT id = ControlId(control);
    for (QWidget* around = control.parentWidget(); around; around = around->parentWidget()) {
        NativeWindow* const native = NativeWindow::Of(around);
        if (!native) continue;
        native->ControlUsed(control, code);
        const bool isClick = code == BN_CLICKED && qobject_cast<QAbstractButton*>(&control);
        return native->Tell([=](CWnd* w) {
            if (!w->OnControlMsg(id, code) && isClick) RunCommand(*w, id);
        });
    }
}

class FocusReporter : public QObject {
  public:
    explicit FocusReporter(QWidget& control) : QObject(&control), m_control(control) {
        control.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::FocusIn) Report(m_control, EN_SETFOCUS);
        if (event->type() == QEvent::FocusOut) Report(m_control, EN_KILLFOCUS);
        return false;
    }

  private:
    QWidget& m_control;
};

// A child of the widget that it speaks for, so that it goes with it.
class Attached : public QObject, public NativeWindow {
  public:
    Attached(CWnd* owner, QWidget& widget) : QObject(&widget), NativeWindow(owner), m_widget(widget) {
        widget.installEventFilter(this);
    }
    ~Attached() override {
        if (CWnd* const owner = ReleaseOwner()) WindowEvents::Gone(owner);
    }

    QWidget* Widget() override { return &m_widget; }
    void ApplyStyle(DWORD) override {}
    void SetText(const QString& text) override {
        const char* const name = TextProperty(m_widget);
        name ? (void)m_widget.setProperty(name, text) : NativeWindow::SetText(text);
    }
    void GetText(CString& text) override {
        if (const char* const name = TextProperty(m_widget))
            text = CString(m_widget.property(name).toString().toStdString());
    }
    bool LetOwnerGo() override {
        ReleaseOwner();
        return true;
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::FocusIn) Tell([](CWnd* w) { WindowEvents::Focus(w); });
        if (event->type() == QEvent::FocusOut) Tell([](CWnd* w) { WindowEvents::FocusLost(w); });
        return false;
    }
    // The owner is nobody else's.
    void Keep(std::unique_ptr<CWnd> standIn) { m_standIn = std::move(standIn); }
    bool IsStandIn() const { return m_standIn != nullptr; }

  private:
    QWidget& m_widget;
    std::unique_ptr<CWnd> m_standIn;
};

}  // namespace

void MakeControl(QWidget& widget, UINT id) {
    widget.setProperty(kId, id);
    new FocusReporter(widget);
    const auto reports = [&widget](UINT code) { return [&widget, code] { Report(widget, code); }; };
    if (auto* const button = qobject_cast<QAbstractButton*>(&widget))
        QObject::connect(button, &QAbstractButton::clicked, button, reports(BN_CLICKED));
    if (auto* const edit = qobject_cast<QLineEdit*>(&widget))
        QObject::connect(edit, &QLineEdit::textEdited, edit, reports(EN_CHANGE));
    if (auto* const combo = qobject_cast<QComboBox*>(&widget)) {
        QObject::connect(combo, &QComboBox::activated, combo, reports(CBN_SELCHANGE));
        QObject::connect(combo, &QComboBox::editTextChanged, combo, reports(CBN_EDITCHANGE));
    }
    if (auto* const list = qobject_cast<QListWidget*>(&widget)) {
        QObject::connect(list, &QListWidget::currentRowChanged, list, reports(LBN_SELCHANGE));
        QObject::connect(list, &QListWidget::itemDoubleClicked, list, reports(LBN_DBLCLK));
    }
}

UINT ControlId(const QWidget& widget) { return widget.property(kId).toUInt(); }

QWidget* FindControl(const QWidget& parent, UINT id) {
    for (QWidget* const widget : parent.findChildren<QWidget*>())
        if (ControlId(*widget) == id) return widget;
    return nullptr;
}

NativeWindow* AttachedTo(const QWidget& widget) {
    for (QObject* const child : widget.children())
        if (auto* const attached = dynamic_cast<Attached*>(child)) return attached;
    return nullptr;
}

BOOL CWnd::Attach(HWND window) {
    if (m_hWnd || !window) return FALSE;
    if (NativeWindow* const partner = NativeWindow::Of(window)) {
        auto* const attached = dynamic_cast<Attached*>(partner);
        if (!attached || (attached->Owner() && !attached->IsStandIn())) return FALSE;
        delete attached;
    }
    new Attached(this, *window);
    m_hWnd = window;
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
    return id != 0 && parent && parent->m_hWnd && Attach(FindControl(*parent->m_hWnd, id));
}

HWND CWnd::Detach() {
    const HWND window = m_hWnd;
    if (!window || !GetNative()->LetOwnerGo()) return nullptr;
    m_hWnd = nullptr;
    return window;
}

CWnd* CWnd::GetDlgItem(int id) const {
    QWidget* const widget = m_hWnd && id != 0 ? FindControl(*m_hWnd, static_cast<UINT>(id)) : nullptr;
    if (!widget) return nullptr;
    if (const NativeWindow* const native = NativeWindow::Of(widget); native && native->Owner())
        return native->Owner();
    auto standIn = std::make_unique<CWnd>();
    if (!standIn->Attach(widget)) return nullptr;
    CWnd* const made = standIn.get();
    static_cast<Attached*>(AttachedTo(*widget))->Keep(std::move(standIn));
    return made;
}

int CWnd::GetDlgCtrlID() const { return m_hWnd ? static_cast<int>(ControlId(*m_hWnd)) : 0; }

BOOL CWnd::EnableWindow(BOOL enable) {
    if (!m_hWnd) return FALSE;
    const BOOL wasDisabled = !m_hWnd->isEnabled();
    m_hWnd->setEnabled(enable != FALSE);
    return wasDisabled;
}

BOOL CWnd::IsWindowEnabled() const { return m_hWnd && m_hWnd->isEnabled(); }

bool CWnd::OnControlMsg(UINT id, UINT code) {
    CWnd* const around = GetParent();
    return around && around->OnControlMsg(id, code);
}
