// The base of the library's views. What a view shows is drawn into an off-screen picture, and only when
// that is stale; a paint copies the picture to the window and draws the overlays (rulers, selections) on top.
//
// A derived view draws its static content in DrawBitmap and its overlays in DrawAfterBitmap, after setting
// its mapping in OnPrepareDC. Neither needs a window: DrawOn draws the same on any context.
//
// A view has a key name, the settings section that its frame's placement and its colours are kept in.
#pragma once

#include <memory>
#include <optional>

#include "platform/gdi/CBitmapEx.h"
#include "platform/gdi/CBrush.h"
#include "platform/window/CView.h"
#include "settings/CColorProperties.h"

// Twips.
struct PrintMargins {
    int left = 0;
    int right = 0;
    int headerHeight = 0;
    int footerHeight = 0;
};

class KViewEx : public CView {
    DECLARE_DYNCREATE(KViewEx)

  public:
    // With an overlay picture and without a context menu.
    KViewEx();
    // A context menu of -1 means none. The colour is the background's.
    KViewEx(CString keyName, bool deviceIndependent, int contextMenu, unsigned long backgroundColor);
    ~KViewEx() override;

    BOOL Create(LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                CCreateContext* context = nullptr) override;
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;

    // Draws background, static content and overlays, as in a window of this size, onto the top left corner of
    // any context. The view may have no window, and its picture stays as it is.
    void DrawOn(CDC& dc, CSize area);

    const CString& GetKeyName() const { return keyName; }
    void SetBkColor(unsigned long color);
    // Lets the user choose the background colour.
    void ChangeBkColor();
    // The colour dialog: 1 and the new colour when the user chose one.
    int EditColor(unsigned long& color);
    // Whether overlays are drawn on a second picture, so that they do not flicker.
    void UseDoubleBitmap(bool use);
    int GetBitsPrPixel() const { return 16; }

    // The placement of the frame around the view, in the section of the key name. Without a window they do
    // nothing.
    void SavePosition();
    void SetPosition();

  protected:
    // May change the size that the pictures get.
    virtual void OnSizeBitmap(int& width, int& height);
    // For printing: by default the view's name, and the path of its document.
    virtual void FormatHeaderStr(CString& text);
    virtual void FormatFooterStr(CString& text);
    // Returns 1, as the next two do.
    virtual int DrawBackground(CDC* dc, CBrush* brush, CSize size);
    virtual int DrawBitmap(CDC* dc);
    virtual int DrawAfterBitmap(CDC* dc);
    // Before each page: may choose margins and heights.
    virtual void PreparePrintDC(CDC* dc, CPrintInfo* info);
    // Draw into info->m_rectDraw, in twips; the first one leaves the body's rectangle there.
    virtual void PrintHeaderFooter(CDC* dc, CPrintInfo* info);
    virtual void OnPrintHeader(CDC* dc, CPrintInfo* info);
    virtual void OnPrintFooter(CDC* dc, CPrintInfo* info);

  public:
    // Stores the name and loads the colours from its section.
    virtual void SetKeyName(const CString& name);
    // Valid until the next call.
    virtual const char* GetViewName();

    bool OnCmdMsg(UINT id, CCmdUI* update) override;

  protected:
    void OnPrepareDC(CDC* dc, CPrintInfo* info = nullptr) override;
    void OnDraw(CDC* dc) override;
    BOOL OnPreparePrinting(CPrintInfo* info) override;
    void OnPrint(CDC* dc, CPrintInfo* info) override;
    void OnSize(UINT type, int width, int height) override;
    void OnContextMenu(CWnd* window, CPoint point) override;

    // Why the picture is stale.
    enum Stale {
        UpToDate = 0,
        Changed = 1,  // what is shown may be other than before
        Moved = 2,    // only another part of it, or another size
    };
    // Has the picture drawn anew at the next paint.
    void Redraw(BOOL erase = FALSE);
    void RedrawMoved();
    // What is drawn into: the client area, the body of a page, or the area of DrawOn. Device units.
    CRect DrawingArea() const;
    bool DrawsElsewhere() const { return elsewhere.has_value(); }
    void RebuildBackground();

  private:
    // Whether the size changed.
    bool FitPicture(std::unique_ptr<CBitmapEx>& bitmap, CDC* reference, int width, int height);
    void DrawFromPictures(CDC& dc, CDC& memory);
    void DrawOnPage(CDC& dc);
    void PrepareForWindow();
    void TakePrintArea(CDC& dc, CPrintInfo& info, const CRect& area) const;

    std::unique_ptr<CBitmapEx> overlayPicture;
    bool deviceIndependent;

  protected:
    std::unique_ptr<CBitmapEx> picture;  // null until the window has a size

  private:
    bool doublePictures;
    CString keyName;
    int contextMenu;

  protected:
    CColorProperties colors;
    // Pixels of the pictures, renewed after each resize.
    void* pictureBits = nullptr;
    void* overlayBits = nullptr;
    CBrush backgroundBrush;
    int stale = UpToDate;             // otherwise the picture must be redrawn before it is shown
    int redrawing = UpToDate;         // why it is being redrawn
    CPrintInfo* printInfo = nullptr;  // while a page is being drawn
    bool framePrintAreas = true;      // header, footer and body of a page
    CSize size;                       // of the client area, pixels
    PrintMargins printMargins;
    // Between the side margins of the page drawn last.
    int headerWidth = 0;
    int footerWidth = 0;

  private:
    std::optional<CRect> elsewhere;  // drawing there, not in the window; device units
};
