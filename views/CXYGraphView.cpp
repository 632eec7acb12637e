#include "views/CXYGraphView.h"

#include <algorithm>
#include <limits>

#include "pages/KPointSourceProperties.h"
#include "platform/window/CDocument.h"
#include "platform/window/CFrameWnd.h"
#include "settings/KDrawPropertyManager.h"
#include "views/KConnectionLineManager.h"
#include "views/SourceLock.h"

IMPLEMENT_DYNCREATE(CXYGraphView, KViewEx)

namespace {

KDrawProperty& PropertyOf(IPointSource* source) {
    return KDrawPropertyManager::Instance().GetProperty(source ? source->GetKey().GetString() : nullptr);
}

// Grows a range by another one.
struct Span {
    double low = 1e99;
    double high = -1e99;

    void Add(double from, double to) {
        low = std::min(low, from);
        high = std::max(high, to);
    }
    void Give(double& min, double& max) const {
        if (!(low < high)) return;
        min = low;
        max = high;
    }
};

}  // namespace

CXYGraphView::CXYGraphView() : legendValues(0) { Init(nullptr); }

CXYGraphView::CXYGraphView(CString name, bool independent, int menu, unsigned long backgroundColor,
                           int legendWithValues, IPointSource* source)
    : KViewEx(std::move(name), independent, menu, backgroundColor), legendValues(legendWithValues) {
    Init(source);
}

CXYGraphView::~CXYGraphView() = default;

void CXYGraphView::Init(IPointSource* source) {
    connectionLines = std::make_unique<KConnectionLineManager::LineProperties>(hiddenSources, shownSources);
    connectionLines->key = GetKeyName();
    AddOwnModes();
    CXYGraphView::UpdateColors();
    AddSource(source, true);
}

void CXYGraphView::AllocDataHandler(IPointSource* source) {
    dataHandler = std::make_unique<CXYData>();
    dataHandler->SelectPointSource(source);
}

void CXYGraphView::AddSource(IPointSource* source, bool shown) {
    if (!source) return;
    pyramids.Clear();
    if (!shown) {
        hiddenSources.push_back(source);
        return;
    }
    shownSources.push_back(source);
    if (shownSources.size() == 1)
        PrimaryDataChanged(source);
    else
        source->UpdateStats();
    UpdateAxis();
    SetScrollSizes();
}

void CXYGraphView::RemoveSource(IPointSource* source) {
    connectionLines->RemoveSource(source);
    TakeOut(source);
}

void CXYGraphView::TakeOut(IPointSource* source) {
    pyramids.Clear();
    shownSources.remove(source);
    hiddenSources.remove(source);
    if (source && dataHandler && dataHandler->GetPointSource() == source)
        dataHandler->SelectPointSource(PrimarySource());
}

KPointSourceProperties* CXYGraphView::GetDSProperties() {
    if (!sourceProperties)
        sourceProperties = std::make_unique<KPointSourceProperties>(hiddenSources, shownSources,
                                                                    &KDrawPropertyManager::Instance());
    return sourceProperties.get();
}

IPointSource* CXYGraphView::SetPrimaryData(IPointSource* source) {
    if (source) {
        axes.UnitX = source->GetUnitX();
        axes.UnitY = source->GetUnitY();
        scaleX = source->GetXScale();
        scaleY = source->GetYScale();
        offset = source->GetOffset();
        ruler.setScaleX(scaleX);
        ruler.setScaleY(scaleY);
        SetCaption();
    }
    return dataHandler ? dataHandler->SelectPointSource(source) : nullptr;
}

void CXYGraphView::PrimaryDataChanged(IPointSource* source) {
    if (source) {
        source->UpdateStats();
        const SourceLock lock(source);
        if (!source->empty()) {
            const CPoint newest = source->GetData()[source->GetCount() - 1];
            zoom.Current().followX = newest.x;
            zoom.Current().followY = newest.y;
        }
    }
    SetPrimaryData(source);
}

std::optional<CPoint> CXYGraphView::NewestSample() {
    IPointSource* const source = PrimarySource();
    const SourceLock lock(source);
    if (!source || source->empty()) return {};
    return source->GetData()[source->GetCount() - 1];
}

unsigned long CXYGraphView::GetColor(IPointSource* source) { return PropertyOf(source).getColor(); }
int CXYGraphView::GetDotSize(IPointSource* source) { return PropertyOf(source).getDotSize(); }
int CXYGraphView::GetDrawStyle(IPointSource* source) { return PropertyOf(source).getDrawStyle(); }
int CXYGraphView::GetLineStyle(IPointSource* source) { return PropertyOf(source).getLineStyle(); }

void CXYGraphView::SetColor(IPointSource* source, unsigned long color) {
    if (source) PropertyOf(source).setColor(color);
}

TileGrid CXYGraphView::Tiles() const {
    if (!tiled) return {1, 1, std::numeric_limits<int>::max()};
    return {tiledLayout.NumColumns, tiledLayout.NumRows, tiledLayout.NumSourcesPerTile};
}

int CXYGraphView::GetNumPages() { return Tiles().PageCount(shownSources.size()); }

void CXYGraphView::OnViewNextPage() {
    page = std::min(page + 1, GetNumPages() - 1);
    Redraw();
}

void CXYGraphView::OnViewPrevPage() {
    // Series may have gone since, and pages with them.
    page = std::clamp(page - 1, 0, GetNumPages() - 1);
    Redraw();
}

const char* CXYGraphView::GetViewName() {
    IPointSource* const source = PrimarySource();
    viewName = source ? source->GetName() : CString("Empty");
    return viewName;
}

CString& CXYGraphView::FormatCaptionStr(CString& text) {
    text.Empty();
    const CFrameWnd* const frame = GetParentFrame();
    if (frame && frame->IsZoomed() && GetDocument()) text = GetDocument()->GetTitle() + " - ";
    text += GetViewName();
    if (IPointSource* const source = PrimarySource()) text += " (" + source->GetName() + ")";
    return text;
}

void CXYGraphView::SetCaption() {
    CFrameWnd* const frame = GetParentFrame();
    if (!frame) return;
    CString caption;
    frame->SetWindowText(FormatCaptionStr(caption));
}

void CXYGraphView::UpdateAxis() {
    Span x;
    Span y;
    for (IPointSource* const source : shownSources) {
        x.Add(source->GetMinX(), source->GetMaxX());
        y.Add(source->GetMinY(), source->GetMaxY());
    }
    if (axes.XAutoScale) x.Give(axes.MinX, axes.MaxX);
    if (axes.YAutoScale) y.Give(axes.MinY, axes.MaxY);
}

void CXYGraphView::SetPenColor(CPen& pen, int style, unsigned long color) {
    pen.DeleteObject();
    pen.CreatePen(style, 0, static_cast<COLORREF>(color));
}

void CXYGraphView::UpdateColors() {
    RebuildBackground();
    SetPenColor(gridPen, PS_DOT, colors.grid);
    SetPenColor(axisPen, PS_SOLID, colors.axis);
    SetPenColor(dottedPen, PS_DOT, RGB(0, 0, 0));
    SetPenColor(rulerPen, PS_SOLID, RGB(0, 0, 0));
}

unsigned int CXYGraphView::GetCookie() { return 0; }
