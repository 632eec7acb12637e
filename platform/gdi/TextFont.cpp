#include "platform/gdi/TextFont.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cstring>

#include "platform/gdi/DrawingToolkit.h"

namespace {

constexpr int kDefaultCell = 16;  // device units, of a font of height 0

QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QFont FaceOf(const LOGFONT& font) {
    QFont face;
    if (font.lfFaceName[0]) face.setFamily(QString::fromUtf8(font.lfFaceName));
    if (font.lfWeight > 0) face.setWeight(static_cast<QFont::Weight>(std::clamp(font.lfWeight, 1, 1000)));
    face.setItalic(font.lfItalic);
    face.setUnderline(font.lfUnderline);
    face.setStrikeOut(font.lfStrikeOut);
    // The same widths and pixels on every screen and at every size.
    face.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    face.setHintingPreference(QFont::PreferNoHinting);
    return face;
}

// Per unit of the em.
struct Proportions {
    double ascent, descent;
};

Proportions ProportionsOf(QFont face) {
    constexpr int kEm = 1000;
    face.setPixelSize(kEm);
    const QFontMetricsF metrics(face);
    return {std::max(metrics.ascent(), 1.0) / kEm, std::max(metrics.descent(), 0.0) / kEm};
}

}  // namespace

struct TextFont::Outlines {
    QFont font;
    QFontMetricsF metrics;
};

TextFont::TextFont(const LOGFONT& font, int height) {
    EnsureDrawingToolkit();
    QFont face = FaceOf(font);
    const Proportions unit = ProportionsOf(face);
    const double cell = unit.ascent + unit.descent;
    const bool byCell = height > 0;
    const double wanted =
        byCell ? height : (height == 0 ? kDefaultCell : -std::max(height, -kLargestCell) * cell);
    cell_ = std::clamp(RoundHalfAway(wanted), 1, kLargestCell);
    ascent_ = RoundHalfAway(cell_ * unit.ascent / cell);
    const double em = height < 0 && cell_ < kLargestCell ? -double(height) : cell_ / cell;
    face.setPixelSize(std::max(1, RoundHalfAway(em)));
    outlines_ = std::make_shared<const Outlines>(Outlines{face, QFontMetricsF(face)});
}

int TextFont::Width(std::string_view text) const {
    return RoundHalfAway(outlines_->metrics.horizontalAdvance(ToQString(text)));
}

void TextFont::Draw(QPainter& painter, int left, int baseline, std::string_view text, COLORREF color) const {
    painter.setFont(outlines_->font);
    painter.setPen(QColor(GetRValue(color), GetGValue(color), GetBValue(color)));
    painter.drawText(QPointF(left, baseline), ToQString(text));
}

TextFont TextFontCache::Get(const LOGFONT& font, const AxisMapping& y) {
    const int converted = y.LengthToDevice(font.lfHeight);
    const int least = font.lfHeight < 0 ? -1 : 1;
    const int height = converted != 0 || font.lfHeight == 0 ? converted : least;
    if (last_ && height == height_ && std::memcmp(&font, &font_, sizeof font) == 0) return *last_;
    last_ = std::make_shared<const TextFont>(font, height);
    font_ = font;
    height_ = height;
    return *last_;
}
