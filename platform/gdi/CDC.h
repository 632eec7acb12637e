// A device context: draws on an off-screen picture, at once, or on a page (see CPrintDC.h). Coordinates are
// logical; they are mapped to pixels by 64-bit integer arithmetic, rounded half away from zero and saturated
// at the 32-bit limits, so that nothing overflows however far one zooms in.
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
#include "platform/core/CString.h"
#include "platform/core/Geometry.h"
#include "platform/gdi/CBrush.h"
#include "platform/gdi/CFont.h"
#include "platform/gdi/CPen.h"
#include "platform/gdi/CRgn.h"
#include "platform/gdi/GdiTypes.h"
#include "platform/gdi/LineBreaks.h"
#include "platform/gdi/StatusFilter.h"

class CBitmapEx;
class PointPyramid;
struct KeptLine;

class CDC : public CObject {
  public:
    // Without a picture: select one with SelectObject.
    CDC();
    explicit CDC(CBitmapEx& picture);
    ~CDC() override;
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    // Makes this a memory context with the resolution of the other one (null: of a screen), to select a
    // picture into. FALSE when it already draws somewhere.
    BOOL CreateCompatibleDC(const CDC* other);
    // One of HORZRES, VERTRES, LOGPIXELSX and LOGPIXELSY; 0 for anything else. A context without a picture is
    // 0 by 0 pixels.
    int GetDeviceCaps(int index) const;
    // Whether this draws on paper, a file or a preview of it.
    bool IsPrinting() const;

    // Objects. Each call returns what was selected before. A null pointer selects nothing and returns null.
    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    CFont* SelectObject(CFont* font);
    // The object that SelectStockObject returned: a pen, a brush or a font.
    CGdiObject* SelectObject(CGdiObject* object);
    // The picture to draw on. The first call returns null, and null then takes the picture away again.
    // Not for contexts that draw pages.
    CBitmapEx* SelectObject(CBitmapEx* picture);
    // Null for a number that is not a stock object.
    CGdiObject* SelectStockObject(int index);

    // Attributes; each call returns the previous value. Unknown values change nothing and return 0.
    int SetROP2(int rasterOperation);
    int GetROP2() const;
    int SetBkMode(int mode);
    COLORREF SetBkColor(COLORREF color);
    COLORREF GetBkColor() const;
    COLORREF SetTextColor(COLORREF color);
    COLORREF GetTextColor() const;
    UINT SetTextAlign(UINT flags);
    UINT GetTextAlign() const;

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
    void LPtoDP(RECT* rect) const;
    void DPtoLP(RECT* rect) const;
    // Sizes convert with the absolute extents: they keep their sign.
    void LPtoDP(SIZE* size) const;
    void DPtoLP(SIZE* size) const;
    void HIMETRICtoLP(SIZE* size) const;

    // The graphics modes. There is one world transform, the identity, because everything drawn stands upright
    // on the device's axes: the advanced mode accepts that and refuses any other, as the compatible mode
    // refuses all.
    int SetGraphicsMode(int mode);
    int GetGraphicsMode() const;
    BOOL SetWorldTransform(const XFORM* transform);

    // Saves everything above, the clip region and the current position. RestoreDC takes the number SaveDC
    // returned, or -1 for the last one; it drops the states saved since. FALSE when there is no such state.
    int SaveDC();
    BOOL RestoreDC(int savedState);
    // Draws only inside this rectangle from now on, and inside what was clipped before.
    void IntersectClipRect(const CRect& rect);
    // Draws only inside the region from now on: a copy of it, in device units, whatever was clipped before.
    // Null: everywhere. Answers what the region is; 0 and no change for a region without a handle.
    int SelectClipRgn(const CRgn* region);
    // The rectangle, in logical units and with left and top at the origin's side of the device, that drawing
    // can reach now. Answers what it is.
    int GetClipBox(RECT* box) const;

