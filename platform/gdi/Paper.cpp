#include "platform/gdi/Paper.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <numbers>

#include "platform/gdi/DrawingToolkit.h"
#include "platform/gdi/GdiRecord.h"

namespace {

// In pixels of a screen, as dashes and gaps in turn; see Hairline.cpp.
QList<qreal> DashesOf(int style) {
    switch (style) {
        case PS_DASH:
            return {18, 6};
        case PS_DOT:
            return {3, 3};
        case PS_DASHDOT:
            return {9, 6, 3, 6};
        case PS_DASHDOTDOT:
            return {9, 3, 3, 3, 3, 3};
        default:
            return {};
    }
}

QColor ColorOf(COLORREF color) { return {GetRValue(color), GetGValue(color), GetBValue(color)}; }

QPointF ToQt(CPoint p) { return {double(p.x), double(p.y)}; }

// The part of a line inside a rectangle, or nothing (You-Dong Liang and Brian Barsky, A new concept and
// method for line clipping, 1984).
bool CutLine(const QRectF& bounds, QPointF& a, QPointF& b) {
    const double dx = b.x() - a.x(), dy = b.y() - a.y();
    const double steps[] = {-dx, dx, -dy, dy};
    const double distances[] = {a.x() - bounds.left(), bounds.right() - a.x(), a.y() - bounds.top(),
                                bounds.bottom() - a.y()};
    double from = 0.0, to = 1.0;
    for (int side = 0; side < 4; ++side) {
        if (steps[side] == 0.0) {
            if (distances[side] < 0.0) return false;
            continue;
        }
        const double at = distances[side] / steps[side];
        if (steps[side] < 0.0)
            from = std::max(from, at);
        else
            to = std::min(to, at);
    }
    if (from > to) return false;
    const QPointF start = a, way(dx, dy);
    if (from > 0.0) a = start + way * from;
    if (to < 1.0) b = start + way * to;
    return true;
}

// The polygon's part on the inner side of one border; inside(p) is negative outside (Ivan Sutherland and Gary
// Hodgman, Reentrant polygon clipping, 1974).
QPolygonF CutPolygon(const QPolygonF& polygon, const std::function<double(QPointF)>& inside) {
    QPolygonF kept;
    for (qsizetype i = 0; i < polygon.size(); ++i) {
        const QPointF a = polygon[i], b = polygon[(i + 1) % polygon.size()];
        const double da = inside(a), db = inside(b);
        if (da >= 0.0) kept << a;
        if ((da < 0.0) != (db < 0.0)) kept << a + (b - a) * (da / (da - db));
    }
    return kept;
}

QPolygonF CutPolygon(QPolygonF polygon, const QRectF& bounds) {
    polygon = CutPolygon(polygon, [&](QPointF p) { return p.x() - bounds.left(); });
    polygon = CutPolygon(polygon, [&](QPointF p) { return bounds.right() - p.x(); });
    polygon = CutPolygon(polygon, [&](QPointF p) { return p.y() - bounds.top(); });
    return CutPolygon(polygon, [&](QPointF p) { return bounds.bottom() - p.y(); });
}

// The parts inside the outline (even-odd) of the lines on which across * x + down * y is a multiple of
// spacing.
std::vector<QLineF> LinesInside(const QPolygonF& outline, double across, double down, double spacing) {
    const auto level = [=](QPointF p) { return (across * p.x() + down * p.y()) / spacing; };
    const auto along = [=](QPointF p) { return across != 0.0 ? p.y() : p.x(); };
    std::map<double, std::vector<QPointF>> crossings;
    for (qsizetype i = 0; i < outline.size(); ++i) {
        const QPointF a = outline[i], b = outline[(i + 1) % outline.size()];
        const double from = level(a), to = level(b), high = std::max(from, to);
        for (double at = std::ceil(std::min(from, to)); at < high; at += 1.0)
            crossings[at].push_back(a + (b - a) * ((at - from) / (to - from)));
    }
    std::vector<QLineF> lines;
    for (auto& [at, points] : crossings) {
        std::sort(points.begin(), points.end(), [&](QPointF a, QPointF b) { return along(a) < along(b); });
        for (std::size_t i = 0; i + 1 < points.size(); i += 2) lines.emplace_back(points[i], points[i + 1]);
    }
    return lines;
}

QRectF RectOf(const CRect& box) { return {QPointF(box.left, box.top), QPointF(box.right, box.bottom)}; }

}  // namespace

struct Paper::Painting {
    std::unique_ptr<PaperDevice> device;
    QPainter painter;
    int dotsPerInch;
    CSize size;
    int pages = 0;
    bool onPage = false;
    bool failed = false;
    std::optional<CRect> clip;

