#include "views/KViewEx.h"

#include "platform/core/MessageBox.h"
#include "platform/gdi/CDC.h"
#include "platform/gdi/Selected.h"
#include "platform/window/CClientDC.h"
#include "platform/window/CDocument.h"
#include "platform/window/CFrameWnd.h"
#include "platform/window/CMenu.h"
#include "platform/window/CWindowApp.h"
#include "platform/window/CommonDialogs.h"

IMPLEMENT_DYNCREATE(KViewEx, CView)

namespace {

constexpr int kDeviceIndependent = 4;
constexpr int kColors = 256;
constexpr UINT kClassStyle = CS_BYTEALIGNWINDOW | CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;

// Takes a context out of the advanced graphics mode; what fails is reported, and drawing goes on.
void LeaveAdvancedMode(CDC& dc) {
    constexpr XFORM kIdentity{1, 0, 0, 1, 0, 0};
    if (!dc.SetWorldTransform(&kIdentity)) AfxMessageBox("Failed to set world transform");
    if (!dc.SetGraphicsMode(GM_COMPATIBLE)) AfxMessageBox("Failed to change graphics mode");
}

void UsePixels(CDC& dc) {
    dc.SetMapMode(MM_TEXT);
    dc.SetViewportOrg(0, 0);
    dc.SetWindowOrg(0, 0);
}

}  // namespace

KViewEx::KViewEx() : deviceIndependent(true), doublePictures(true), keyName("ViewEx"), contextMenu(-1) {
    RebuildBackground();
}

KViewEx::KViewEx(CString name, bool independent, int menu, unsigned long backgroundColor)
    : deviceIndependent(independent), doublePictures(false), keyName(std::move(name)), contextMenu(menu) {
    KViewEx::SetBkColor(backgroundColor);
}

KViewEx::~KViewEx() = default;

BOOL KViewEx::Create(LPCSTR, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                     CCreateContext* context) {
    const char* const windowClass = AfxRegisterWndClass(kClassStyle, 0, colors.background);
    return CView::Create(windowClass, windowName, style, rect, parent, id, context);
}

BOOL KViewEx::PreCreateWindow(CREATESTRUCT& cs) {
    SetKeyName(keyName);
    return CView::PreCreateWindow(cs);
}

void KViewEx::OnSizeBitmap(int&, int&) {}

int KViewEx::DrawBackground(CDC* dc, CBrush* brush, CSize area) {
    const Selected fill(*dc, *brush);
    dc->Rectangle(-1, -1, AddSaturated(area.cx, 1), AddSaturated(area.cy, 1));
    return 1;
}

int KViewEx::DrawBitmap(CDC*) { return 1; }

int KViewEx::DrawAfterBitmap(CDC*) { return 1; }

void KViewEx::SetKeyName(const CString& name) {
    keyName = name;
    colors.LoadFromRegistry(keyName);
    RebuildBackground();
}

const char* KViewEx::GetViewName() { return "ViewEx2 window"; }

void KViewEx::SetBkColor(unsigned long color) {
    colors.background = static_cast<COLORREF>(color);
    RebuildBackground();
}

void KViewEx::RebuildBackground() {
    backgroundBrush.DeleteObject();
    backgroundBrush.CreateSolidBrush(colors.background);
}

void KViewEx::ChangeBkColor() {
    unsigned long color = colors.background;
    if (!EditColor(color)) return;
    SetBkColor(color);
    Redraw(TRUE);
}

int KViewEx::EditColor(unsigned long& color) {
    CColorDialog dialog(static_cast<COLORREF>(color), this);
    if (dialog.DoModal() != IDOK) return 0;
    color = dialog.GetColor();
    return 1;
}

void KViewEx::Redraw(BOOL erase) {
    stale = Changed;
    Invalidate(erase);
}

void KViewEx::RedrawMoved() {
    if (stale == UpToDate) stale = Moved;
    Invalidate(FALSE);
}

CRect KViewEx::DrawingArea() const {
    if (elsewhere) return *elsewhere;
    return {0, 0, size.cx, size.cy};
}

void KViewEx::OnSize(UINT type, int width, int height) {
    CView::OnSize(type, width, height);
    if (width == 0 || height == 0 || size == CSize(width, height)) return;
    size = {width, height};
    OnSizeBitmap(width, height);
    CClientDC reference(this);
    if (FitPicture(picture, &reference, width, height) && stale == UpToDate) stale = Moved;
    pictureBits = picture->GetBits();
    if (!doublePictures) return;
    FitPicture(overlayPicture, &reference, width, height);
    overlayBits = overlayPicture->GetBits();
}

