#include "platform/window/CMDIFrameWnd.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyle>
#include <algorithm>
#include <cmath>
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

// The start and the length of one of `parts` equal parts of `length`.
std::pair<int, int> Share(int length, int part, int parts) {
    const int start = length * part / parts;
    return {start, length * (part + 1) / parts - start};
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

// Those on the screen, with the active one first.
std::vector<CMDIChildWnd*> CMDIFrameWnd::Arrangeable() const {
    std::vector<CMDIChildWnd*> frames = GetChildren();
    std::erase_if(frames,
                  [](const CMDIChildWnd* child) { return !child->IsWindowVisible() || child->IsIconic(); });
    const auto active = std::find(frames.begin(), frames.end(), MDIGetActive());
    if (active != frames.end()) std::rotate(frames.begin(), active, active + 1);
    return frames;
}

void CMDIFrameWnd::MDICascade() {
    const std::vector<CMDIChildWnd*> frames = Arrangeable();
    if (frames.empty()) return;
    const QMdiArea* const area = GetNative()->MdiArea();
    const QSize room = area->viewport()->size();
    const QSize size = room * 2 / 3;
    const int step = area->style()->pixelMetric(QStyle::PM_TitleBarHeight);
    // As many steps as the area has room for, then from its corner again.
    const int steps =
        1 + std::min(room.width() - size.width(), room.height() - size.height()) / std::max(1, step);
    for (std::size_t i = frames.size(); i-- > 0;) {
        const int place = static_cast<int>(frames.size() - 1 - i) % std::max(1, steps);
        QWidget* const window = frames[i]->GetSafeHwnd();
        window->showNormal();
        window->setGeometry(QRect(QPoint(place * step, place * step), size));
        window->raise();
    }
    MDIActivate(frames.front());
}

void CMDIFrameWnd::MDITile(MdiTile direction) {
    const std::vector<CMDIChildWnd*> frames = Arrangeable();
    if (frames.empty()) return;
    const QSize area = GetNative()->MdiArea()->viewport()->size();
    const bool columnsFirst = direction == MdiTile::Horizontal;
    const int count = static_cast<int>(frames.size());
    const int lines = static_cast<int>(std::sqrt(count));
    int next = 0;
    for (int line = 0; line < lines; ++line) {
        // The lines that hold one more come last.
        const int inLine = count / lines + (line >= lines - count % lines);
        for (int place = 0; place < inLine; ++place) {
            const auto [left, width] =
                columnsFirst ? Share(area.width(), line, lines) : Share(area.width(), place, inLine);
            const auto [top, height] =
                columnsFirst ? Share(area.height(), place, inLine) : Share(area.height(), line, lines);
            QWidget* const window = frames[static_cast<std::size_t>(next++)]->GetSafeHwnd();
            window->showNormal();
            window->setGeometry(left, top, width, height);
        }
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
