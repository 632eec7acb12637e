#include "platform/window/CFrameWnd.h"

#include <QIcon>
#include <QMainWindow>
#include <QToolBar>

#include "platform/window/CDocument.h"
#include "platform/window/CStatusBar.h"
#include "platform/window/CView.h"
#include "platform/window/CWindowApp.h"
#include "platform/window/CommandActions.h"
#include "platform/window/CommandIds.h"
#include "platform/window/CommandResources.h"
#include "platform/window/Icons.h"
#include "platform/window/NativeWindow.h"

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)

const CommandRow<CFrameWnd> CFrameWnd::kEveryFrame[] = {
    {ID_FILE_CLOSE, ID_FILE_CLOSE, &CFrameWnd::OnClose},
};

const CommandRow<CFrameWnd> CFrameWnd::kTopFrame[] = {
    {ID_APP_EXIT, ID_APP_EXIT, &CFrameWnd::OnClose},
    {ID_VIEW_TOOLBAR, ID_VIEW_TOOLBAR, &CFrameWnd::OnViewBar, &CFrameWnd::OnUpdateViewBar},
    {ID_VIEW_STATUS_BAR, ID_VIEW_STATUS_BAR, &CFrameWnd::OnViewBar, &CFrameWnd::OnUpdateViewBar},
};

NativeWindow* CFrameWnd::NewNative() { return NewFrameWidget(this); }

BOOL CFrameWnd::LoadFrame(UINT resourceId, DWORD style, CWnd* parent, CCreateContext* context) {
    const HandlingScope scope;
    m_title.LoadString(resourceId);
    if (Create(nullptr, m_title, style & ~WS_VISIBLE, CRect(), parent, 0, context)) {
        if (!GetParentFrame()) BuildMenuBar(*GetNative(), FindMenuResource(resourceId));
        OnUpdateFrameTitle();
    }
    if (GetSafeHwnd()) {
        GetSafeHwnd()->setWindowIcon(IconOf("application"));
        if (style & WS_VISIBLE) ShowWindow(SW_SHOW);
    }
    if (GetSafeHwnd()) return TRUE;
    if (context && context->m_pCurrentDoc) context->m_pCurrentDoc->EndUnlessShown();
    return FALSE;
}

int CFrameWnd::OnCreate(CREATESTRUCT* create) {
    if (create->lpszName && m_title.IsEmpty()) m_title = create->lpszName;
    return CWnd::OnCreate(create) == 0 && OnCreateClient(create, create->lpCreateParams) ? 0 : -1;
}

BOOL CFrameWnd::OnCreateClient(CREATESTRUCT*, CCreateContext* context) {
    return !context || !context->m_pNewViewClass || CreateView(context) != nullptr;
}

CView* CFrameWnd::CreateView(CCreateContext* context, UINT id) {
    CObject* made = context->m_pNewViewClass->CreateObject();
    if (!made || !made->IsKindOf(RUNTIME_CLASS(CView))) {
        delete made;
        return nullptr;
    }
    auto* view = static_cast<CView*>(made);
    // A view that refuses has deleted itself with its window, or has never had one.
    const bool created = view->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(), this, id, context);
    return created ? view : nullptr;
}

std::vector<CView*> CFrameWnd::GetViews() const {
    std::vector<CView*> views;
    if (!GetSafeHwnd()) return views;
    for (QWidget* child : GetSafeHwnd()->findChildren<QWidget*>()) {
        NativeWindow* native = NativeWindow::Of(child);
        CWnd* window = native ? native->Owner() : nullptr;
        if (!window || !window->IsKindOf(RUNTIME_CLASS(CView)) || window->GetParentFrame() != this) continue;
        views.push_back(static_cast<CView*>(window));
    }
    return views;
}

void CFrameWnd::InitialUpdateFrame(CDocument*, BOOL makeVisible) {
    const HandlingScope scope;
    // Shown first, so that the views know their size; nothing is painted before the next message.
    if (makeVisible) ActivateFrame();
    // Views may choose another title.
    OnUpdateFrameTitle();
    const std::vector<CView*> views = GetViews();
    // A view may end itself, others or this frame.
    for (CView* view : views)
        if (view->GetSafeHwnd()) view->OnInitialUpdate();
    if (m_activeView) return;
    if (const std::vector<CView*> left = GetViews(); !left.empty()) SetActiveView(left.front());
}

