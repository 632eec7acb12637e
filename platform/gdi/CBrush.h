// What shapes are filled with. A brush without a handle fills nothing. A hatch brush draws its lines 8 pixels
// apart (on paper as far apart as on a screen of 96 dots per inch), and while the background mode is OPAQUE
// the gaps too, in the background colour; the pattern starts at the device's origin, so that shapes side by
// side fit.
#pragma once

#include "platform/gdi/CGdiObject.h"

class CBrush : public CGdiObject {
  public:
    CBrush() = default;
    explicit CBrush(COLORREF color) { CreateSolidBrush(color); }

    BOOL CreateSolidBrush(COLORREF color) { return Attach(::CreateSolidBrush(color)); }
    BOOL CreateHatchBrush(int style, COLORREF color) { return Attach(::CreateHatchBrush(style, color)); }
};
