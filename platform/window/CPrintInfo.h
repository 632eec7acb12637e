// What a view learns about the print it takes part in: one of these goes through a whole print or preview.
#pragma once

#include <memory>

#include "platform/core/CString.h"
#include "platform/core/Geometry.h"

struct PrintTarget;

struct CPrintInfo {
    // The area to draw in, in the page context's logical units; before each page the whole printable area.
    CRect m_rectDraw;
    UINT m_nCurPage = 1;
    // A preview's pages have the same size, resolution and device coordinates as the printer's, and clip
    // alike.
    BOOL m_bPreview = FALSE;
    // OnPrepareDC ends the print in front of a page by clearing it.
    BOOL m_bContinuePrinting = TRUE;
    // The print's name: in printer queues and in files.
    CString m_strTitle;

    static constexpr UINT kUnknown = 0xFFFF;
    UINT GetMinPage() const { return m_minPage; }
    UINT GetMaxPage() const { return m_maxPage; }
    void SetMinPage(UINT page) { m_minPage = page; }
    // kUnknown, where it begins: one page, unless OnPrepareDC says otherwise.
    void SetMaxPage(UINT page) { m_maxPage = page; }
    // What the user wants of it.
    UINT GetFromPage() const { return m_fromPage ? m_fromPage : m_minPage; }
    UINT GetToPage() const { return m_toPage ? m_toPage : m_maxPage; }
    void SetRange(UINT from, UINT to) {
        m_fromPage = from;
        m_toPage = to;
    }

    // Where the pages go; null until the user has chosen.
    std::shared_ptr<PrintTarget> m_target;

  private:
    UINT m_minPage = 1;
    UINT m_maxPage = kUnknown;
    UINT m_fromPage = 0;  // 0: from the first, to the last
    UINT m_toPage = 0;
};
