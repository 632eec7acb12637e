#include "platform/window/CView.h"

#include "platform/window/CClientDC.h"
#include "platform/window/CDocument.h"
#include "platform/window/CFrameWnd.h"
#include "platform/window/CPrintInfo.h"
#include "platform/window/Graveyard.h"

IMPLEMENT_DYNAMIC(CView, CWnd)

CView::~CView() {
    // Destroyed before its window: OnDestroy will not be heard here any more.
    CFrameWnd* frame = GetParentFrame();
    if (frame && frame->GetActiveView() == this) frame->SetActiveView(nullptr, FALSE);
    if (m_pDocument) m_pDocument->RemoveView(this);
}

bool CView::OnCmdMsg(UINT id, CCmdUI* update) {
    return CWnd::OnCmdMsg(id, update) || (m_pDocument && m_pDocument->OnCmdMsg(id, update));
}

void CView::OnInitialUpdate() { OnUpdate(nullptr, 0, nullptr); }
void CView::OnPrepareDC(CDC*, CPrintInfo* info) {
    if (!info) return;
    info->m_bContinuePrinting = info->GetMaxPage() != CPrintInfo::kUnknown || info->m_nCurPage == 1;
}
void CView::OnUpdate(CView*, long, CObject*) { Invalidate(); }

void CView::OnActivateView(BOOL activate, CView* activated, CView*) {
    if (activate && activated == this) SetFocus();
}

int CView::OnCreate(CREATESTRUCT* create) {
    const CCreateContext* context = create->lpCreateParams;
    if (context && context->m_pCurrentDoc) context->m_pCurrentDoc->AddView(this);
    return CWnd::OnCreate(create);
}

void CView::OnDestroy() {
    CFrameWnd* frame = GetParentFrame();
    if (frame && frame->GetActiveView() == this) frame->SetActiveView(nullptr);
    CWnd::OnDestroy();
}

void CView::OnPaint() {
    CPaintDC dc(this);
    OnPrepareDC(&dc);
    OnDraw(&dc);
}

void CView::OnSetFocus(CWnd*) {
    CFrameWnd* frame = GetParentFrame();
    if (frame && frame->GetActiveView() != this) frame->SetActiveView(this);
}

void CView::PostNcDestroy() {
    CDocument* const document = m_pDocument;
    // The view goes before a document that goes with it.
    Bury(this);
    if (document) document->RemoveView(this);
}
