// Drawing on pages: shapes in device units, handed to the toolkit as vectors. Raster operations do not count
// here. The thinnest line is 0.1 mm (in an SVG file a pixel), dashes are as long as on a screen of 96 dots
// per inch. Shapes are cut off an inch outside the page, so that no coordinate is too large for a file
// format.
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/gdi/PaperDevice.h"
#include "platform/gdi/Picture.h"
#include "platform/gdi/TextFont.h"

struct PaperPen {
    int style;  // PS_SOLID to PS_DASHDOTDOT
    int width;  // device units; thinner ones are drawn as the thinnest line
    COLORREF color;
    std::optional<COLORREF> gapColor;  // of the dashes; none: not drawn
    double phase = 0.0;                // how far into its dashes the line begins, device units
};

struct PaperFill {
    int hatch;  // HS_... or kNoHatch
    COLORREF color;
    std::optional<COLORREF> gapColor;  // between hatch lines; none: not filled
};

class Paper {
  public:
    explicit Paper(std::unique_ptr<PaperDevice> device);
    ~Paper();

    int DotsPerInch() const;
    CSize Size() const;

    // Outside pages nothing is drawn.
    bool StartPage();
    void EndPage();
    bool Finish();

    // For everything drawn from now on.
    void SetClip(const std::optional<CRect>& clip);

    void Lines(const std::vector<CPoint>& points, bool closed, const PaperPen& pen);
    // Even-odd.
    void Polygon(const std::vector<CPoint>& points, const PaperFill& fill);
    void Box(const CRect& box, const PaperFill& fill);
    void Ellipse(const CRect& box, const PaperFill* fill, const PaperPen* pen);
    // Dots of the thinnest line's width round device points; dots that coincide are drawn once.
    void Dots(std::vector<CPoint> points, COLORREF color);
    void Text(const TextFont& font, const CRect& cell, std::string_view text, COLORREF color);
    // `source`, pixels of the picture, stretched to `target`.
    void Image(const CRect& target, const Picture& picture, const CRect& source);

  private:
    struct Painting;
    std::unique_ptr<Painting> painting_;
};

// Collects the points of a line and keeps those that can be told apart on the device: of a run of points in
// one column of dots the first, the lowest, the highest and the last.
class PaperLine {
  public:
    void Add(CPoint point);
    std::vector<CPoint> Take();

  private:
    void FlushRun();

    std::vector<CPoint> points_;
    bool inRun_ = false;
    CPoint first_, low_, high_, last_;
    bool lowFirst_ = false;  // the lowest came before the highest
};