    QRectF Bounds() const {
        return QRectF(0, 0, size.cx, size.cy).adjusted(-dotsPerInch, -dotsPerInch, dotsPerInch, dotsPerInch);
    }
    // What shapes are cut off at.
    QRectF Limits() const {
        return clip && !device->Clips() ? RectOf(*clip).intersected(Bounds()) : Bounds();
    }
    double Hairline() const { return device->Hairline(); }
    QPen Pen(const PaperPen& pen) const {
        QPen line(ColorOf(pen.color), std::max<double>(pen.width, Hairline()));
        line.setCapStyle(Qt::RoundCap);
        line.setJoinStyle(Qt::RoundJoin);
        return line;
    }
    // Dashes count in widths of the pen.
    QPen Dashed(const PaperPen& pen) const {
        QPen line = Pen(pen);
        const double pixel = double(dotsPerInch) / kScreenDotsPerInch / line.widthF();
        QList<qreal> dashes = DashesOf(pen.style);
        for (qreal& dash : dashes) dash *= pixel;
        line.setDashPattern(dashes);
        line.setDashOffset(pen.phase / line.widthF());
        line.setCapStyle(Qt::FlatCap);
        return line;
    }
    bool IsDashed(const PaperPen& pen) const { return pen.style != PS_SOLID && pen.width <= Hairline() + 1; }

    template <class Draw>
    void Stroke(const PaperPen& pen, Draw&& draw) {
        painter.setBrush(Qt::NoBrush);
        if (!IsDashed(pen)) {
            painter.setPen(Pen(pen));
            return draw();
        }
        if (pen.gapColor) {
            painter.setPen(Pen({PS_SOLID, pen.width, *pen.gapColor, std::nullopt}));
            draw();
        }
        painter.setPen(Dashed(pen));
        draw();
    }

    void Fill(const QPainterPath& shape, const PaperFill& fill) {
        painter.setPen(Qt::NoPen);
        if (fill.hatch == kNoHatch) return painter.fillPath(shape, ColorOf(fill.color));
        if (fill.gapColor) painter.fillPath(shape, ColorOf(*fill.gapColor));
        painter.setPen(Pen({PS_SOLID, 0, fill.color, std::nullopt}));
        Hatch(shape, fill.hatch);
    }

    // Lines inside a shape, their distances counted from the device's origin.
    void Hatch(const QPainterPath& shape, int hatch) {
        const QPolygonF outline = shape.toFillPolygon();
        const auto draw = [&](double across, double down) {
            const double spacing = 8.0 * dotsPerInch / kScreenDotsPerInch;
            for (const QLineF& line : LinesInside(outline, across, down, spacing)) painter.drawLine(line);
        };
        if (hatch == HS_HORIZONTAL || hatch == HS_CROSS) draw(0, 1);
        if (hatch == HS_VERTICAL || hatch == HS_CROSS) draw(1, 0);
        if (hatch == HS_FDIAGONAL || hatch == HS_DIAGCROSS) draw(1, -1);
        if (hatch == HS_BDIAGONAL || hatch == HS_DIAGCROSS) draw(1, 1);
    }
};

Paper::Paper(std::unique_ptr<PaperDevice> device) : painting_(std::make_unique<Painting>()) {
    painting_->dotsPerInch = device->DotsPerInch();
    painting_->size = device->Size();
    painting_->device = std::move(device);
}

Paper::~Paper() {
    if (painting_->painter.isActive()) painting_->painter.end();
}

int Paper::DotsPerInch() const { return painting_->dotsPerInch; }

CSize Paper::Size() const { return painting_->size; }

bool Paper::StartPage() {
    Painting& p = *painting_;
    if (p.onPage || p.failed) return false;
    EnsureDrawingToolkit();
    const bool ready = p.pages == 0 ? p.painter.begin(&p.device->Device()) : p.device->NewPage();
    p.failed = !ready;
    if (!ready) return false;
    ++p.pages;
    p.onPage = true;
    p.clip.reset();
    p.painter.setClipping(false);
    p.painter.setRenderHint(QPainter::Antialiasing);
    return true;
}

void Paper::EndPage() { painting_->onPage = false; }

bool Paper::Finish() {
    Painting& p = *painting_;
    p.onPage = false;
    if (p.pages == 0 || !p.painter.isActive()) return false;
    const bool ended = p.painter.end();
    const bool finished = p.device->Finish();
    return ended && finished && !p.failed;
}

