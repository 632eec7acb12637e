#include "platform/dialog/CPropertySheet.h"

#include <QDialog>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStyleOptionTabWidgetFrame>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>

#include "platform/core/StringTable.h"
#include "platform/dialog/CPropertyPage.h"
#include "platform/dialog/DialogWidget.h"
#include "platform/window/Controls.h"
#include "platform/window/NativeWindow.h"

namespace {

// In dialog units.
constexpr int kMargin = 7;
constexpr int kGap = 4;
constexpr int kButtonWidth = 50;
constexpr int kButtonHeight = 14;
// A derived sheet may put so many buttons of its own left of the others.
constexpr int kOwnButtons = 2;

struct Button {
    UINT id;
    const char* text;
};
constexpr Button kSheetButtons[] = {{IDOK, "OK"}, {IDCANCEL, "Cancel"}, {ID_APPLY_NOW, "&Apply"}};
constexpr Button kWizardButtons[] = {{ID_WIZFINISH, "&Finish"}, {IDCANCEL, "Cancel"}};

// The tabs and the frame below them. The pages stand before it, as windows of the sheet.
class SheetTabs : public QTabWidget {
  public:
    using QTabWidget::QTabWidget;
    QRect Contents() const {
        QStyleOptionTabWidgetFrame option;
        initStyleOption(&option);
        return style()->subElementRect(QStyle::SE_TabWidgetTabContents, &option, this);
    }
};

SheetTabs* TabsOf(const QWidget& sheet) {
    return dynamic_cast<SheetTabs*>(FindControl(sheet, AFX_IDC_TAB_CONTROL));
}

CString StringOf(UINT id) {
    const char* const text = FindStringResource(id);
    return text ? text : "";
}

}  // namespace

IMPLEMENT_DYNAMIC(CPropertySheet, CDialog)

CPropertySheet::CPropertySheet(UINT captionId, CWnd* parent, UINT selectPage)
    : CPropertySheet(StringOf(captionId).GetString(), parent, selectPage) {}

CPropertySheet::CPropertySheet(LPCSTR caption, CWnd* parent, UINT selectPage)
    : CDialog(UINT{0}, parent), m_caption(caption), m_first(selectPage) {}

CPropertySheet::~CPropertySheet() {
    for (CPropertyPage* const page : m_pages) page->m_sheet = nullptr;
}

void CPropertySheet::AddPage(CPropertyPage* page) {
    if (!page || page->m_sheet || GetSafeHwnd()) return;
    page->m_sheet = this;
    m_pages.push_back(page);
}

void CPropertySheet::RemovePage(CPropertyPage* page) {
    const auto found = std::find(m_pages.begin(), m_pages.end(), page);
    if (found == m_pages.end()) return;
    const auto place = static_cast<int>(found - m_pages.begin());
    page->m_sheet = nullptr;
    m_pages.erase(found);
    if (GetSafeHwnd()) {
        const QSignalBlocker quiet(TabsOf(*GetSafeHwnd()));
        if (SheetTabs* const tabs = TabsOf(*GetSafeHwnd())) tabs->removeTab(place);
        if (page->GetSafeHwnd()) page->ShowWindow(SW_HIDE);
    }
    if (place < m_active) --m_active;
    if (place != m_active) return;
    m_active = -1;
    if (GetSafeHwnd() && GetPage(0)) SetActivePage(0);
}

CPropertyPage* CPropertySheet::GetPage(int page) const {
    return page >= 0 && page < GetPageCount() ? m_pages[static_cast<std::size_t>(page)] : nullptr;
}

bool CPropertySheet::Has(const CPropertyPage* page) const {
    return std::find(m_pages.begin(), m_pages.end(), page) != m_pages.end();
}

int CPropertySheet::OnCreate(CREATESTRUCT* create) {
    if (CWnd::OnCreate(create) == -1) return -1;
    m_active = -1;
    if (!IsWizard()) BuildTabs();
    BuildPropPageArray();
    if (!GetSafeHwnd() || m_pages.empty()) return -1;
    for (const CPropertyPage* const page : m_pages)
        if (!page->GetSafeHwnd() || page->CWnd::GetParent() != this) return -1;
    BuildButtons();
    ResizePropPages();
    SetActivePage(GetPage(static_cast<int>(m_first)) ? static_cast<int>(m_first) : 0);
    if (!GetSafeHwnd()) return -1;
    OnInitDialog();
    return 0;
}

