#include "views/KConnectionLine.h"

#include "platform/gdi/CPen.h"
#include "platform/gdi/Selected.h"
#include "sources/ReferenceSample.h"
#include "views/SourceLock.h"

KConnectionLine::KConnectionLine(IPointSource* from, IPointSource* to, int lineType, int penStyle,
                                 COLORREF penColor)
    : start(from), end(to), type(lineType), style(penStyle), color(penColor) {
    MakePen();
}

KConnectionLine::KConnectionLine(const KConnectionLine& other)
    : start(other.start),
      end(other.end),
      type(other.type),
      style(other.style),
      color(other.color),
      width(other.width) {
    MakePen();
}

KConnectionLine::~KConnectionLine() = default;

void KConnectionLine::MakePen() { pen = std::make_unique<CPen>(style, width, color); }

std::optional<KConnectionLine::Ends> KConnectionLine::GetEnds() const {
    if (!start || !end) return {};
    const SourceLock lockStart(start);
    const SourceLock lockEnd(end);
    const CPoint* const from = NewestSample(*start);
    if (!from) return {};
    if (type == LastToLast) {
        const CPoint* const to = NewestSample(*end);
        return to ? std::optional(Ends{*from, *to}) : std::nullopt;
    }
    const CPoint* const beside = type == Projected ? FirstSampleFrom(*end, from->x) : nullptr;
    return beside ? std::optional(Ends{*from, {from->x, beside->y}}) : std::nullopt;
}

void KConnectionLine::Draw(CDC* dc) {
    if (const auto ends = GetEnds()) Draw(dc, *ends);
}

void KConnectionLine::Draw(CDC* dc, const Ends& ends) {
    CSize size(100, 100);
    dc->HIMETRICtoLP(&size);
    const CPoint half(size.cx, size.cy);
    const Selected usePen(*dc, *pen);
    const SelectedStock hollow(*dc, NULL_BRUSH);
    dc->MoveTo(ends.start);
    dc->LineTo(ends.end);
    for (const CPoint& at : {ends.start, ends.end}) {
        const CPoint corner = at - half;
        const CPoint opposite = at + half;
        dc->Ellipse(corner.x, corner.y, opposite.x, opposite.y);
    }
}

CString KConnectionLine::GetTypeName(int type) {
    return type == LastToLast ? "Last to last" : type == Projected ? "Projected" : "";
}

CString KConnectionLine::GetDisplayName() const {
    return (start ? start->GetName() : CString()) + " - " + (end ? end->GetName() : CString()) + " (" +
           GetTypeName(type) + ")";
}