void CFrameWnd::ActivateFrame(int how) {
    if (how != -1 || !IsWindowVisible()) ShowWindow(how == -1 ? SW_SHOW : how);
    if (!GetSafeHwnd()) return;
    GetSafeHwnd()->raise();
    GetSafeHwnd()->activateWindow();
}

void CFrameWnd::SetActiveView(CView* view, BOOL notify) {
    CView* const before = m_activeView;
    if (view == before) return;
    const HandlingScope scope;
    m_activeView = view;
    if (!notify) return;
    if (before) before->OnActivateView(FALSE, view, before);
    // The handler may have chosen another view.
    if (view && m_activeView == view) view->OnActivateView(TRUE, view, before);
}

CDocument* CFrameWnd::GetActiveDocument() { return m_activeView ? m_activeView->GetDocument() : nullptr; }

CFrameWnd* CFrameWnd::GetActiveFrame() { return this; }

CFrameWnd* CFrameWnd::GetTopLevelFrame() {
    CFrameWnd* top = this;
    while (CFrameWnd* outer = top->GetParentFrame()) top = outer;
    return top;
}

void CFrameWnd::SetMessageText(LPCSTR text) {
    if (m_statusBar) {
        m_statusBar->SetPaneText(0, text);
    } else if (CFrameWnd* outer = GetParentFrame()) {
        outer->SetMessageText(text);
    }
}

void CFrameWnd::OnUpdateFrameTitle() {
    if (!(GetStyle() & FWS_ADDTOTITLE)) return;
    const CDocument* document = GetActiveDocument();
    const bool withDocument = document && !document->GetTitle().IsEmpty();
    SetWindowText(withDocument ? document->GetTitle() + " - " + m_title : m_title);
}

bool CFrameWnd::OnCmdMsg(UINT id, CCmdUI* update) {
    if (m_activeView && m_activeView->OnCmdMsg(id, update)) return true;
    if (RouteCommand(*this, kEveryFrame, id, update)) return true;
    // The frame around a child frame comes next; it asks the application itself.
    if (GetParentFrame()) return false;
    if (RouteCommand(*this, kTopFrame, id, update)) return true;
    CWindowApp* application = CWindowApp::Get();
    return application && application->OnCmdMsg(id, update);
}

void CFrameWnd::UpdateCommands() {
    if (GetSafeHwnd()) RefreshCommands(*GetNative());
}

void CFrameWnd::DragAcceptFiles(BOOL accept) {
    if (GetSafeHwnd()) GetSafeHwnd()->setAcceptDrops(accept != FALSE);
}

void CFrameWnd::OnDropFiles(const std::vector<CString>&) {}

bool CFrameWnd::MayClose() {
    for (CView* view : GetViews()) {
        CDocument* document = view->GetDocument();
        if (document && !document->CanCloseFrame(this)) return false;
    }
    return true;
}

void CFrameWnd::OnClose() {
    // While the user thinks about the first question there is no second one.
    if (m_closing) return;
    const HandlingScope scope;
    m_closing = true;
    if (MayClose()) DestroyWindow();
    m_closing = false;
}

void CFrameWnd::OnViewBar(UINT id) {
    if (GetSafeHwnd()) ShowBars(*GetNative(), id, !AreBarsShown(*GetNative(), id));
}

void CFrameWnd::OnUpdateViewBar(CCmdUI* state) {
    if (!GetSafeHwnd()) return state->Enable(FALSE);
    state->Enable(HasBars(*GetNative(), state->m_nID));
    state->SetCheck(AreBarsShown(*GetNative(), state->m_nID));
}

void CFrameWnd::FrameActivated(bool active) {
    if (CView* view = m_activeView) view->OnActivateView(active, view, view);
}

void CFrameWnd::PostNcDestroy() {
    if (CWindowApp* application = CWindowApp::Get()) application->FrameGone(this);
    Bury(this);
}