void Paper::SetClip(const std::optional<CRect>& clip) {
    Painting& p = *painting_;
    if (!p.onPage || clip == p.clip) return;
    p.clip = clip;
    if (!clip) return p.painter.setClipping(false);
    p.painter.setClipRect(RectOf(*clip).intersected(p.Bounds()));
}

void Paper::Lines(const std::vector<CPoint>& points, bool closed, const PaperPen& pen) {
    Painting& p = *painting_;
    if (!p.onPage || points.size() < 2) return;
    const QRectF bounds = p.Limits();
    std::vector<QPolygonF> pieces;
    bool joined = false;  // the last piece ends at points[i - 1]
    for (std::size_t i = 1; i < points.size() + closed; ++i) {
        const QPointF end = ToQt(points[i % points.size()]);
        QPointF a = ToQt(points[i - 1]), b = end;
        if (!CutLine(bounds, a, b)) {
            joined = false;
            continue;
        }
        if (!joined) pieces.push_back(QPolygonF() << a);
        pieces.back() << b;
        joined = b == end;
    }
    p.Stroke(pen, [&] {
        for (const QPolygonF& piece : pieces) p.painter.drawPolyline(piece);
    });
}

void Paper::Polygon(const std::vector<CPoint>& points, const PaperFill& fill) {
    Painting& p = *painting_;
    if (!p.onPage || points.size() < 3) return;
    QPolygonF outline;
    for (const CPoint point : points) outline << ToQt(point);
    QPainterPath shape;  // even-odd by default
    shape.addPolygon(CutPolygon(std::move(outline), p.Limits()));
    shape.closeSubpath();
    p.Fill(shape, fill);
}

void Paper::Box(const CRect& box, const PaperFill& fill) {
    Painting& p = *painting_;
    const QRectF visible = RectOf(box).intersected(p.Limits());
    if (!p.onPage || visible.isEmpty()) return;
    QPainterPath shape;
    shape.addRect(visible);
    p.Fill(shape, fill);
}

void Paper::Ellipse(const CRect& box, const PaperFill* fill, const PaperPen* pen) {
    Painting& p = *painting_;
    if (!p.onPage) return;
    if (!p.Limits().contains(RectOf(box))) {
        constexpr int kCorners = 4096;
        std::vector<CPoint> corners;
        const QRectF area = RectOf(box);
        for (int i = 0; i < kCorners; ++i) {
            const double angle = 2.0 * std::numbers::pi * i / kCorners;
            corners.emplace_back(RoundHalfAway(area.center().x() + area.width() / 2 * std::cos(angle)),
                                 RoundHalfAway(area.center().y() + area.height() / 2 * std::sin(angle)));
        }
        if (fill) Polygon(corners, *fill);
        if (pen) Lines(corners, true, *pen);
        return;
    }
    QPainterPath shape;
    shape.addEllipse(RectOf(box));
    if (fill) p.Fill(shape, *fill);
    if (pen) p.Stroke(*pen, [&] { p.painter.drawPath(shape); });
}

// Neighbours in a row share one box.
void Paper::Dots(std::vector<CPoint> points, COLORREF color) {
    Painting& p = *painting_;
    if (!p.onPage) return;
    const QRectF bounds = p.Limits();
    std::erase_if(points, [&](CPoint d) { return !bounds.contains(ToQt(d)); });
    std::sort(points.begin(), points.end(),
              [](const CPoint& a, const CPoint& b) { return a.y != b.y ? a.y < b.y : a.x < b.x; });
    const double half = p.Hairline() / 2.0;
    p.painter.setPen(Qt::NoPen);
    p.painter.setBrush(ColorOf(color));
    for (std::size_t i = 0; i < points.size();) {
        const CPoint first = points[i];
        LONG last = first.x;
        for (++i; i < points.size() && points[i].y == first.y && points[i].x <= last + 1; ++i)
            last = points[i].x;
        p.painter.drawRect(QRectF(first.x - half, first.y - half, last - first.x + 2.0 * half, 2.0 * half));
    }
}

void Paper::Text(const TextFont& font, const CRect& cell, std::string_view text, COLORREF color) {
    Painting& p = *painting_;
    if (!p.onPage || !p.Limits().intersects(RectOf(cell))) return;
    font.Draw(p.painter, cell.left, cell.top + font.Ascent(), text, color);
}

void Paper::Image(const CRect& target, const Picture& picture, const CRect& source) {
    Painting& p = *painting_;
    if (!p.onPage || !p.Bounds().intersects(RectOf(target))) return;
    const QImage pixels(reinterpret_cast<const uchar*>(picture.pixels.data()), picture.width, picture.height,
                        picture.width * qsizetype{4}, QImage::Format_RGB32);
    p.painter.drawImage(RectOf(target), pixels, RectOf(source));
}
