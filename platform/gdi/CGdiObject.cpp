#include "platform/gdi/CGdiObject.h"

#include <algorithm>
#include <new>
#include <utility>

#include "platform/gdi/GdiRecord.h"

CGdiObject::~CGdiObject() { DeleteObject(); }

BOOL CGdiObject::Attach(HGDIOBJ object) {
    if (!object) return FALSE;
    if (object != m_hObject) DeleteObject();
    m_hObject = object;
    return TRUE;
}

HGDIOBJ CGdiObject::Detach() { return std::exchange(m_hObject, nullptr); }

BOOL CGdiObject::DeleteObject() {
    if (!m_hObject) return FALSE;
    delete std::exchange(m_hObject, nullptr);
    return TRUE;
}

HPEN CreatePen(int style, int width, COLORREF color) {
    if (style < PS_SOLID || style > PS_NULL) return nullptr;
    return new (std::nothrow) GdiRecord{GdiKind::Pen, style, width, color};
}

HBRUSH CreateSolidBrush(COLORREF color) {
    return new (std::nothrow) GdiRecord{GdiKind::Brush, kNoHatch, 0, color};
}

HBRUSH CreateHatchBrush(int style, COLORREF color) {
    if (style < HS_HORIZONTAL || style > HS_DIAGCROSS) return nullptr;
    return new (std::nothrow) GdiRecord{GdiKind::Brush, style, 0, color};
}

HFONT CreateFontIndirect(const LOGFONT* font) {
    if (!font) return nullptr;
    GdiRecord* const record = new (std::nothrow) GdiRecord{GdiKind::Font};
    if (!record) return nullptr;
    record->font = *font;
    record->font.lfFaceName[LF_FACESIZE - 1] = '\0';
    return record;
}

HRGN CreateRectRgn(int left, int top, int right, int bottom) {
    GdiRecord* const record = new (std::nothrow) GdiRecord{GdiKind::Region};
    if (record)
        record->region =
            CRect(std::min(left, right), std::min(top, bottom), std::max(left, right), std::max(top, bottom));
    return record;
}
