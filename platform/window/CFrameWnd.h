// A frame round a view, with menu bar, toolbars and status bar. Frames are made with new and are deleted when
// their window has ended and no event is being handled any more.
//
// Commands of menus, toolbars and shortcuts go to the top frame; it passes them to its active view (and that
// to its document), answers itself, and asks the application last. States are asked for when a menu opens,
// before a shortcut counts and whenever the program has nothing else to do.
#pragma once

#include <vector>

#include "platform/window/CWnd.h"

class CDocument;
class CStatusBar;
class CView;

// What a new frame shows. Both may be null.
struct CCreateContext {
    const CRuntimeClass* m_pNewViewClass = nullptr;
    CDocument* m_pCurrentDoc = nullptr;
};

class CFrameWnd : public CWnd {
    DECLARE_DYNCREATE(CFrameWnd)

  public:
    // Creates the frame from resources: the string `resourceId` is its title, the menu `resourceId` its menu
    // bar, the icon "application" its icon. Each may be missing. A child frame has no menu bar of its own.
    // FALSE: the frame and, unless somebody shows it, the context's document have ended.
    virtual BOOL LoadFrame(UINT resourceId, DWORD style = WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE,
                           CWnd* parent = nullptr, CCreateContext* context = nullptr);
    // Shows the frame, then tells the views in it to show `document`, and makes the first one active.
    void InitialUpdateFrame(CDocument* document, BOOL makeVisible);
    // Brings the frame to the front; -1 leaves it as it is shown.
    virtual void ActivateFrame(int how = -1);

    // The views in this frame; those of child frames are left out.
    std::vector<CView*> GetViews() const;
    CView* GetActiveView() const { return m_activeView; }
    void SetActiveView(CView* view, BOOL notify = TRUE);
    virtual CDocument* GetActiveDocument();
    // The frame that commands reach first: an active child frame, or this one.
    virtual CFrameWnd* GetActiveFrame();
    // The frame that stands on the screen by itself.
    CFrameWnd* GetTopLevelFrame();

    // The message pane of the status bar; without a bar, that of the frame around this one.
    void SetMessageText(LPCSTR text);
    // When the style has FWS_ADDTOTITLE: the frame's title with the active document's before it. Otherwise
    // the window text is whatever was set last.
    virtual void OnUpdateFrameTitle();

    // Files dropped on the frame go to OnDropFiles from now on.
    void DragAcceptFiles(BOOL accept = TRUE);

    bool OnCmdMsg(UINT id, CCmdUI* update) override;
    // Brings menus, toolbars and shortcuts up to date.
    void UpdateCommands();

  protected:
    friend class CStatusBar;

    // Fills the frame. Default: a view of the context's class.
    virtual BOOL OnCreateClient(CREATESTRUCT* create, CCreateContext* context);
    // Null when the class makes no view or the view refuses.
    CView* CreateView(CCreateContext* context, UINT id = AFX_IDW_PANE_FIRST);

    // The user dropped files. Default: nothing.
    virtual void OnDropFiles(const std::vector<CString>& paths);

    // The user answers for the document first.
    void OnClose() override;
    // Asks whoever has to be asked. Default: the documents of the frame's views.
    virtual bool MayClose();
    int OnCreate(CREATESTRUCT* create) override;
    void PostNcDestroy() override;
    NativeWindow* NewNative() override;
    CString m_title;

  private:
    friend struct WindowEvents;

    void FrameActivated(bool active);
    void FilesDropped(const std::vector<CString>& paths) { OnDropFiles(paths); }
    void OnViewBar(UINT id);
    void OnUpdateViewBar(CCmdUI* state);

    static const CommandRow<CFrameWnd> kEveryFrame[1];
    static const CommandRow<CFrameWnd> kTopFrame[3];

    bool m_closing = false;
    CView* m_activeView = nullptr;
    CStatusBar* m_statusBar = nullptr;
};