void CPropertySheet::BuildTabs() {
    QWidget& sheet = *GetSafeHwnd();
    auto* const tabs = new SheetTabs(&sheet);
    tabs->setUsesScrollButtons(false);
    MakeControl(*tabs, AFX_IDC_TAB_CONTROL);
    for (const CPropertyPage* const page : m_pages)
        tabs->addTab(new QWidget, QString::fromUtf8(page->Caption().GetString()));
    const auto choose = [this](int page) {
        if (NativeWindow* const native = NativeWindow::Of(GetSafeHwnd()))
            native->Tell([&](CWnd*) { SetActivePage(page); });
    };
    QObject::connect(tabs, &QTabWidget::currentChanged, tabs, choose);
    const auto shortcut = [&](const QKeySequence& key, int step) {
        auto* const keys = new QShortcut(key, &sheet);
        QObject::connect(keys, &QShortcut::activated, tabs, [this, step, choose] {
            const int count = GetPageCount();
            if (count > 0) choose((m_active + step + count) % count);
            GiveFocus();
        });
    };
    shortcut(QKeySequence(Qt::CTRL | Qt::Key_Tab), 1);
    shortcut(QKeySequence(Qt::CTRL | Qt::Key_PageDown), 1);
    // With Shift the key is called another.
    shortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), -1);
    shortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab), -1);
    shortcut(QKeySequence(Qt::CTRL | Qt::Key_PageUp), -1);
}

void CPropertySheet::BuildPropPageArray() {
    for (CPropertyPage* const page : std::vector(m_pages)) {
        // One that is open somewhere stays there.
        if (!Has(page) || page->GetSafeHwnd()) continue;
        page->Create(nullptr, page->Caption(), WS_CHILD, CRect(), this, 0);
        if (!GetSafeHwnd()) return;
        page->ShowWindow(SW_HIDE);
    }
}

void CPropertySheet::BuildButtons() {
    QWidget& sheet = *GetSafeHwnd();
    const auto add = [&](const Button& row) {
        auto* const button = new QPushButton(QString::fromUtf8(row.text), &sheet);
        button->setDefault(row.id == IDOK || row.id == ID_WIZFINISH);
        MakeControl(*button, row.id);
        return button;
    };
    if (IsWizard()) {
        for (const Button& row : kWizardButtons) add(row);
        return;
    }
    for (const Button& row : kSheetButtons)
        if (row.id != ID_APPLY_NOW || !(m_psh.dwFlags & PSH_NOAPPLYNOW)) add(row);
    ShowWhetherModified();
}

void CPropertySheet::ResizePropPages() {
    QWidget& sheet = *GetSafeHwnd();
    const DialogUnits units = DialogUnitsOf(sheet.font());
    const auto across = [&](int length) { return static_cast<int>(std::lround(length * units.x)); };
    const auto down = [&](int length) { return static_cast<int>(std::lround(length * units.y)); };

    std::vector<QPushButton*> buttons;
    QSize one(across(kButtonWidth), down(kButtonHeight));
    for (const UINT id : {UINT{ID_WIZFINISH}, UINT{IDOK}, UINT{IDCANCEL}, ID_APPLY_NOW})
        if (auto* const button = qobject_cast<QPushButton*>(FindControl(sheet, id))) {
            buttons.push_back(button);
            one = one.expandedTo(button->sizeHint());
        }
    const int pitch = one.width() + across(kGap);
    const auto places = static_cast<int>(buttons.size()) + (IsWizard() ? 0 : kOwnButtons);

    QSize largest;
    for (const CPropertyPage* const page : m_pages)
        largest = largest.expandedTo(page->GetSafeHwnd()->minimumSize());
    QRect area(across(kMargin), down(kMargin), 0, 0);
    QRect inside;
    if (SheetTabs* const tabs = TabsOf(sheet)) {
        for (int i = 0; i < tabs->count(); ++i) tabs->widget(i)->setMinimumSize(largest);
        area.setSize(tabs->sizeHint().expandedTo(tabs->minimumSizeHint()));
        area.setWidth(std::max(area.width(), places * pitch - across(kGap)));
        tabs->setGeometry(area);
        inside = tabs->Contents().translated(area.topLeft());
    } else {
        area.setSize({std::max(largest.width(), places * pitch - across(kGap)), largest.height()});
        inside = area;
    }
    for (const CPropertyPage* const page : m_pages) page->GetSafeHwnd()->setGeometry(inside);

    const int top = area.bottom() + 1 + down(kGap);
    int left = area.right() + 1 - static_cast<int>(buttons.size()) * pitch + across(kGap);
    for (QPushButton* const button : buttons) {
        button->setGeometry(QRect(QPoint(left, top), one));
        left += pitch;
    }
    sheet.setFixedSize(area.right() + 1 + across(kMargin), top + one.height() + down(kMargin));
}

