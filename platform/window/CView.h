// A view of a document: a window in a frame that draws what the document holds. Views made with new delete
// themselves when their window ends.
#pragma once

#include "platform/window/CWnd.h"

class CDocument;
struct CPrintInfo;

class CView : public CWnd {
    DECLARE_DYNAMIC(CView)

  public:
    ~CView() override;

    // Null for a view that was created without a document, or whose document is gone.
    CDocument* GetDocument() const { return m_pDocument; }

    // To the document when the view itself does not know the command.
    bool OnCmdMsg(UINT id, CCmdUI* update) override;

    // Once, when the frame first shows the document. Default: OnUpdate without sender and hint.
    virtual void OnInitialUpdate();

  protected:
    friend class CDocument;
    friend class CFrameWnd;

    // Prepares a context before drawing or hit testing; `info` comes with printing only.
    virtual void OnPrepareDC(CDC* dc, CPrintInfo* info = nullptr);
    virtual void OnDraw(CDC* dc) = 0;
    // The document changed: `sender` is the view that changed it (null: none), the hint says how (null:
    // anything). Default: redraws everything.
    virtual void OnUpdate(CView* sender, long hint, CObject* hintObject);
    // The frame's active view changes, or its frame gets or loses the user. Default: takes the keyboard.
    virtual void OnActivateView(BOOL activate, CView* activated, CView* deactivated);

    // A derived class that overrides these calls them.
    int OnCreate(CREATESTRUCT* create) override;
    void OnDestroy() override;
    void OnPaint() override;
    void OnSetFocus(CWnd* oldWindow) override;
    void PostNcDestroy() override;

  private:
    CDocument* m_pDocument = nullptr;
};
