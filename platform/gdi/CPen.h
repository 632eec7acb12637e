// What lines and outlines are drawn with. Styled pens (dashes, dots) are drawn so only when one pixel wide;
// wider ones are solid. A pen without a handle draws nothing.
#pragma once

#include "platform/gdi/CGdiObject.h"

class CPen : public CGdiObject {
  public:
    CPen() = default;
    CPen(int style, int width, COLORREF color) { CreatePen(style, width, color); }

    BOOL CreatePen(int style, int width, COLORREF color) { return Attach(::CreatePen(style, width, color)); }
};