void CPropertySheet::GiveFocus() {
    if (const CPropertyPage* const page = GetActivePage()) FocusFirst(*page->GetSafeHwnd());
}

void CPropertySheet::ShowPage(int page) {
    if (CPropertyPage* const before = GetActivePage(); before && before->GetSafeHwnd() && page != m_active)
        before->ShowWindow(SW_HIDE);
    m_active = page;
    if (SheetTabs* const tabs = TabsOf(*GetSafeHwnd())) {
        const QSignalBlocker quiet(tabs);
        tabs->setCurrentIndex(page);
    }
    QWidget* const window = GetActivePage()->GetSafeHwnd();
    window->show();
    window->raise();
}

bool CPropertySheet::LeaveActivePage() {
    CPropertyPage* const page = GetActivePage();
    return !page || page->OnKillActive();
}

BOOL CPropertySheet::SetActivePage(int page) {
    CPropertyPage* const wanted = GetPage(page);
    if (!wanted) return FALSE;
    if (!GetSafeHwnd()) {
        m_first = static_cast<UINT>(page);
        return TRUE;
    }
    if (page == m_active) return TRUE;
    if (SheetTabs* const tabs = TabsOf(*GetSafeHwnd())) {
        // The tab follows when the page shown lets go.
        const QSignalBlocker quiet(tabs);
        tabs->setCurrentIndex(m_active);
    }
    // Handlers may end the sheet, or one of the pages.
    if (!LeaveActivePage() || !GetSafeHwnd() || GetPage(page) != wanted) return FALSE;
    const int before = m_active;
    ShowPage(page);
    if (wanted->OnSetActive()) return TRUE;
    if (GetSafeHwnd() && GetPage(before)) {
        ShowPage(before);
        GetPage(before)->OnSetActive();
    }
    return FALSE;
}

BOOL CPropertySheet::SetActivePage(CPropertyPage* page) {
    const auto found = std::find(m_pages.begin(), m_pages.end(), page);
    return found != m_pages.end() && SetActivePage(static_cast<int>(found - m_pages.begin()));
}

void CPropertySheet::SetWizardButtons(DWORD flags) {
    CWnd* const finish = GetDlgItem(ID_WIZFINISH);
    if (!finish) return;
    finish->ShowWindow(flags & (PSWIZB_FINISH | PSWIZB_DISABLEDFINISH) ? SW_SHOW : SW_HIDE);
    finish->EnableWindow(!(flags & PSWIZB_DISABLEDFINISH));
}

void CPropertySheet::SetFinishText(LPCSTR text) {
    if (CWnd* const finish = GetDlgItem(ID_WIZFINISH)) {
        finish->ShowWindow(SW_SHOW);
        finish->SetWindowText(text);
    }
}

bool CPropertySheet::OnControlMsg(UINT id, UINT code) {
    if (code == BN_CLICKED && id == ID_APPLY_NOW) {
        OnApplyNow();
        return true;
    }
    if (code == BN_CLICKED && id == ID_WIZFINISH) {
        OnFinish();
        return true;
    }
    return CDialog::OnControlMsg(id, code);
}

void CPropertySheet::ShowWhetherModified() {
    const bool modified = std::any_of(m_pages.begin(), m_pages.end(),
                                      [](const CPropertyPage* page) { return page->m_modified; });
    if (CWnd* const apply = GetDlgItem(ID_APPLY_NOW)) apply->EnableWindow(modified);
}

BOOL CPropertySheet::OnInitDialog() { return TRUE; }

bool CPropertySheet::ApplyPages() {
    for (CPropertyPage* const page : std::vector(m_pages)) {
        if (!Has(page)) continue;
        if (!page->OnApply()) {
            SetActivePage(page);
            return false;
        }
        page->m_modified = false;
    }
    ShowWhetherModified();
    return true;
}

BOOL CPropertySheet::OnApplyNow() {
    if (!LeaveActivePage() || !ApplyPages()) return FALSE;
    // Pages let go of what they show when they are left.
    if (GetActivePage() && GetSafeHwnd()) GetActivePage()->OnSetActive();
    return TRUE;
}

void CPropertySheet::OnOK() {
    if (!IsWizard() && LeaveActivePage() && GetSafeHwnd() && ApplyPages()) EndDialog(IDOK);
}

void CPropertySheet::OnCancel() {
    for (CPropertyPage* const page : std::vector(m_pages))
        if (Has(page)) page->OnCancel();
    EndDialog(IDCANCEL);
}

void CPropertySheet::OnFinish() {
    CPropertyPage* const page = GetActivePage();
    if (page && page->OnWizardFinish()) EndDialog(ID_WIZFINISH);
}
