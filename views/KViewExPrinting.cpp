// How KViewEx prints: one page with a header, the view as the body, and a footer.
#include <locale.h>
#include <time.h>

#include <cstdlib>

#include "platform/gdi/Selected.h"
#include "platform/registry/CWinApp.h"
#include "platform/window/CDocument.h"
#include "platform/window/CPrintInfo.h"
#include "platform/window/CommandIds.h"
#include "views/KViewEx.h"

namespace {

// Twips.
constexpr int kHeaderHeight = 340;
constexpr int kFooterHeight = 283;
constexpr int kDistance = 28;

void ClipTo(CDC& dc, CRect area) {
    dc.LPtoDP(&area);
    CRgn region;
    region.CreateRectRgnIndirect(&area);
    dc.SelectClipRgn(&region);
}

void CreateLineFont(CFont& font, const CRect& area, int weight, BYTE italic) {
    const int height = std::abs(area.Height()) - 2 * kDistance;
    font.CreateFont(height, 0, 0, 0, weight, italic, FALSE, FALSE, DEFAULT_CHARSET, OUT_TT_PRECIS,
                    CLIP_DEFAULT_PRECIS, PROOF_QUALITY, DEFAULT_PITCH, "Arial");
}

void Separate(CDC& dc, const CRect& area, int x) {
    dc.MoveTo(x, area.top);
    dc.LineTo(x, area.bottom);
}

// Date and time as the user's locale writes them, whatever the process's is.
CString LocalDateAndTime() {
    const time_t now = time(nullptr);
    tm local{};
    localtime_r(&now, &local);
    const locale_t users = newlocale(LC_TIME_MASK, "", nullptr);
    char text[128] = "";
    if (users) {
        strftime_l(text, sizeof text, "%x %X", &local, users);
        freelocale(users);
    } else {
        strftime(text, sizeof text, "%x %X", &local);
    }
    return text;
}

}  // namespace

void KViewEx::FormatHeaderStr(CString& text) { text = GetViewName(); }

void KViewEx::FormatFooterStr(CString& text) {
    text = GetDocument() ? GetDocument()->GetPathName() : CString();
}

bool KViewEx::OnCmdMsg(UINT id, CCmdUI* update) {
    static constexpr CommandRow<KViewEx> kCommands[] = {
        {ID_FILE_PRINT, ID_FILE_PRINT, &KViewEx::OnFilePrint},
        {ID_FILE_PRINT_PREVIEW, ID_FILE_PRINT_PREVIEW, &KViewEx::OnFilePrintPreview},
    };
    return RouteCommand(*this, kCommands, id, update) || CView::OnCmdMsg(id, update);
}

void KViewEx::OnPrepareDC(CDC* dc, CPrintInfo* info) {
    if (dc->IsPrinting() && !info) return;
    if (dc->IsPrinting()) dc->SetMapMode(MM_TWIPS);
    CView::OnPrepareDC(dc, info);
}

BOOL KViewEx::OnPreparePrinting(CPrintInfo* info) {
    info->SetMaxPage(1);
    printMargins = {0, 0, kHeaderHeight, kFooterHeight};
    return DoPreparePrinting(info);
}

void KViewEx::OnPrint(CDC* dc, CPrintInfo* info) {
    PreparePrintDC(dc, info);
    PrintHeaderFooter(dc, info);
    if (!info->m_bPreview) ClipTo(*dc, info->m_rectDraw);
    CRect body = info->m_rectDraw;
    dc->LPtoDP(&body);
    printInfo = info;
    elsewhere = body;
    stale = Changed;
    OnPrepareDC(dc);
    OnDraw(dc);
    elsewhere.reset();
    printInfo = nullptr;
    PrepareForWindow();
}

void KViewEx::DrawOnPage(CDC& dc) {
    const COLORREF textBackground = dc.SetBkColor(colors.background);
    DrawBitmap(&dc);
    DrawAfterBitmap(&dc);
    dc.SetBkColor(textBackground);
}

void KViewEx::PreparePrintDC(CDC*, CPrintInfo*) {}

void KViewEx::TakePrintArea(CDC& dc, CPrintInfo& info, const CRect& area) const {
    info.m_rectDraw = area;
    if (!info.m_bPreview) ClipTo(dc, area);
    if (!framePrintAreas) return;
    const CRect inner(area.left + 1, area.top - 1, area.right - 1, area.bottom + 1);
    dc.Rectangle(inner);
    if (!info.m_bPreview) ClipTo(dc, inner);
}

// The y axis points upwards: an area's top is greater than its bottom.
void KViewEx::PrintHeaderFooter(CDC* dc, CPrintInfo* info) {
    const CRect page = info->m_rectDraw;
    const int left = page.left + printMargins.left;
    const int right = page.right - printMargins.right;
    const int headerEnd = page.top - printMargins.headerHeight;
    const int footerEnd = page.bottom + printMargins.footerHeight;
    headerWidth = footerWidth = right - left;
    if (printMargins.headerHeight > 0) {
        TakePrintArea(*dc, *info, {left, page.top, right, headerEnd});
        OnPrintHeader(dc, info);
    }
    if (printMargins.footerHeight > 0) {
        TakePrintArea(*dc, *info, {left, footerEnd, right, page.bottom});
        OnPrintFooter(dc, info);
    }
    TakePrintArea(*dc, *info, {left, headerEnd, right, footerEnd});
}

void KViewEx::OnPrintHeader(CDC* dc, CPrintInfo* info) {
    const CRect area = info->m_rectDraw;
    const int top = area.top - kDistance;
    CFont plain;
    CreateLineFont(plain, area, FW_NORMAL, FALSE);
    CFont strong;
    CreateLineFont(strong, area, FW_BOLD, TRUE);
    const int saved = dc->SaveDC();
    dc->SetBkMode(TRANSPARENT);
    dc->SelectObject(&plain);

    const CString application = AfxGetAppName();
    dc->TextOut(area.left + kDistance, top, application);
    const int leftEnd = area.left + 2 * kDistance + dc->GetTextExtent(application).cx;
    const CString now = LocalDateAndTime();
    const int nowStart = area.right - kDistance - dc->GetTextExtent(now).cx;
    dc->TextOut(nowStart, top, now);
    const int rightEnd = nowStart - kDistance;
    if (framePrintAreas) {
        Separate(*dc, area, leftEnd);
        Separate(*dc, area, rightEnd);
    }

    dc->SelectObject(&strong);
    CString title;
    FormatHeaderStr(title);
    dc->SetTextAlign(TA_CENTER | TA_TOP);
    dc->TextOut((leftEnd + rightEnd) / 2, top, title);
    dc->RestoreDC(saved);
}

void KViewEx::OnPrintFooter(CDC* dc, CPrintInfo* info) {
    const CRect area = info->m_rectDraw;
    const int top = area.top - kDistance;
    CFont plain;
    CreateLineFont(plain, area, FW_NORMAL, FALSE);
    const int saved = dc->SaveDC();
    dc->SetBkMode(TRANSPARENT);
    dc->SelectObject(&plain);
    CString path;
    FormatFooterStr(path);
    dc->TextOut(area.left + kDistance, top, path);
    CString number;
    number.Format("%d/%d", static_cast<int>(info->m_nCurPage), static_cast<int>(info->GetMaxPage()));
    const int numberStart = area.right - kDistance - dc->GetTextExtent(number).cx;
    dc->TextOut(numberStart, top, number);
    if (framePrintAreas) Separate(*dc, area, numberStart - kDistance);
    dc->RestoreDC(saved);
}
