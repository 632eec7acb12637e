// A rectangle of the device, for clipping. Right and bottom are outside.
#pragma once

#include "platform/core/Geometry.h"
#include "platform/gdi/CGdiObject.h"

class CRgn : public CGdiObject {
  public:
    BOOL CreateRectRgn(int left, int top, int right, int bottom) {
        return Attach(::CreateRectRgn(left, top, right, bottom));
    }
    BOOL CreateRectRgnIndirect(const RECT* rect) {
        return rect && CreateRectRgn(rect->left, rect->top, rect->right, rect->bottom);
    }
};
