// A view of a document: a window in a frame that draws what the document holds. Views are made with new and
// are deleted when their window has ended and no event is being handled any more.
#pragma once

#include "platform/window/CWnd.h"

class CDocument;
struct CPrintInfo;
struct PrintJob;

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
    friend struct PrintJob;

    // Prepares a context before drawing or hit testing; `info` comes with printing only, before each page.
    // Default: ends a print of unknown length after its first page.
    virtual void OnPrepareDC(CDC* dc, CPrintInfo* info = nullptr);
    virtual void OnDraw(CDC* dc) = 0;
    // The document changed: `sender` is the view that changed it (null: none), the hint says how (null:
    // anything). Default: redraws everything.
    virtual void OnUpdate(CView* sender, long hint, CObject* hintObject);
    // The frame's active view changes, or its frame gets or loses the user. Default: takes the keyboard.
    virtual void OnActivateView(BOOL activate, CView* activated, CView* deactivated);

    // Printing, in this order. OnPreparePrinting says how many pages there are and returns what
    // DoPreparePrinting returns, which asks the user where to print unless that is known; FALSE: no print. It
    // comes once, OnPrint once for each page, drawing it inside m_rectDraw. Default: the page is what OnDraw
    // draws. OnBeginPrinting and OnEndPrinting come in pairs, in a preview for every time its pages are
    // drawn.
    virtual BOOL OnPreparePrinting(CPrintInfo* info);
    virtual void OnBeginPrinting(CDC* dc, CPrintInfo* info);
    virtual void OnPrint(CDC* dc, CPrintInfo* info);
    virtual void OnEndPrinting(CDC* dc, CPrintInfo* info);
    BOOL DoPreparePrinting(CPrintInfo* info);
    // The handlers of ID_FILE_PRINT and ID_FILE_PRINT_PREVIEW, for a derived class's table of commands.
    void OnFilePrint();
    void OnFilePrintPreview();

    // A derived class that overrides these calls them.
    int OnCreate(CREATESTRUCT* create) override;
    void OnDestroy() override;
    void OnPaint() override;
    void OnSetFocus(CWnd* oldWindow) override;
    void PostNcDestroy() override;

  private:
    CDocument* m_pDocument = nullptr;
};
