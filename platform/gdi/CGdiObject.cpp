#include "platform/gdi/CGdiObject.h"

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
    return new (std::nothrow) GdiRecord{true, style, width, color};
}

HBRUSH CreateSolidBrush(COLORREF color) { return new (std::nothrow) GdiRecord{false, 0, 0, color}; }
