// What shapes are filled with. A brush without a handle fills nothing.
#pragma once

#include "platform/gdi/CGdiObject.h"

class CBrush : public CGdiObject {
  public:
    CBrush() = default;
    explicit CBrush(COLORREF color) { CreateSolidBrush(color); }

    BOOL CreateSolidBrush(COLORREF color) { return Attach(::CreateSolidBrush(color)); }
};
