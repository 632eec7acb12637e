#include "platform/window/CDocument.h"

#include <algorithm>

#include "platform/core/MessageBox.h"
#include "platform/window/CFrameWnd.h"
#include "platform/window/CView.h"
#include "platform/window/Graveyard.h"

IMPLEMENT_DYNAMIC(CDocument, CCmdTarget)

CDocument::~CDocument() {
    for (CView* view : m_views) view->m_pDocument = nullptr;
}

void CDocument::AddView(CView* view) {
    if (!view || view->m_pDocument == this) return;
    if (view->m_pDocument) view->m_pDocument->RemoveView(view);
    view->m_pDocument = this;
    m_views.push_back(view);
}

void CDocument::RemoveView(CView* view) {
    if (std::erase(m_views, view) == 0) return;
    view->m_pDocument = nullptr;
    EndUnlessShown();
}

void CDocument::EndUnlessShown() {
    if (!m_bAutoDelete || m_ended || !m_views.empty()) return;
    m_ended = true;
    Bury(this);
}

void CDocument::UpdateAllViews(CView* sender, long hint, CObject* hintObject) {
    const HandlingScope scope;
    const std::vector<CView*> views = m_views;
    for (CView* view : views) {
        if (view == sender || std::find(m_views.begin(), m_views.end(), view) == m_views.end()) continue;
        view->OnUpdate(sender, hint, hintObject);
    }
}

void CDocument::SetTitle(LPCSTR title) {
    m_title = title;
    for (CView* view : m_views)
        if (CFrameWnd* frame = view->GetParentFrame()) frame->OnUpdateFrameTitle();
}

void CDocument::SetPathName(LPCSTR pathName) {
    m_pathName = pathName;
    SetTitle(m_pathName.Mid(m_pathName.ReverseFind('/') + 1));
}

BOOL CDocument::SaveModified() {
    if (!IsModified()) return TRUE;
    const HandlingScope scope;
    const CString question = "Save changes to " + (m_title.IsEmpty() ? CString("Untitled") : m_title) + "?";
    const int answer = AfxMessageBox(question, MB_YESNOCANCEL | MB_ICONQUESTION);
    // Ended while the question was open.
    if (m_ended) return TRUE;
    switch (answer) {
        case IDYES:
            return DoFileSave();
        case IDNO:
            return TRUE;
        default:
            return FALSE;
    }
}

BOOL CDocument::CanCloseFrame(CFrameWnd* frame) {
    for (const CView* view : m_views)
        if (view->GetParentFrame() != frame) return TRUE;
    return SaveModified();
}

BOOL CDocument::DoFileSave() { return TRUE; }