void KViewEx::UseDoubleBitmap(bool use) {
    doublePictures = use;
    if (!use || !picture) return;
    CClientDC reference(this);
    FitPicture(overlayPicture, &reference, picture->GetWidth(), picture->GetHeight());
    overlayBits = overlayPicture->GetBits();
}

bool KViewEx::FitPicture(std::unique_ptr<CBitmapEx>& bitmap, CDC* reference, int width, int height) {
    if (!bitmap)
        bitmap = std::make_unique<CBitmapEx>(deviceIndependent ? kDeviceIndependent : 0, GetBitsPrPixel(),
                                             kColors);
    return bitmap->ReSize(reference, width, height) != 0;
}

void KViewEx::OnDraw(CDC* dc) {
    if (dc->IsPrinting()) return DrawOnPage(*dc);
    if (size.cx == 0) return;
    const COLORREF textBackground = dc->SetBkColor(colors.background);
    CDC memory;
    if (picture && memory.CreateCompatibleDC(dc))
        DrawFromPictures(*dc, memory);
    else
        AfxMessageBox("Failed to create mem DC");
    redrawing = UpToDate;
    if (!doublePictures) {
        OnPrepareDC(dc);
        DrawAfterBitmap(dc);
    }
    dc->SetBkColor(textBackground);
}

void KViewEx::DrawFromPictures(CDC& dc, CDC& memory) {
    CBitmapEx* const before = memory.SelectObject(picture.get());
    if (stale) {
        DrawBackground(&memory, &backgroundBrush, {picture->GetWidth(), picture->GetHeight()});
        redrawing = stale;
    }
    OnPrepareDC(&memory);
    memory.SetBkColor(colors.background);
    if (redrawing) {
        // Cleared first: what DrawBitmap calls may ask for one more redraw.
        stale = UpToDate;
        DrawBitmap(&memory);
    }
    if (doublePictures && overlayPicture && overlayPicture->Copy(&memory, picture.get())) {
        memory.SelectObject(overlayPicture.get());
        DrawAfterBitmap(&memory);
    }
    if (dc.GetGraphicsMode() == GM_ADVANCED || memory.GetGraphicsMode() == GM_ADVANCED) {
        LeaveAdvancedMode(dc);
        LeaveAdvancedMode(memory);
    }
    UsePixels(dc);
    UsePixels(memory);
    dc.BitBlt(0, 0, size.cx, size.cy, &memory, 0, 0, SRCCOPY);
    memory.SelectObject(before);
}

void KViewEx::DrawOn(CDC& dc, CSize area) {
    const std::optional<CRect> before = elsewhere;
    elsewhere = CRect(0, 0, area.cx, area.cy);
    const int saved = dc.SaveDC();
    UsePixels(dc);
    dc.SelectStockObject(NULL_PEN);
    // One pixel more on every side makes up for the missing outline.
    DrawBackground(&dc, &backgroundBrush, {AddSaturated(area.cx, 1), AddSaturated(area.cy, 1)});
    dc.SelectStockObject(BLACK_PEN);
    dc.SetBkColor(colors.background);
    OnPrepareDC(&dc);
    redrawing = stale == Changed ? Changed : Moved;
    DrawBitmap(&dc);
    redrawing = UpToDate;
    DrawAfterBitmap(&dc);
    dc.RestoreDC(saved);
    elsewhere = before;
    PrepareForWindow();
    // A view without a window has no other picture that would have to be drawn anew.
    if (!GetSafeHwnd()) stale = UpToDate;
}

// What OnPrepareDC remembers of sizes is the window's again, after drawing elsewhere.
void KViewEx::PrepareForWindow() {
    if (elsewhere || !GetSafeHwnd()) return;
    CClientDC dc(this);
    OnPrepareDC(&dc);
}

void KViewEx::OnContextMenu(CWnd*, CPoint point) {
    if (contextMenu == -1) return;
    if (CFrameWnd* const frame = GetParentFrame()) frame->ActivateFrame();
    CMenu menu;
    if (!menu.LoadMenu(static_cast<UINT>(contextMenu) & 0xFFFF)) return;
    if (CMenu* const popup = menu.GetSubMenu(0))
        popup->TrackPopupMenu(TPM_RIGHTBUTTON, point.x, point.y, AfxGetMainWnd());
}
