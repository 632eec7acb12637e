// What answers commands. A command travels from the active view to its document, its frame, the main frame
// and the application until one of them has a row for it. Each class keeps one table of rows and one
// override:
//
//   constexpr CommandRow<CGraph> kCommands[] = {
//       // id                handler                  update handler
//       {50021, 50021, &CGraph::OnModeEscape},
//       {50022, 50022, &CGraph::OnToggleLegend, &CGraph::OnUpdateToggleLegend},
//       {50000, 50005, &CGraph::OnZoom},  // one handler for a range: it is told the number
//   };
//   bool CGraph::OnCmdMsg(UINT id, CCmdUI* update) {
//       return RouteCommand(*this, kCommands, id, update) || CView::OnCmdMsg(id, update);
//   }
#pragma once

#include <cstddef>

#include "platform/core/CObject.h"
#include "platform/core/CString.h"
#include "platform/core/Types.h"

// The state of one command while an update handler decides on it; menus and toolbars show the result.
class CCmdUI {
  public:
    explicit CCmdUI(UINT id) : m_nID(id) {}

    void Enable(BOOL on = TRUE) { enabled_ = on != FALSE; }
    // 0: off; others: on. A command that was never given a check has no room for one.
    void SetCheck(int check = 1) {
        checkable_ = true;
        checked_ = check != 0;
    }
    // Replaces the command's text; the empty text hides the command.
    void SetText(const char* text) {
        text_ = text;
        hasText_ = true;
    }

    bool IsEnabled() const { return enabled_; }
    bool IsCheckable() const { return checkable_; }
    bool IsChecked() const { return checked_; }
    bool HasText() const { return hasText_; }
    const CString& GetText() const { return text_; }

    const UINT m_nID;

  private:
    bool enabled_ = true;
    bool checkable_ = false;
    bool checked_ = false;
    bool hasText_ = false;
    CString text_;
};

class CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)

  public:
    // With `update` null: runs command `id`; otherwise says what state it is in. False when neither this
    // object nor those that it passes commands to know the command.
    virtual bool OnCmdMsg(UINT id, CCmdUI* update);
    // Control `id` sends notification `code` (BN_CLICKED ...). A window that does not know it passes it on to
    // the window around it. False: nobody wanted it.
    virtual bool OnControlMsg(UINT id, UINT code);
};

// The state of command `id` as `target` sees it: disabled when nobody answers it.
CCmdUI QueryCommand(CCmdTarget& target, UINT id);
// Runs command `id` unless its update handler forbids it, as a menu would. False when it did not run.
bool RunCommand(CCmdTarget& target, UINT id);

template <class Target>
struct CommandHandler {
    constexpr CommandHandler() = default;
    constexpr CommandHandler(void (Target::*handler)()) : plain(handler) {}
    constexpr CommandHandler(void (Target::*handler)(UINT)) : numbered(handler) {}

    void (Target::*plain)() = nullptr;
    void (Target::*numbered)(UINT id) = nullptr;
};

// One row for notifications, in a table of its own: the controls first to last, inclusive.
template <class Target>
struct ControlRow {
    UINT code;
    UINT first;
    UINT last;
    CommandHandler<Target> handler;
};

template <class Target, std::size_t N>
bool RouteControl(Target& target, const ControlRow<Target> (&rows)[N], UINT id, UINT code) {
    for (const ControlRow<Target>& row : rows) {
        if (code != row.code || id < row.first || id > row.last) continue;
        row.handler.plain ? (target.*row.handler.plain)() : (target.*row.handler.numbered)(id);
        return true;
    }
    return false;
}

// One row: the numbers first to last, inclusive. Without an update handler the commands are always enabled.
template <class Target>
struct CommandRow {
    UINT first;
    UINT last;
    CommandHandler<Target> handler;
    void (Target::*update)(CCmdUI*) = nullptr;
};

template <class Target, std::size_t N>
bool RouteCommand(Target& target, const CommandRow<Target> (&rows)[N], UINT id, CCmdUI* update) {
    for (const CommandRow<Target>& row : rows) {
        if (id < row.first || id > row.last) continue;
        if (update && row.update) {
            (target.*row.update)(update);
        } else if (!update && row.handler.plain) {
            (target.*row.handler.plain)();
        } else if (!update && row.handler.numbered) {
            (target.*row.handler.numbered)(id);
        }
        return true;
    }
    return false;
}
