// The text operations of device contexts.
#include <QImage>
#include <QPainter>
#include <exception>
#include <utility>

#include "platform/gdi/CDCState.h"

namespace {

constexpr UINT kAcross = TA_RIGHT | TA_CENTER;
constexpr UINT kUpright = TA_BOTTOM | TA_BASELINE;

// The cell of a text whose reference point is `at`, device units.
CRect CellAt(CPoint at, int width, const TextFont& font, UINT align) {
    CPoint corner = at;
    if ((align & kAcross) == TA_RIGHT) corner.x = SubtractSaturated(at.x, width);
    if ((align & kAcross) == TA_CENTER) corner.x = SubtractSaturated(at.x, width / 2);
    if ((align & kUpright) == TA_BOTTOM) corner.y = SubtractSaturated(at.y, font.Cell());
    if ((align & kUpright) == TA_BASELINE) corner.y = SubtractSaturated(at.y, font.Ascent());
    return {corner.x, corner.y, AddSaturated(corner.x, width), AddSaturated(corner.y, font.Cell())};
}

// Slanted letters and swashes reach out of the cell, by less than its height.
bool IsFarOutside(const CRect& cell, const CRect& visible) {
    const LONG reach = cell.Height();
    return AddSaturated(cell.right, reach) < visible.left ||
           SubtractSaturated(cell.left, reach) >= visible.right ||
           AddSaturated(cell.bottom, reach) < visible.top ||
           SubtractSaturated(cell.top, reach) >= visible.bottom;
}

void DrawOnPixels(const Canvas& canvas, const TextFont& font, const CRect& cell, std::string_view text,
                  COLORREF color) {
    QImage pixels(reinterpret_cast<uchar*>(canvas.pixels), static_cast<int>(canvas.stride),
                  canvas.clip.bottom, canvas.stride * qsizetype{4}, QImage::Format_RGB32);
    QPainter painter(&pixels);
    const CRect& clip = canvas.clip;
    painter.setClipRect(clip.left, clip.top, clip.Width(), clip.Height());
    font.Draw(painter, cell.left, cell.top + font.Ascent(), text, color);
}

}  // namespace

COLORREF CDC::SetTextColor(COLORREF color) { return std::exchange(state_->textColor, color); }

COLORREF CDC::GetTextColor() const { return state_->textColor; }

UINT CDC::SetTextAlign(UINT flags) { return std::exchange(state_->textAlign, flags); }

UINT CDC::GetTextAlign() const { return state_->textAlign; }

BOOL CDC::TextOut(int x, int y, const CString& text) try {
    Paper* const page = state_->Page();
    const auto canvas = state_->Target();
    if ((!page && !canvas) || text.IsEmpty()) return TRUE;
    const TextFont font = state_->Font();
    const CPoint at = state_->mapping.ToDevice({x, y});
    const CRect cell = CellAt(at, font.Width(text.View()), font, state_->textAlign);
    if (page) {
        if (state_->bkMode == OPAQUE) page->Box(cell, {kNoHatch, state_->bkColor, std::nullopt});
        page->Text(font, cell, text.View(), state_->textColor);
        return TRUE;
    }
    if (IsFarOutside(cell, canvas->clip)) return TRUE;
    if (state_->bkMode == OPAQUE)
        FillBox(*canvas, cell.left, cell.top, cell.right, cell.bottom,
                {ToPixel(state_->bkColor), R2_COPYPEN});
    DrawOnPixels(*canvas, font, cell, text.View(), state_->textColor);
    return TRUE;
} catch (const std::exception&) {
    return FALSE;
}

CSize CDC::GetTextExtent(const CString& text) const try {
    const TextFont font = state_->Font();
    CSize extent(font.Width(text.View()), font.Cell());
    DPtoLP(&extent);
    return extent;
} catch (const std::exception&) {
    return {};
}
