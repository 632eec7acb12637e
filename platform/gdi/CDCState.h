// What a device context keeps.
#pragma once

#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>
#include <vector>

#include "platform/gdi/CDC.h"
#include "platform/gdi/GdiRecord.h"
#include "platform/gdi/Hairline.h"
#include "platform/gdi/Mapping.h"
#include "platform/gdi/Paper.h"
#include "platform/gdi/Picture.h"
#include "platform/gdi/TextFont.h"

inline CRect BoxRound(CPoint p, CSize half) {
    return {SubtractSaturated(p.x, half.cx), SubtractSaturated(p.y, half.cy), AddSaturated(p.x, half.cx),
            AddSaturated(p.y, half.cy)};
}

// Nothing is thrown at the caller: a shape for which memory is short is not drawn.
template <class Draw>
BOOL Guarded(Draw&& draw) {
    try {
        draw();
        return TRUE;
    } catch (const std::exception&) {
        return FALSE;
    }
}

// What SaveDC saves.
struct ContextAttributes {
    CPen* pen = nullptr;  // what SelectObject hands back
    CBrush* brush = nullptr;
    GdiRecord penRecord{};  // what is drawn with
    CFont* font = nullptr;
    std::optional<GdiRecord> brushRecord;  // none: nothing is filled
    LOGFONT fontRecord{};
    int rasterOperation = R2_COPYPEN;
    int bkMode = OPAQUE;
    COLORREF bkColor = RGB(255, 255, 255);
    COLORREF textColor = RGB(0, 0, 0);
    UINT textAlign = TA_LEFT | TA_TOP;
    int graphicsMode = GM_COMPATIBLE;
    Mapping mapping;
    std::optional<CRect> clip;  // device; none: the whole picture
    CPoint at;                  // logical
    std::int64_t dashPhase = 0;
};

struct CDC::State : ContextAttributes {
    std::vector<ContextAttributes> saved;
    CBitmapEx* selectedPicture = nullptr;
    std::shared_ptr<Picture> picture;
    int dotsPerInchWithoutPicture = kScreenDotsPerInch;
    std::shared_ptr<Paper> paper;  // of contexts that draw pages
    mutable TextFontCache textFonts;

    int DotsPerInch() const;
    CSize DeviceSize() const;
    // The page to draw on, clipped; null for a context that draws on pixels.
    Paper* Page() const;
    PaperPen PagePen() const;
    PaperFill PageFill() const;

    // Where drawing goes now; none when nothing would be visible.
    std::optional<Canvas> Target() const;

    bool HasPen() const { return penRecord.style != PS_NULL; }
    // The width on the device, at least 1.
    int PenWidth() const {
        return std::max(1, std::abs(std::max(-INT32_MAX, mapping.x.LengthToDevice(penRecord.width))));
    }
    // Of a smooth line, device units.
    double SmoothWidth() const;
    bool DrawsSmoothLines() const {
        return penRecord.style == PS_SOLID && (paper || rasterOperation == R2_COPYPEN);
    }
    bool HasHairPen() const { return HasPen() && PenWidth() == 1; }
    Ink PenInk() const { return {ToPixel(penRecord.color), rasterOperation}; }
    Ink BrushInk() const {
        return {ToPixel(brushRecord->color), rasterOperation, brushRecord->style, ToPixel(bkColor),
                bkMode == OPAQUE};
    }
    TextFont Font() const { return textFonts.Get(fontRecord, mapping.y); }
    HairPen Hair() const {
        return {penRecord.style, ToPixel(penRecord.color), ToPixel(bkColor), bkMode == OPAQUE,
                rasterOperation};
    }
    // A filled shape with this pen and brush is one colour all over, so that many of them may be drawn in any
    // order.
    bool DrawsPlainShapes() const {
        if (rasterOperation != R2_COPYPEN || !brushRecord || brushRecord->style != kNoHatch) return false;
        const bool outlineIsFill =
            HasHairPen() && penRecord.style == PS_SOLID && penRecord.color == brushRecord->color;
        return outlineIsFill || !HasPen();
    }
    // Outlines through device points with the pen, whatever its width.
    void Stroke(const Canvas& canvas, const CPoint* points, std::size_t count, bool closed) const;

    // The drawing operations on a page; boxes are device rectangles.
    void LineOnPage(CPoint from, CPoint to);
    void PolylineOnPage(const CPoint* points, std::size_t count, const StatusFilter& which) const;
    void SmoothPolylineOnPage(const CPoint* points, std::size_t count, const StatusFilter& which,
                              const LineBreaks& breaks) const;
    void SmoothDotsOnPage(const CPoint* points, std::size_t count, double diameter, COLORREF color,
                          const StatusFilter& which) const;
    void PolygonOnPage(const CPoint* points, std::size_t count) const;
    void RectangleOnPage(const CRect& box) const;
    void EllipseOnPage(const CRect& box) const;
    void RectanglesOnPage(const CPoint* points, std::size_t count, CSize halfExtent,
                          const StatusFilter& which) const;
    void EllipsesOnPage(const CPoint* points, std::size_t count, CSize halfExtent,
                        const StatusFilter& which) const;
    std::vector<CRect> BoxesOnPage(const CPoint* points, std::size_t count, CSize halfExtent,
                                   const StatusFilter& which) const;
    void DotsOnPage(const CPoint* points, std::size_t count, COLORREF color, const StatusFilter& which) const;

    // The device rectangle of a logical one, left and top above.
    CRect ToDevice(const CRect& rect) const;
};