    // Lines, with the pen. Dashes run on from one LineTo to the next and start anew with MoveTo. The current
    // position stays where it is under Polyline. FALSE for fewer than two points.
    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point) { return MoveTo(point.x, point.y); }
    BOOL LineTo(int x, int y);
    BOOL LineTo(POINT point) { return LineTo(point.x, point.y); }
    BOOL Polyline(const CPoint* points, int count);
    // Through the points that the filter takes, bridging the others.
    // A pyramid of just these points (see PointPyramid.h) saves looking at most of them.
    BOOL Polyline(const CPoint* points, int count, const StatusFilter& which,
                  const PointPyramid* pyramid = nullptr);

    // The same, smooth: pixels take the pen's colour in the share that the line covers. The line has round
    // ends and joints and is as wide as 1.5 pixels of a screen of 96 dots per inch, on paper 0.25 mm, or as
    // the pen where that is wider. A point between two breaks is a dot of twice the width. What a hairline
    // alone can do stays one: styled pens and other raster operations than R2_COPYPEN. Coordinates are
    // rounded to an eighth of a pixel along x and not at all along y. FALSE without a point. What was kept of
    // just these points and breaks (see PointPyramid.h) changes no pixel.
    BOOL SmoothPolyline(const CPoint* points, int count, const StatusFilter& which = {},
                        const LineBreaks& breaks = {}, KeptLine* kept = nullptr);

    // Shapes: filled with the brush (crossing outlines: even-odd), outlined with the pen.
    BOOL Polygon(const CPoint* points, int count);
    BOOL Rectangle(int left, int top, int right, int bottom);
    BOOL Rectangle(const CRect& rect) { return Rectangle(rect.left, rect.top, rect.right, rect.bottom); }
    BOOL Ellipse(int left, int top, int right, int bottom);
    BOOL Ellipse(const CRect& rect) { return Ellipse(rect.left, rect.top, rect.right, rect.bottom); }
    // Replaces the pixels, whatever the raster operation.
    void FillSolidRect(const CRect& rect, COLORREF color);

    // Text, one line, with the font, in the text colour, whatever the raster operation. The point is the top
    // left corner of the text's cell unless SetTextAlign says otherwise; the cell is filled with the
    // background colour while the background mode is OPAQUE. The extent is the cell's, in logical units
    // without sign.
    BOOL TextOut(int x, int y, const CString& text);
    CSize GetTextExtent(const CString& text) const;

    // Copies the pixels of the other context's picture from (sourceX, sourceY) on, logical there, to the
    // rectangle (x, y, x + width, y + height), logical here; pixel by pixel between pictures, on paper the
    // same rectangle of the source's logical units, stretched. Source pixels outside its picture leave the
    // target as it is; on paper there may be none. FALSE without a source picture and for any operation but
    // SRCCOPY.
    BOOL BitBlt(int x, int y, int width, int height, const CDC* source, int sourceX, int sourceY,
                DWORD operation);

    // Pixels, whatever the raster operation. GetPixel: CLR_INVALID outside the picture.
    BOOL SetPixelV(int x, int y, COLORREF color);
    COLORREF GetPixel(int x, int y) const;

    // Many dots at once, the same pixels as one call for each point that the filter takes: SetPixelV, and
    // Rectangle or Ellipse from (x - cx, y - cy) to (x + cx, y + cy).
    void DrawPixels(const CPoint* points, int count, COLORREF color, const StatusFilter& which = {});
    void DrawRectangles(const CPoint* points, int count, CSize halfExtent, const StatusFilter& which = {});
    void DrawEllipses(const CPoint* points, int count, CSize halfExtent, const StatusFilter& which = {});
    // Round dots, smooth, whatever pen, brush and raster operation. The diameter is in 0.01 mm; a dot is
    // never smaller than a smooth line is wide.
    void DrawSmoothDots(const CPoint* points, int count, int diameter, COLORREF color,
                        const StatusFilter& which = {});

  protected:
    struct State;
    std::unique_ptr<State> state_;
};
