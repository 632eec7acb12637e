#include "platform/window/CMDIFrameWnd.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <algorithm>
#include <utility>

#include "platform/window/CDocument.h"
#include "platform/window/CMDIChildWnd.h"
#include "platform/window/CView.h"
#include "platform/window/CWindowApp.h"
#include "platform/window/CommandIds.h"
#include "platform/window/NativeWindow.h"

IMPLEMENT_DYNCREATE(CMDIFrameWnd, CFrameWnd)

const CommandRow<CMDIFrameWnd> CMDIFrameWnd::kCommands[] = {
    {ID_WINDOW_CASCADE, ID_WINDOW_TILE_VERT, &CMDIFrameWnd::OnWindowCommand,
     &CMDIFrameWnd::OnUpdateWindowCommand},
    {ID_NEXT_PANE, ID_PREV_PANE, &CMDIFrameWnd::OnWindowCommand, &CMDIFrameWnd::OnUpdateWindowCommand},
};

namespace {

CMDIChildWnd* ChildOf(QMdiSubWindow* window) {
    NativeWindow* native = NativeWindow::Of(window);
    return native ? static_cast<CMDIChildWnd*>(native->Owner()) : nullptr;
}

}  // namespace

NativeWindow* CMDIFrameWnd::NewNative() { return NewMdiFrameWidget(this); }

CMDIChildWnd* CMDIFrameWnd::MDIGetActive() const {
    return GetSafeHwnd() ? ChildOf(GetNative()->MdiArea()->currentSubWindow()) : nullptr;
}

void CMDIFrameWnd::MDIActivate(CMDIChildWnd* child) {
    if (!GetSafeHwnd() || !child || !child->GetSafeHwnd()) return;
    GetNative()->MdiArea()->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(child->GetSafeHwnd()));
}

std::vector<CMDIChildWnd*> CMDIFrameWnd::GetChildren() const {
    std::vector<CMDIChildWnd*> children;
    if (!GetSafeHwnd()) return children;
    for (QMdiSubWindow* window : GetNative()->MdiArea()->subWindowList())
        if (CMDIChildWnd* child = ChildOf(window)) children.push_back(child);
    return children;
}

void CMDIFrameWnd::MDINext(bool backwards) {
    if (!GetSafeHwnd()) return;
    QMdiArea* area = GetNative()->MdiArea();
    backwards ? area->activatePreviousSubWindow() : area->activateNextSubWindow();
}

void CMDIFrameWnd::MDICascade() {
    if (GetSafeHwnd()) GetNative()->MdiArea()->cascadeSubWindows();
}

void CMDIFrameWnd::MDITile(MdiTile direction) {
    std::vector<QWidget*> windows;
    for (CMDIChildWnd* child : GetChildren())
        if (child->IsWindowVisible() && !child->IsIconic()) windows.push_back(child->GetSafeHwnd());
    if (windows.empty()) return;
    const QRect area = GetNative()->MdiArea()->viewport()->rect();
    const int count = static_cast<int>(windows.size());
    for (int i = 0; i < count; ++i) {
        windows[i]->showNormal();
        const auto share = [i, count](int length) {
            return std::pair(length * i / count, length * (i + 1) / count - length * i / count);
        };
        const auto [top, height] = share(area.height());
        const auto [left, width] = share(area.width());
        windows[i]->setGeometry(direction == MdiTile::Horizontal ? QRect(0, top, area.width(), height)
                                                                 : QRect(left, 0, width, area.height()));
    }
}

CFrameWnd* CMDIFrameWnd::GetActiveFrame() {
    CMDIChildWnd* child = MDIGetActive();
    return child ? static_cast<CFrameWnd*>(child) : this;
}

CDocument* CMDIFrameWnd::GetActiveDocument() {
    CMDIChildWnd* child = MDIGetActive();
    return child ? child->GetActiveDocument() : CFrameWnd::GetActiveDocument();
}

bool CMDIFrameWnd::OnCmdMsg(UINT id, CCmdUI* update) {
    if (CMDIChildWnd* child = MDIGetActive(); child && child->OnCmdMsg(id, update)) return true;
    // Without a child frame there is nothing to close; the program ends with ID_APP_EXIT.
    if (id == ID_FILE_CLOSE) return false;
    return RouteCommand(*this, kCommands, id, update) || CFrameWnd::OnCmdMsg(id, update);
}

bool CMDIFrameWnd::MayClose() {
    std::vector<CDocument*> documents;
    for (CMDIChildWnd* child : GetChildren())
        for (const CView* view : child->GetViews())
            if (view->GetDocument()) documents.push_back(view->GetDocument());
    std::sort(documents.begin(), documents.end());
    documents.erase(std::unique(documents.begin(), documents.end()), documents.end());
    // While one question is open another document may end.
    for (CDocument* document : documents)
        if (!document->GetViews().empty() && !document->SaveModified()) return false;
    return true;
}

void CMDIFrameWnd::OnWindowCommand(UINT id) {
    switch (id) {
        case ID_WINDOW_CASCADE:
            return MDICascade();
        case ID_WINDOW_TILE_HORZ:
            return MDITile(MdiTile::Horizontal);
        case ID_WINDOW_TILE_VERT:
            return MDITile(MdiTile::Vertical);
        default:
            return MDINext(id == ID_PREV_PANE);
    }
}

void CMDIFrameWnd::OnUpdateWindowCommand(CCmdUI* state) { state->Enable(!GetChildren().empty()); }
