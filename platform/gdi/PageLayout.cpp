#include "platform/gdi/PageLayout.h"

#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QRectF>
#include <QSizeF>
#include <algorithm>

namespace {

LONG Hundredths(double millimetres) { return RoundHalfAway(millimetres * 100); }

}  // namespace

QPageLayout PageLayoutOf(const PageSetup& setup) {
    const QSizeF upright(std::min(setup.paper.cx, setup.paper.cy) / 100.0,
                         std::max(setup.paper.cx, setup.paper.cy) / 100.0);
    const PageMargins& margin = setup.margin;
    return {QPageSize(upright, QPageSize::Millimeter),
            setup.paper.cx > setup.paper.cy ? QPageLayout::Landscape : QPageLayout::Portrait,
            QMarginsF(margin.left / 100.0, margin.top / 100.0, margin.right / 100.0, margin.bottom / 100.0),
            QPageLayout::Millimeter};
}

PageSetup PageSetupOf(const QPageLayout& layout) {
    const QRectF paper = layout.fullRect(QPageLayout::Millimeter);
    const QMarginsF margins = layout.margins(QPageLayout::Millimeter);
    PageSetup setup;
    setup.paper = {Hundredths(paper.width()), Hundredths(paper.height())};
    setup.margin.left = Hundredths(margins.left());
    setup.margin.top = Hundredths(margins.top());
    setup.margin.right = Hundredths(margins.right());
    setup.margin.bottom = Hundredths(margins.bottom());
    return setup;
}
