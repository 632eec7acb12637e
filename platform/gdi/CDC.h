// A device context: draws on an off-screen picture, at once. Coordinates are logical; they are mapped to
// pixels by 64-bit integer arithmetic, rounded half away from zero and saturated at the 32-bit limits, so
// that nothing overflows however far one zooms in.
//
// Pixel rules: a line draws its first pixel and not its last (two XOR lines meet without a hole); rectangles
// and ellipses exclude right and bottom; with the null pen they are one pixel smaller still. Everything drawn
// twice under R2_XORPEN, R2_NOTXORPEN or R2_NOT leaves the picture as it was, also where a shape crosses
// itself or an outline meets its fill. The gaps of a styled pen are drawn too while the background mode is
// OPAQUE.
//
// A context without a picture draws nothing and fails nothing. Contexts do not own objects selected into
// them.
#pragma once

#include <memory>

#include "platform/core/CObject.h"
#include "platform/core/Geometry.h"
#include "platform/gdi/CBrush.h"
#include "platform/gdi/CPen.h"
#include "platform/gdi/GdiTypes.h"
#include "platform/gdi/StatusFilter.h"

class CBitmapEx;

class CDC : public CObject {
  public:
    // Without a picture: select one with SelectObject.
    CDC();
    explicit CDC(CBitmapEx& picture);
    ~CDC() override;
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    // Objects. Each call returns what was selected before. A null pointer selects nothing and returns null.
    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    // The object that SelectStockObject returned: a pen or a brush.
    CGdiObject* SelectObject(CGdiObject* object);
    // The picture to draw on. The first call returns null, and null then takes the picture away again.
    CBitmapEx* SelectObject(CBitmapEx* picture);
    // Null for a number that is not a stock object.
    CGdiObject* SelectStockObject(int index);

    // Attributes; each call returns the previous value. Unknown values change nothing and return 0.
    int SetROP2(int rasterOperation);
    int GetROP2() const;
    int SetBkMode(int mode);
    COLORREF SetBkColor(COLORREF color);
    COLORREF GetBkColor() const;

    // Mapping. Extents count in the isotropic and anisotropic modes only; a zero extent is refused.
    int SetMapMode(int mode);
    int GetMapMode() const;
    CPoint SetWindowOrg(int x, int y);
    CPoint SetViewportOrg(int x, int y);
    CSize SetWindowExt(int cx, int cy);
    CSize SetViewportExt(int cx, int cy);
    CPoint GetWindowOrg() const;
    CPoint GetViewportOrg() const;
    CSize GetWindowExt() const;
    CSize GetViewportExt() const;
    void LPtoDP(CPoint* points, int count = 1) const;
    void DPtoLP(CPoint* points, int count = 1) const;
    // Sizes convert with the absolute extents: they keep their sign.
    void LPtoDP(SIZE* size) const;
    void DPtoLP(SIZE* size) const;
    void HIMETRICtoLP(SIZE* size) const;

    // Saves everything above and the current position. RestoreDC takes the number SaveDC returned, or -1 for
    // the last one; it drops the states saved since. FALSE when there is no such state.
    int SaveDC();
    BOOL RestoreDC(int savedState);
    // Draws only inside this rectangle from now on, and inside what was clipped before.
    void IntersectClipRect(const CRect& rect);

    // Lines, with the pen. Dashes run on from one LineTo to the next and start anew with MoveTo. The current
    // position stays where it is under Polyline. FALSE for fewer than two points.
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point) { return MoveTo(point.x, point.y); }
    BOOL LineTo(int x, int y);
    BOOL LineTo(POINT point) { return LineTo(point.x, point.y); }
    BOOL Polyline(const CPoint* points, int count);
    // Through the points that the filter takes, bridging the others.
    BOOL Polyline(const CPoint* points, int count, const StatusFilter& which);

    // Shapes: filled with the brush (crossing outlines: even-odd), outlined with the pen.
    BOOL Polygon(const CPoint* points, int count);
    BOOL Rectangle(int left, int top, int right, int bottom);
    BOOL Rectangle(const CRect& rect) { return Rectangle(rect.left, rect.top, rect.right, rect.bottom); }
    BOOL Ellipse(int left, int top, int right, int bottom);
    BOOL Ellipse(const CRect& rect) { return Ellipse(rect.left, rect.top, rect.right, rect.bottom); }
    // Replaces the pixels, whatever the raster operation.
    void FillSolidRect(const CRect& rect, COLORREF color);

    // Pixels, whatever the raster operation. GetPixel: CLR_INVALID outside the picture.
    BOOL SetPixelV(int x, int y, COLORREF color);
    COLORREF GetPixel(int x, int y) const;

    // Many dots at once, the same pixels as one call for each point that the filter takes: SetPixelV, and
    // Rectangle or Ellipse from (x - cx, y - cy) to (x + cx, y + cy).
    void DrawPixels(const CPoint* points, int count, COLORREF color, const StatusFilter& which = {});
    void DrawRectangles(const CPoint* points, int count, CSize halfExtent, const StatusFilter& which = {});
    void DrawEllipses(const CPoint* points, int count, CSize halfExtent, const StatusFilter& which = {});

  private:
    struct State;
    std::unique_ptr<State> m_state;
};
