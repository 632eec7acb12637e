#include "app/workbench/CSeriesView.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "app/workbench/WorkbenchIds.h"

namespace app {

namespace {

// The share of the value range that stays free above and below.
constexpr double kPadding = 0.04;

// The extent of a series' values, not widened as statistics are.
void Widen(IPointSource& source, double& low, double& high) {
    const CPoint* const points = source.GetData();
    const unsigned short* const status = source.GetStatus();
    const long count = source.GetCount();
    LONG least = std::numeric_limits<LONG>::max();
    LONG most = std::numeric_limits<LONG>::min();
    for (long i = 0; i < count; ++i) {
        if (status && (status[i] & PS_DELETED)) continue;
        least = std::min(least, points[i].y);
        most = std::max(most, points[i].y);
    }
    if (least > most) return;
    const auto value = [&](LONG y) {
        return (static_cast<double>(y) + static_cast<double>(source.GetOffset().y)) / source.GetYScale();
    };
    low = std::min(low, value(least));
    high = std::max(high, value(most));
}

void UseColor(IPointSource& source, unsigned long color) {
    auto& manager = KDrawPropertyManager::Instance();
    KDrawProperty& property = manager.GetProperty(source.GetKey());
    // A series that nobody has coloured yet has the colour of all new series.
    if (property.getColor() == manager.GetProperty(nullptr).getColor()) property.setColor(color);
}

}  // namespace

std::string PictureEnding(const std::string& path) {
    std::string ending = path.substr(std::min(path.size(), path.rfind('.')));
    for (char& c : ending) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    const bool known = ending == ".png" || ending == ".svg" || ending == ".pdf";
    return known && path.size() > ending.size() ? ending : "";
}

CSeriesView::CSeriesView(SeriesFile& file, const CString& key)
    : CXYGraphView(key, true, static_cast<int>(kViewContextMenu), CColorProperties().background, 0, nullptr),
      file_(file) {
    UseDoubleBitmap(true);
    isoAspectAllowed = 1;
    lineLook = LineLook::Smooth;
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

void CSeriesView::PadAxis() {
    const double range = axes.MaxY - axes.MinY;
    // A constant series stands in the middle of a range that its own digits can tell.
    const double padding = range > 0 ? range * kPadding : std::max(1.0, 200 / scaleY);
    axes.MinY -= padding;
    axes.MaxY += padding;
}

bool CSeriesView::Export(const std::string& path, CSize pixels, int dotsPerInch) {
    const std::string ending = PictureEnding(path);
    if (ending.empty()) return false;
    if (ending == ".png") {
        CBitmapEx bitmap(4, 32, 256);
        bitmap.SetDotsPerInch(dotsPerInch);
        CDC memory;
        if (!bitmap.ReSize(nullptr, pixels.cx, pixels.cy) || !memory.CreateCompatibleDC(nullptr))
            return false;
        CBitmapEx* const before = memory.SelectObject(&bitmap);
        DrawOn(memory, pixels);
        memory.SelectObject(before);
        return bitmap.SaveAsPng(path.c_str());
    }
    const CString title(file_.title);
    std::unique_ptr<CPrintDC> paper;
    if (ending == ".svg") {
        paper = CPrintDC::CreateSvg(path.c_str(), pixels, title);
    } else {
        const auto hundredths = [dotsPerInch](int length) {
            return RoundHalfAway(length * 2540.0 / dotsPerInch);
        };
        paper = CPrintDC::CreatePdf(path.c_str(), {{hundredths(pixels.cx), hundredths(pixels.cy)}, 0, title});
    }
    if (!paper || !paper->StartPage()) return false;
    DrawOn(*paper, {paper->GetDeviceCaps(HORZRES), paper->GetDeviceCaps(VERTRES)});
    paper->EndPage();
    return paper->EndDoc();
}

}  // namespace app
