// Fonts in device units: a logical font after the conversion of its height. All sizes are exact: the cell is
// as high as the logical font asks for, whatever the rounding of the outlines' own metrics.
#pragma once

#include <memory>
#include <string_view>

#include "platform/gdi/GdiTypes.h"
#include "platform/gdi/Mapping.h"

class QPainter;

class TextFont {
  public:
    // No cell is higher: larger fonts are drawn at this size.
    static constexpr int kLargestCell = 10000;

    // height: device units, positive for the cell, negative for the em.
    TextFont(const LOGFONT& font, int height);

    int Cell() const { return cell_; }
    // From the cell's top to the base line.
    int Ascent() const { return ascent_; }
    int Width(std::string_view text) const;
    // Left end and base line, device units.
    void Draw(QPainter& painter, int left, int baseline, std::string_view text, COLORREF color) const;

  private:
    struct Outlines;
    std::shared_ptr<const Outlines> outlines_;
    int cell_;
    int ascent_;
};

// The font used last, which nearly always is the next one too.
class TextFontCache {
  public:
    TextFont Get(const LOGFONT& font, const AxisMapping& y);

  private:
    LOGFONT font_{};
    int height_ = 0;
    std::shared_ptr<const TextFont> last_;
};
