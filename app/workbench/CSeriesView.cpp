#include "app/workbench/CSeriesView.h"

#include <algorithm>
#include <cmath>

#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

// The share of the value range that stays free above and below.
constexpr double kPadding = 0.04;

// The extent of a series' values, not widened as statistics are.
void Widen(IPointSource& source, double& low, double& high) {
    const double scale = source.GetYScale();
    const long offset = source.GetOffset().y;
    const CPoint* const points = source.GetData();
    const unsigned short* const status = source.GetStatus();
    for (long i = 0; i < source.GetCount(); ++i) {
        if (status && (status[i] & PS_DELETED)) continue;
        const double value = (static_cast<double>(points[i].y) + static_cast<double>(offset)) / scale;
        low = std::min(low, value);
        high = std::max(high, value);
    }
}

void UseColor(IPointSource& source, unsigned long color) {
    auto& manager = KDrawPropertyManager::Instance();
    KDrawProperty& property = manager.GetProperty(source.GetKey());
    // A series that nobody has coloured yet has the colour of all new series.
    if (property.getColor() == manager.GetProperty(nullptr).getColor()) property.setColor(color);
}

}  // namespace

CSeriesView::CSeriesView(SeriesFile& file, const CString& key)
    : CXYGraphView(key, true, static_cast<int>(kViewContextMenu), CColorProperties().background, 0, nullptr),
      file_(file) {
    UseDoubleBitmap(true);
    isoAspectAllowed = 1;
    xTickPlaces = [this](double from, double to) { return TickPlaces(from, to); };
    rulerText = [this](const KRuler& measured) { return MeasuredText(measured); };
    for (std::size_t i = 0; i < file_.series.size(); ++i) {
        UseColor(*file_.series[i].source, SeriesColor(i));
        AddSource(file_.series[i].source.get(), i == 0);
    }
}

void CSeriesView::OnInitialUpdate() {
    CXYGraphView::OnInitialUpdate();
    ruler.setType(KRuler::RulerType(0));
}

void CSeriesView::OnDestroy() {
    SaveStdProperties();
    CXYGraphView::OnDestroy();
}

std::size_t CSeriesView::IndexOf(IPointSource* source) const {
    for (std::size_t i = 0; i < file_.series.size(); ++i)
        if (file_.series[i].source.get() == source) return i;
    return 0;
}

const FileSeries& CSeriesView::Primary() const { return file_.series[IndexOf(PrimarySource())]; }

bool CSeriesView::IsShown(std::size_t i) const {
    return i < file_.series.size() && std::find(shownSources.begin(), shownSources.end(),
                                                file_.series[i].source.get()) != shownSources.end();
}

std::vector<std::size_t> CSeriesView::ShownSeries() const {
    std::vector<std::size_t> shown;
    for (IPointSource* const source : shownSources) shown.push_back(IndexOf(source));
    return shown;
}

void CSeriesView::Show(std::size_t i, bool show) {
    if (i >= file_.series.size() || show == IsShown(i)) return;
    std::vector<std::size_t> wanted;
    for (std::size_t k = 0; k < file_.series.size(); ++k) {
        const bool fits = !show || file_.series[k].group == file_.series[i].group;
        if (k == i ? show : IsShown(k) && fits) wanted.push_back(k);
    }
    ShowOnly(wanted);
}

void CSeriesView::ShowOnly(const std::vector<std::size_t>& series) {
    if (series.empty()) return;
    for (auto& one : file_.series) RemoveSource(one.source.get());
    for (const std::size_t i : series) AddSource(file_.series[i].source.get(), true);
    for (auto& one : file_.series)
        if (std::find(shownSources.begin(), shownSources.end(), one.source.get()) == shownSources.end())
            AddSource(one.source.get(), false);
    page = 0;
    HandleZoom(CmdZoomAll, CPoint());
    SetCaption();
}

void CSeriesView::ShowRange(double fromUser, double toUser) {
    axes.XAutoScale = 0;
    axes.MinX = fromUser;
    axes.MaxX = toUser;
    double low = 1e300;
    double high = -1e300;
    for (IPointSource* const source : shownSources) {
        const CPoint* const points = source->GetData();
        for (long i = 0; i < source->GetCount(); ++i) {
            const double x = points[i].x / source->GetXScale();
            if (x < fromUser || x > toUser) continue;
            const double y = (static_cast<double>(points[i].y) + source->GetOffset().y) / source->GetYScale();
            low = std::min(low, y);
            high = std::max(high, y);
        }
    }
    if (low <= high) {
        axes.YAutoScale = 0;
        axes.MinY = low;
        axes.MaxY = high;
        PadAxis();
    }
    ZoomAll();
    SetScrollSizes();
    zoom.KeepCurrent();
}

// The base takes statistics, which read small ranges as wider and leave no room at the edges.
void CSeriesView::UpdateAxis() {
    CXYGraphView::UpdateAxis();
    if (!axes.YAutoScale || shownSources.empty()) return;
    constexpr double kWidened = 3.0;
    if (axes.MaxY - axes.MinY <= kWidened) {
        double low = 1e300;
        double high = -1e300;
        for (IPointSource* const source : shownSources) Widen(*source, low, high);
        if (low > high) return;
        axes.MinY = low;
        axes.MaxY = high;
    }
    PadAxis();
}

CPointEx CSeriesView::VisibleX() const {
    const double first = static_cast<double>(offset.x);
    return {(axisChange.fromX + first) / scaleX, (axisChange.toX + first) / scaleX};
}

PictureSize CSeriesView::ShownSize() const { return {size, picture ? picture->GetDotsPerInch() : 96}; }

void CSeriesView::PadAxis() {
    const double range = axes.MaxY - axes.MinY;
    // A constant series stands in the middle of a range that its own digits can tell.
    const double padding = range > 0 ? range * kPadding : std::max(1.0, 200 / scaleY);
    axes.MinY -= padding;
    axes.MaxY += padding;
}

}  // namespace app
