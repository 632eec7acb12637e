// A drawing object (pen, brush, font, region): owns the handle that describes it. A context copies the
// description when the object is selected, so deleting the handle afterwards does the context no harm; the
// object itself must stay while it is selected, because the context hands it back.
#pragma once

#include "platform/core/CObject.h"
#include "platform/gdi/GdiTypes.h"

struct GdiRecord;
using HGDIOBJ = GdiRecord*;
using HPEN = GdiRecord*;
using HBRUSH = GdiRecord*;
using HFONT = GdiRecord*;
using HRGN = GdiRecord*;

class CGdiObject : public CObject {
  public:
    CGdiObject() = default;
    ~CGdiObject() override;
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;

    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    // Takes the handle over, releasing one held before. FALSE for null.
    BOOL Attach(HGDIOBJ object);
    // Gives the handle to the caller.
    HGDIOBJ Detach();
    // Releases the handle. FALSE when there was none.
    BOOL DeleteObject();

  private:
    HGDIOBJ m_hObject = nullptr;
};

// Handles not yet attached to an object. Width in logical units; widths below one pixel draw one pixel. Null
// for a style that is not one of the pen styles, or when memory is short.
HPEN CreatePen(int style, int width, COLORREF color);
HBRUSH CreateSolidBrush(COLORREF color);
HBRUSH CreateHatchBrush(int style, COLORREF color);
// A face name that fills its array is cut off.
HFONT CreateFontIndirect(const LOGFONT* font);
// The sides may be given in any order.
HRGN CreateRectRgn(int left, int top, int right, int bottom);
